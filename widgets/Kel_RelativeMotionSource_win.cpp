// The platform seam of the relative mouse tracker: which motion source a
// platform uses. Windows reads the mouse's own relative motion (raw input),
// which neither stops at the screen's edge nor depends on pointer
// acceleration; everything else uses the portable pointer warp.
#include "Kel_RelativeMotionSource_p.h"

#ifdef Q_OS_WIN

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QCursor>
#include <QWidget>

#include <windows.h>

namespace {

// Relative mouse motion from WM_INPUT messages, registered while tracking.
class RawInputMotionSource : public Kel_RelativeMotionSource, public QAbstractNativeEventFilter
{
public:
    ~RawInputMotionSource() override { end(); }

    void begin(QWidget* widget, const QPoint& globalAnchor, const Report& report) override
    {
        mWidgetP = widget;
        mReport = report;
        RAWINPUTDEVICE device = {};
        device.usUsagePage = 0x01; // generic desktop controls
        device.usUsage = 0x02;     // mouse
        device.dwFlags = 0;
        device.hwndTarget = widget ? reinterpret_cast<HWND>(widget->window()->winId()) : nullptr;
        mRegistered = RegisterRawInputDevices(&device, 1, sizeof(device)) != FALSE;
        if (!mRegistered) {
            // Raw input refused (a remote session): fall back to the pointer.
            mFallback.begin(widget, globalAnchor, report);
            return;
        }
        QCoreApplication::instance()->installNativeEventFilter(this);
        if (mWidgetP)
            mWidgetP->grabMouse();
        // The pointer stays where the button went down.
        const RECT clip = {globalAnchor.x(), globalAnchor.y(), globalAnchor.x() + 1, globalAnchor.y() + 1};
        ClipCursor(&clip);
    }

    QPoint pointerMoved(const QPoint& globalPosition) override
    {
        return mRegistered ? QPoint() : mFallback.pointerMoved(globalPosition);
    }

    void end() override
    {
        if (!mRegistered) {
            mFallback.end();
            return;
        }
        mRegistered = false;
        ClipCursor(nullptr);
        QCoreApplication::instance()->removeNativeEventFilter(this);
        RAWINPUTDEVICE device = {};
        device.usUsagePage = 0x01;
        device.usUsage = 0x02;
        device.dwFlags = RIDEV_REMOVE;
        device.hwndTarget = nullptr;
        RegisterRawInputDevices(&device, 1, sizeof(device));
        if (mWidgetP)
            mWidgetP->releaseMouse();
        mWidgetP = nullptr;
    }

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) override
#else
    bool nativeEventFilter(const QByteArray& eventType, void* message, long*) override
#endif
    {
        if (eventType != "windows_generic_MSG" || !mReport)
            return false;
        const MSG* msg = static_cast<const MSG*>(message);
        if (msg->message != WM_INPUT)
            return false;
        RAWINPUT input;
        UINT size = sizeof(input);
        if (GetRawInputData(reinterpret_cast<HRAWINPUT>(msg->lParam), RID_INPUT, &input, &size,
                            sizeof(RAWINPUTHEADER)) == UINT(-1)
            || input.header.dwType != RIM_TYPEMOUSE)
            return false;
        // Tablets report absolute positions; only relative motion counts.
        if (!(input.data.mouse.usFlags & MOUSE_MOVE_ABSOLUTE)
            && (input.data.mouse.lLastX != 0 || input.data.mouse.lLastY != 0))
            mReport(QPoint(int(input.data.mouse.lLastX), int(input.data.mouse.lLastY)));
        return false;
    }

private:
    QWidget* mWidgetP = nullptr;
    Report mReport;
    bool mRegistered = false;
    Kel_PointerWarpMotionSource mFallback;
};

} // namespace

std::unique_ptr<Kel_RelativeMotionSource> Kel_RelativeMotionSource::create()
{
    return std::unique_ptr<Kel_RelativeMotionSource>(new RawInputMotionSource);
}

#else

std::unique_ptr<Kel_RelativeMotionSource> Kel_RelativeMotionSource::create()
{
    return std::unique_ptr<Kel_RelativeMotionSource>(new Kel_PointerWarpMotionSource);
}

#endif
