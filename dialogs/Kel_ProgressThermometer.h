#ifndef KEL_PROGRESSTHERMOMETER_H
#define KEL_PROGRESSTHERMOMETER_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QWidget>
#include <memory>

class Kel_AnimationTimer;

// A progress thermometer: a bar filled to the fraction held by a double
// model (0 nothing done, 1 all done; values outside are clamped) with the
// percentage written across it. A negative value means the amount of work
// is not known yet: a block then sweeps along the bar. Without a connected
// model the bar is empty and shows no text.
class KELCORE_EXPORT Kel_ProgressThermometer : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray progressConnection READ getProgressConnectionSpec WRITE setProgressConnectionSpec)

public:
    explicit Kel_ProgressThermometer(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ProgressThermometer() override;

    // The progress model's specification; it takes effect at the next makeConnections.
    void setProgressConnectionSpec(const QByteArray& spec) { mProgress.setSpec(QString::fromUtf8(spec)); }
    QByteArray getProgressConnectionSpec() const { return mProgress.spec().toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and repaints.
    void updateAppearance();

    // The fraction shown, in [0, 1]; -1 while the amount is unknown or unbound.
    double fraction() const { return mFraction; }
    bool isIndeterminate() const { return mIndeterminate; }
    // The text across the bar ("42%", empty when there is no figure).
    QString text() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<double>::Listener> mProgress{this, Kel_BoundPropertyBase::kConnectAlways};
    double mFraction;
    bool mIndeterminate;
    int mSweep;
    std::unique_ptr<Kel_AnimationTimer> mAnimationP;
};

#endif
