#ifndef KEL_SLIDER_H
#define KEL_SLIDER_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <QWidget>

// A horizontal image slider (a ramp with a handle drawn over it) bound to a
// long value model, a range read from the models named by the range
// specification + ".min" and + ".max", and a bool enabled model. Dragging
// the handle sends values to the value model; the handle moves when the
// model reports its value back. Values out of the range are corrected and
// written back to the model.
class KELCORE_EXPORT Kel_Slider : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(bool isOrientationHorizontal READ getIsOrientationHorizontal WRITE setIsOrientationHorizontal)
    Q_PROPERTY(QString sliderType READ getSliderType WRITE setSliderType)
    Q_PROPERTY(QByteArray rangeConnSpec READ getRangeConnSpec WRITE setRangeConnSpec)
    Q_PROPERTY(QByteArray valueConnSpec READ getValueConnSpec WRITE setValueConnSpec)
    Q_PROPERTY(QByteArray enabledConnSpec READ getEnabledStateConnSpec WRITE setEnabledStateConnSpec)
    Q_PROPERTY(QString enabledToolTip READ getEnabledToolTip WRITE setEnabledToolTip)
    Q_PROPERTY(QString disabledToolTip READ getDisabledToolTip WRITE setDisabledToolTip)

public:
    explicit Kel_Slider(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Slider() override;

    // Stored and reported only; the drawing is the same for every type.
    void setSliderType(const QString& type) { mSliderType = type; }
    QString getSliderType() const { return mSliderType; }

    // Connection specifications; they take effect at the next makeConnections.
    void setRangeConnSpec(const QByteArray& spec) { mRangeConnSpec = QString::fromUtf8(spec); }
    QByteArray getRangeConnSpec() const { return mRangeConnSpec.toUtf8(); }
    void setValueConnSpec(const QByteArray& spec) { mValueListener.setSpec(QString::fromUtf8(spec)); }
    QByteArray getValueConnSpec() const { return mValueListener.spec().toUtf8(); }
    void setEnabledStateConnSpec(const QByteArray& spec) { mEnabledListener.setSpec(QString::fromUtf8(spec)); }
    QByteArray getEnabledStateConnSpec() const { return mEnabledListener.spec().toUtf8(); }

    // Tool tips by enabled state, applied at once when the state matches.
    void setEnabledToolTip(const QString& text);
    QString getEnabledToolTip() const { return mEnabledToolTip; }
    void setDisabledToolTip(const QString& text);
    QString getDisabledToolTip() const { return mDisabledToolTip; }

    bool getIsOrientationHorizontal() const { return mIsOrientationHorizontal; }

    // Connects the value, enabled, ".min" and ".max" models.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The ramp image's size; 100 x 20 without one.
    QSize sizeHint() const override;

    // The range and value as last read from the models.
    int minimum() const { return mMin; }
    int maximum() const { return mMax; }
    int value() const { return mValue; }
    double pixelsPerUnit() const { return mPixelsPerUnit; }

    // True loads the horizontal images; false only makes the slider read
    // the mouse's y coordinate (it is drawn horizontally either way).
    virtual void setIsOrientationHorizontal(bool horizontal);
    virtual void drawBackground(QPainter* painter);
    virtual void drawHandle(QPainter* painter);
    // Where the handle is drawn and can be grabbed.
    virtual QRect getGainButtonRect();
    // Sends the value under p (the handle's left edge) to the value model.
    virtual void setSliderFromMousePt(QPoint p);
    // The value at pixel p, within the range.
    virtual int convertPixToValue(long p);
    virtual int convertValueToPix(long v);

    void handleMsgValueDefault();
    void handleMsgRangeMinDefault();
    void handleMsgRangeMaxDefault();
    void handleMsgEnabledStateDefault();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Arrows move the value by one, Page Up and Down by a tenth of the
    // range, Home and End to its ends.
    void keyPressEvent(QKeyEvent* event) override;
    // Draws a dotted frame while the slider has the keyboard focus.
    void paintEvent(QPaintEvent* event) override;

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> LongProperty;

    // An unconnected enabled model counts as enabled.
    bool isModelEnabled() const;
    void recomputePixelsPerUnit();
    // Reads the minimum or maximum model into bound (only while connected).
    void readRangeBound(const LongProperty& model, int& bound);
    // Rescales and brings the value into a (new) valid range.
    void rangeChanged();
    void applyToolTip(bool enabled);
    // Writes a corrected value back, once per correction even if the model
    // answers with another out-of-range value.
    void sendCorrection(int value);

    LongProperty mValueListener{this};
    LongProperty mRangeMinListener{this};
    LongProperty mRangeMaxListener{this};
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mEnabledListener{this};
    QPixmap mHandlePixmap;
    QPixmap mBackgroundPixmap;
    QString mSliderType;
    QString mRangeConnSpec;
    bool mIsOrientationHorizontal;
    int mMin;
    int mMax;
    int mValue;
    double mPixelsPerUnit;
    bool mDragging;
    QString mEnabledToolTip;
    QString mDisabledToolTip;
    // Set while a correction is sent back, and while makeConnections
    // connects the range ahead of the value.
    bool mCorrecting;
    bool mConnecting;
};

#endif
