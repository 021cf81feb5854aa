#ifndef KEL_BUSY_H
#define KEL_BUSY_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QWidget>
#include <memory>

class Kel_AnimationTimer;

// An animated busy indicator (a ring of spokes turning) that runs while its
// bool model holds true. While idle, and without a connected model, it
// keeps its place in the layout and draws nothing.
class KELCORE_EXPORT Kel_Busy : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connection READ getConnection WRITE setConnection)
    Q_PROPERTY(int interval READ getInterval WRITE setInterval)

public:
    explicit Kel_Busy(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Busy() override;

    // The busy model's specification; it takes effect at the next makeConnections.
    void setConnection(const QByteArray& spec) { mBusy.setSpec(QString::fromUtf8(spec)); }
    QByteArray getConnection() const { return mBusy.spec().toUtf8(); }
    // Milliseconds between two frames of the animation.
    void setInterval(int ms);
    int getInterval() const;

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and starts or stops the animation.
    void updateAppearance();

    bool isBusy() const { return mIsBusy; }
    // Whether frames are being drawn: busy and shown.
    bool isAnimating() const;
    // The spoke drawn brightest; it advances by one every interval.
    int frame() const { return mFrame; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mBusy{this};
    bool mIsBusy;
    int mFrame;
    std::unique_ptr<Kel_AnimationTimer> mAnimationP;
};

#endif
