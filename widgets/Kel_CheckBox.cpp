#include "Kel_CheckBox.h"

#include "Kel_WhatsThis.h"

Kel_CheckBox::Kel_CheckBox(QWidget* parent, const char* name) : QCheckBox(parent), mApplyingModelState(false)
{
    // An empty name is the default: setting it would only allocate Qt's
    // extra object data.
    if (name && *name)
        setObjectName(QString::fromLatin1(name));

    // Any notification, whatever its kind, leads to a full re-read.
    mVisibleState.onNotify([this] {
        mVisibleConnected = mVisibleState.isConnected();
        updateAppearance();
    });
    mEnabledState.onNotify([this] {
        mEnabledConnected = mEnabledState.isConnected();
        updateAppearance();
    });
    mCheckedState.onNotify([this] { updateAppearance(); });

    connect(this, SIGNAL(toggled(bool)), this, SLOT(userChangedCheckedState(bool)));

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_CheckBox");
}

Kel_CheckBox::~Kel_CheckBox() = default;

void Kel_CheckBox::setVisibleStateConnectionSpec(const QByteArray& spec)
{
    mVisibleState.setSpec(QString::fromUtf8(spec));
}

void Kel_CheckBox::setEnabledStateConnectionSpec(const QByteArray& spec)
{
    mEnabledState.setSpec(QString::fromUtf8(spec));
}

void Kel_CheckBox::setCheckedStateConnectionSpec(const QByteArray& spec)
{
    mCheckedState.setSpec(QString::fromUtf8(spec));
}

void Kel_CheckBox::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mVisibleState, &mEnabledState, &mCheckedState});
}

void Kel_CheckBox::updateAppearance()
{
    const Kel_DeletionGuard::Watch watch(mGuard);

    bool visible = true;
    if (mVisibleConnected)
        mVisibleState->get(visible);
    setVisible(visible);
    if (watch.deleted())
        return;

    bool checked = false;
    mCheckedState->get(checked);
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    setChecked(checked);
    if (watch.deleted())
        return;
    mApplyingModelState = wasApplying;

    bool enabled = true;
    if (mEnabledConnected)
        mEnabledState->get(enabled);
    setEnabled(enabled && mCheckedState.isConnected());
}

void Kel_CheckBox::userChangedCheckedState(bool checked)
{
    if (mApplyingModelState || !mCheckedState.isConnected())
        return;
    if (mCheckedState.set(checked) != Mvt_SimpleValue_BaseAPI::kSetRefused)
        return; // accepted (its notification shows it), or the box is gone
    // Refused (read-only model, rejected value): show the model's state again.
    const Kel_DeletionGuard::Watch watch(mGuard);
    mApplyingModelState = true;
    setChecked(!checked);
    if (!watch.deleted())
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
