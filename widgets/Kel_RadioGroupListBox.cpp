#include "Kel_RadioGroupListBox.h"

#include "Kel_WhatsThis.h"

#include <QButtonGroup>
#include <QPointer>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

// Each row is a real widget: a list longer than this (a model gone wrong)
// shows its first rows rather than exhausting the machine. Long lists
// belong in a list view.
const long kMaxRows = 10000;

// The model named on its own, else the one derived from the base.
QString specOrDerived(const QByteArray& own, const QByteArray& base, const char* suffix)
{
    if (!own.isEmpty() || base.isEmpty())
        return QString::fromUtf8(own);
    return QString::fromUtf8(base) + QLatin1String(suffix);
}

} // namespace

Kel_RadioGroupListBox::Kel_RadioGroupListBox(QWidget* parent, const char* name)
    : QWidget(parent), mButtonLayoutP(nullptr), mGroupP(new QButtonGroup(this)), mApplyingModelState(false)
{
    setObjectName(QString::fromLatin1(name));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    mButtonLayoutP = new QVBoxLayout;
    layout->addLayout(mButtonLayoutP);
    layout->addStretch();
    for (Kel_BoundPropertyBase* property :
         std::initializer_list<Kel_BoundPropertyBase*>{&mList, &mNames, &mIDs, &mCurrent})
        property->onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_RadioGroupListBox");
}

Kel_RadioGroupListBox::~Kel_RadioGroupListBox() = default;

void Kel_RadioGroupListBox::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mList.setSpec(specOrDerived(mListSpec, mBase, ""));
    mNames.setSpec(specOrDerived(mNameSpec, mBase, ".name"));
    mIDs.setSpec(specOrDerived(mIDSpec, mBase, ".id"));
    mCurrent.setSpec(specOrDerived(mCurrentSpec, mBase, ".currentID"));
    Kel_BoundPropertyBase::connectAll(environment, {&mList, &mNames, &mIDs, &mCurrent});
}

void Kel_RadioGroupListBox::resizeButtons(int count)
{
    while (mButtons.size() > count) {
        // Later: the button may be the one whose click is being handled.
        QRadioButton* button = mButtons.takeLast();
        mGroupP->removeButton(button);
        button->hide();
        button->deleteLater();
    }
    while (mButtons.size() < count) {
        const int row = mButtons.size();
        auto* button = new QRadioButton(this);
        button->setObjectName(objectName() + QStringLiteral("_row%1").arg(row));
        mGroupP->addButton(button, row);
        connect(button, &QRadioButton::toggled, this, [this, row](bool on) {
            if (on && !mApplyingModelState)
                userChose(row);
        });
        mButtonLayoutP->addWidget(button);
        mButtons.append(button);
    }
}

Mv_Variant Kel_RadioGroupListBox::rowID(int row) const
{
    if (!mIDs.isConnected())
        return Mv_Variant(long(row));
    Mv_Variant id;
    mIDs->sendToElement(row, Mvt_SimpleValue_BaseAPI::MsgGetVariant(&id), false);
    return id;
}

int Kel_RadioGroupListBox::currentRow() const
{
    const int row = mGroupP->checkedId();
    return row >= 0 && row < mButtons.size() ? row : -1;
}

void Kel_RadioGroupListBox::updateAppearance()
{
    long rows = mList->size();
    if (!mList.isNamed() && mNames.isConnected())
        rows = mNames->size(); // the names alone give the rows
    resizeButtons(int(qBound(0L, rows, kMaxRows)));

    Mv_Variant current;
    const bool hasCurrent =
        mCurrent->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&current), false) && !current.isEmpty();
    const QString currentText = current.value<QString>();
    int chosen = -1;
    for (int row = 0; row < mButtons.size(); ++row) {
        mButtons[row]->setText(mNames->element<QString>(row));
        if (chosen < 0 && hasCurrent && rowID(row).value<QString>() == currentText)
            chosen = row;
    }

    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    // An exclusive group cannot untick its last button.
    mGroupP->setExclusive(false);
    for (int row = 0; row < mButtons.size(); ++row)
        mButtons[row]->setChecked(row == chosen);
    mGroupP->setExclusive(true);
    mApplyingModelState = wasApplying;
    for (QRadioButton* button : qAsConst(mButtons))
        button->setEnabled(mCurrent.isConnected());
}

void Kel_RadioGroupListBox::userChose(int row)
{
    if (!mCurrent.isConnected())
        return;
    QPointer<Kel_RadioGroupListBox> self(this);
    int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
    mCurrent->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgSetVariant(rowID(row), &status), true);
    if (self && status != Mvt_SimpleValue_BaseAPI::kSetChanged && status != Mvt_SimpleValue_BaseAPI::kSetUnchanged)
        updateAppearance(); // refused, or an id the model cannot take
}
