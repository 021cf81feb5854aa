#ifndef KEL_TIME_H
#define KEL_TIME_H

#include "kelcore_export.h"

#include "Kel_Label.h"

#include <QString>

// A bound label showing a duration, a double model holding seconds, as
// minutes and seconds ("1:15"), or hours, minutes and seconds from an hour
// on ("1:00:00"); negative durations get a "-" in front.
class KELCORE_EXPORT Kel_Time : public Kel_Label
{
    Q_OBJECT

public:
    // name is not used.
    explicit Kel_Time(QWidget* parent = nullptr, QString connectionSpec = QString(), const char* name = nullptr,
                      bool hideWhenZero = false);
    ~Kel_Time() override;

    // The seconds model's specification; takes effect at the next makeConnections.
    void setConnectionSpec(const QString& spec) { mSeconds.setSpec(spec); }
    QString getConnectionSpec() const { return mSeconds.spec(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The text of a duration; empty for less than a second when hiding zero.
    QString Time2String(double seconds) const;
    // Shows durations under half a second as an empty text.
    void hideWhenZero(bool hide);

protected:
    // The duration of the connected model, or empty.
    QString getLabelString() override;

private:
    Kel_BoundProperty<Mvt_SimpleValue<double>::Listener> mSeconds{this, Kel_BoundPropertyBase::kConnectAlways};
    bool mHideWhenZero;
};

#endif
