#include "Kel_CheckBoxList.h"

#include "Kel_WhatsThis.h"

#include <QCheckBox>
#include <QPointer>
#include <QVBoxLayout>

namespace {

// Each row is a real widget: a list longer than this (a model gone wrong)
// shows its first rows rather than exhausting the machine. Long lists
// belong in a list view.
const long kMaxRows = 10000;

} // namespace

Kel_CheckBoxList::Kel_CheckBoxList(QWidget* parent, const char* name)
    : QWidget(parent), mBoxLayoutP(nullptr), mApplyingModelState(false)
{
    setObjectName(QString::fromLatin1(name));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    mBoxLayoutP = new QVBoxLayout;
    layout->addLayout(mBoxLayoutP);
    layout->addStretch();
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mList, &mNames, &mChecked})
        property->onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_CheckBoxList");
}

Kel_CheckBoxList::~Kel_CheckBoxList() = default;

void Kel_CheckBoxList::setListConnectionSpec(const QByteArray& spec)
{
    const QString list = QString::fromUtf8(spec);
    mList.setSpec(list);
    mNames.setSpec(list.isEmpty() ? QString() : list + QStringLiteral(".name"));
    mChecked.setSpec(list.isEmpty() ? QString() : list + QStringLiteral(".checked"));
}

void Kel_CheckBoxList::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mNames, &mChecked, &mList});
}

void Kel_CheckBoxList::resizeBoxes(int count)
{
    while (mBoxes.size() > count) {
        // Later: the box may be the one whose toggled signal is being handled.
        QCheckBox* box = mBoxes.takeLast();
        box->hide();
        box->deleteLater();
    }
    while (mBoxes.size() < count) {
        const int row = mBoxes.size();
        auto* box = new QCheckBox(this);
        box->setObjectName(objectName() + QStringLiteral("_row%1").arg(row));
        connect(box, &QCheckBox::toggled, this, [this, row](bool checked) { userToggled(row, checked); });
        mBoxLayoutP->addWidget(box);
        mBoxes.append(box);
    }
}

void Kel_CheckBoxList::updateAppearance()
{
    QPointer<Kel_CheckBoxList> self(this);
    const long rows = mList->size();
    resizeBoxes(int(qBound(0L, rows, kMaxRows)));
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    for (int row = 0; row < mBoxes.size(); ++row) {
        QCheckBox* box = mBoxes[row];
        box->setText(mNames->element<QString>(row));
        bool checked = false;
        const bool known = mChecked->getElement(row, checked);
        box->setChecked(checked);
        box->setEnabled(known);
        if (!self)
            return;
    }
    mApplyingModelState = wasApplying;
    appearanceUpdated();
}

void Kel_CheckBoxList::userToggled(int row, bool checked)
{
    if (mApplyingModelState)
        return;
    QPointer<Kel_CheckBoxList> self(this);
    const int status = mChecked->setElement(row, checked);
    if (!self)
        return; // its notification deleted the list
    if (status == Mvt_SimpleValue_BaseAPI::kSetRefused || status == Mvt_SimpleValue_BaseAPI::kSetNotAnswered)
        updateAppearance(); // the model's state again
}

void Kel_CheckBoxList::setAllChecked(bool checked)
{
    QPointer<Kel_CheckBoxList> self(this);
    for (int row = 0; self && row < mBoxes.size(); ++row) {
        if (mBoxes[row]->isEnabled())
            mChecked->setElement(row, checked);
    }
    if (self)
        updateAppearance();
}
