#ifndef KEL_IMAGEMAPPEDBUTTONS_H
#define KEL_IMAGEMAPPEDBUTTONS_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Action.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QImage>
#include <QStringList>
#include <QVector>
#include <QWidget>

// Buttons of any shape on one picture. The map image (the picture's size)
// paints each button's area in its own colour; buttonColors lists those
// colours in button order. The base connection names an array of actions
// (Mvt_Array<Mvt_Action<void()>>): a click released on button i calls
// element i, and an element that is disabled, or missing, makes its button
// inert and dimmed. While pressed, a button's area shows the tracking image.
// Images are paths relative to the resource path; base + ".toolTip" may name
// an array of tool-tip strings.
class KELCORE_EXPORT Kel_ImageMappedButtons : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray baseConnection READ getBaseConnectionSpec WRITE setBaseConnectionSpec)
    Q_PROPERTY(QByteArray image READ getImage WRITE setImage)
    Q_PROPERTY(QByteArray trackingImage READ getTrackingImage WRITE setTrackingImage)
    Q_PROPERTY(QByteArray mapImage READ getMapImage WRITE setMapImage)
    Q_PROPERTY(QStringList buttonColors READ getButtonColors WRITE setButtonColors)

public:
    typedef Mvt_Array<Mvt_Action<void()>> ActionArray;

    explicit Kel_ImageMappedButtons(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ImageMappedButtons() override;

    // The action array's specification; it takes effect at the next makeConnections.
    void setBaseConnectionSpec(const QByteArray& spec);
    QByteArray getBaseConnectionSpec() const { return mActions.spec().toUtf8(); }

    void setImage(const QByteArray& path);
    QByteArray getImage() const { return mImageName; }
    void setTrackingImage(const QByteArray& path);
    QByteArray getTrackingImage() const { return mTrackingName; }
    void setMapImage(const QByteArray& path);
    QByteArray getMapImage() const { return mMapName; }
    // Colours as QColor reads them ("#ff0000", "red"); one per button.
    void setButtonColors(const QStringList& colors);
    QStringList getButtonColors() const { return mColorNames; }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads which buttons are enabled and repaints.
    void updateAppearance();

    // The button whose area holds point (widget coordinates), or -1.
    int buttonAt(const QPoint& point) const;
    bool isButtonEnabled(int button) const { return button >= 0 && button < mEnabled.size() && mEnabled[button]; }
    // The button held down, or -1.
    int pressedButton() const { return mPressed; }
    // The button the keys act on (framed while the widget has the focus), or -1.
    int keyboardButton() const { return mKeyButton; }

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Left and Right (Up and Down) choose among the enabled buttons; Space
    // held, or Return, presses the chosen one.
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    // The next enabled button from mKeyButton in direction step (1 or -1),
    // round the end; -1 when none is enabled.
    int nextEnabledButton(int step) const;
    // The bounding rectangle of a button's area in the map.
    QRect buttonRect(int button) const;
    void setPressed(int button);
    void refresh();

    Kel_BoundProperty<ActionArray::Listener> mActions{this, Kel_BoundPropertyBase::kConnectAlways};
    Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> mToolTips{this};
    QByteArray mImageName;
    QByteArray mTrackingName;
    QByteArray mMapName;
    QStringList mColorNames;
    QImage mImage;
    QImage mTracking;
    QImage mMap;
    QImage mShown;
    QVector<QRgb> mColors;
    QVector<bool> mEnabled;
    int mPressed;
    int mKeyButton = -1;
};

#endif
