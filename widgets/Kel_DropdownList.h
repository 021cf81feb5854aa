#ifndef KEL_DROPDOWNLIST_H
#define KEL_DROPDOWNLIST_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QComboBox>

// A drop-down list whose items are the strings of an array model and whose
// chosen item is the index held by a long model (-1: none). The user's
// choice is written to the index model and taken back when refused. Without
// a connected list or index model the list is disabled; an index out of
// range shows no item.
class KELCORE_EXPORT Kel_DropdownList : public QComboBox, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray listConnection READ getListConnectionSpec WRITE setListConnectionSpec)
    Q_PROPERTY(QByteArray currentIndexConnection READ getCurrentIndexConnectionSpec WRITE setCurrentIndexConnectionSpec)
    Q_PROPERTY(QByteArray enabledStateConnection READ getEnabledStateConnectionSpec WRITE setEnabledStateConnectionSpec)

public:
    explicit Kel_DropdownList(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_DropdownList() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setListConnectionSpec(const QByteArray& spec) { mItems.setSpec(QString::fromUtf8(spec)); }
    QByteArray getListConnectionSpec() const { return mItems.spec().toUtf8(); }
    void setCurrentIndexConnectionSpec(const QByteArray& spec) { mCurrent.setSpec(QString::fromUtf8(spec)); }
    QByteArray getCurrentIndexConnectionSpec() const { return mCurrent.spec().toUtf8(); }
    void setEnabledStateConnectionSpec(const QByteArray& spec) { mEnabledState.setSpec(QString::fromUtf8(spec)); }
    QByteArray getEnabledStateConnectionSpec() const { return mEnabledState.spec().toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the items, the index and the enabled state.
    void updateAppearance();

private slots:
    void userActivated(int index);

private:
    Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> mItems{this};
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mCurrent{this, Kel_BoundPropertyBase::kConnectAlways};
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mEnabledState{this};
};

#endif
