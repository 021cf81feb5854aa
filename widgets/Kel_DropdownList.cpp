#include "Kel_DropdownList.h"

#include "Kel_WhatsThis.h"

#include <QPointer>

Kel_DropdownList::Kel_DropdownList(QWidget* parent, const char* name) : QComboBox(parent)
{
    setObjectName(QString::fromLatin1(name));
    for (Kel_BoundPropertyBase* property :
         std::initializer_list<Kel_BoundPropertyBase*>{&mItems, &mCurrent, &mEnabledState})
        property->onNotify([this] { updateAppearance(); });
    // activated() is the user's choice only; showing a model's index does not emit it.
    connect(this, SIGNAL(activated(int)), this, SLOT(userActivated(int)));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_DropdownList");
}

Kel_DropdownList::~Kel_DropdownList() = default;

void Kel_DropdownList::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mEnabledState, &mItems, &mCurrent});
}

void Kel_DropdownList::updateAppearance()
{
    QPointer<Kel_DropdownList> self(this);
    QStringList items;
    const long size = mItems->size();
    for (long i = 0; i < size; ++i)
        items.append(mItems->element<QString>(i));
    QStringList shown;
    for (int i = 0; i < count(); ++i)
        shown.append(itemText(i));
    if (items != shown) {
        clear();
        addItems(items);
    }
    if (!self)
        return;
    const long current = mCurrent->value(-1);
    setCurrentIndex(current >= 0 && current < count() ? int(current) : -1);
    if (!self)
        return;
    bool enabled = true;
    mEnabledState->get(enabled);
    setEnabled(enabled && mItems.isConnected() && mCurrent.isConnected());
}

void Kel_DropdownList::userActivated(int index)
{
    if (!mCurrent.isConnected())
        return;
    const int status = mCurrent.set(long(index));
    if (status == Mvt_SimpleValue_BaseAPI::kSetRefused)
        updateAppearance();
}
