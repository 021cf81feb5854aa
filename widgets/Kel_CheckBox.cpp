#include "Kel_CheckBox.h"

#include "Kel_FontManager.h"
#include "Kel_WhatsThis.h"
#include "Mv_MessageDispatcher.h"

#include <QPointer>

namespace {

// One dispatcher per listener role, shared by every check box. Any
// notification, whatever its kind, leads to a full re-read.
const Mv_MessageDispatcher<Kel_CheckBox>& visibleStateDispatcher()
{
    static const Mv_MessageDispatcher<Kel_CheckBox> dispatcher(&Kel_CheckBox::updateAppearance);
    return dispatcher;
}

const Mv_MessageDispatcher<Kel_CheckBox>& enabledStateDispatcher()
{
    static const Mv_MessageDispatcher<Kel_CheckBox> dispatcher(&Kel_CheckBox::updateAppearance);
    return dispatcher;
}

const Mv_MessageDispatcher<Kel_CheckBox>& checkedStateDispatcher()
{
    static const Mv_MessageDispatcher<Kel_CheckBox> dispatcher(&Kel_CheckBox::updateAppearance);
    return dispatcher;
}

} // namespace

Kel_CheckBox::Kel_CheckBox(QWidget* parent, const char* name) : QCheckBox(parent), mApplyingModelState(false)
{
    setObjectName(QString::fromLatin1(name));

    const auto blank = Mv_ConnectionEnvironment::blankEnvironment();
    mVisibleStateListenerP.reset(new BoolListener(QString(), blank));
    mVisibleStateListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { visibleStateDispatcher().dispatch(this, m); });
    mEnabledStateListenerP.reset(new BoolListener(QString(), blank));
    mEnabledStateListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { enabledStateDispatcher().dispatch(this, m); });
    mCheckedStateListenerP.reset(new BoolListener(QString(), blank));
    mCheckedStateListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { checkedStateDispatcher().dispatch(this, m); });

    connect(this, SIGNAL(toggled(bool)), this, SLOT(userChangedCheckedState(bool)));

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_CheckBox");
}

Kel_CheckBox::~Kel_CheckBox()
{
    // Leave the models before the widget part goes away.
    for (BoolListener* listener : {mVisibleStateListenerP.get(), mEnabledStateListenerP.get(), mCheckedStateListenerP.get()})
        listener->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mCheckedStateListenerP.reset();
    mEnabledStateListenerP.reset();
    mVisibleStateListenerP.reset();
}

void Kel_CheckBox::setVisibleStateConnectionSpec(const QByteArray& spec)
{
    mVisibleStateConnectionSpec = spec;
}

void Kel_CheckBox::setEnabledStateConnectionSpec(const QByteArray& spec)
{
    mEnabledStateConnectionSpec = spec;
}

void Kel_CheckBox::setCheckedStateConnectionSpec(const QByteArray& spec)
{
    mCheckedStateConnectionSpec = spec;
}

void Kel_CheckBox::setFontConnectionSpec(const QByteArray& key)
{
    if (key == mFontConnectionSpec)
        return;
    mFontConnectionSpec = key;
    if (!key.isEmpty())
        setFont(Kel_FontManager::getFont(QString::fromUtf8(key)));
}

void Kel_CheckBox::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_CheckBox> self(this); // a notification may delete the form
    if (!mVisibleStateConnectionSpec.isEmpty()) {
        mVisibleStateListenerP->SetConnectionName(QString::fromUtf8(mVisibleStateConnectionSpec));
        mVisibleStateListenerP->connect(environment);
        if (!self)
            return;
    }
    if (!mEnabledStateConnectionSpec.isEmpty()) {
        mEnabledStateListenerP->SetConnectionName(QString::fromUtf8(mEnabledStateConnectionSpec));
        mEnabledStateListenerP->connect(environment);
        if (!self)
            return;
    }
    // Always, so that a box whose main model is missing shows as disabled.
    mCheckedStateListenerP->SetConnectionName(QString::fromUtf8(mCheckedStateConnectionSpec));
    mCheckedStateListenerP->connect(environment);
}

void Kel_CheckBox::updateAppearance()
{
    QPointer<Kel_CheckBox> self(this);

    bool visible = true;
    mVisibleStateListenerP->get(visible);
    setVisible(visible);
    if (!self)
        return;

    bool checked = false;
    mCheckedStateListenerP->get(checked);
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    setChecked(checked);
    if (!self)
        return;
    mApplyingModelState = wasApplying;

    bool enabled = true;
    mEnabledStateListenerP->get(enabled);
    setEnabled(enabled && mCheckedStateListenerP->isConnectedToModel());
}

void Kel_CheckBox::userChangedCheckedState(bool checked)
{
    if (mApplyingModelState || !mCheckedStateListenerP->isConnectedToModel())
        return;
    QPointer<Kel_CheckBox> self(this);
    const int status = mCheckedStateListenerP->set(checked);
    if (!self || status != Mvt_SimpleValue_BaseAPI::kSetRefused)
        return;
    // Refused (read-only model, rejected value): show the model's state again.
    mApplyingModelState = true;
    setChecked(!checked);
    if (self)
        mApplyingModelState = false;
}

bool Kel_CheckBox::findPoi(const QString& dottedName, QRect* globalRect)
{
    if (!dottedName.isEmpty() && dottedName != objectName())
        return false;
    if (globalRect)
        *globalRect = QRect(mapToGlobal(QPoint(0, 0)), size());
    return true;
}
