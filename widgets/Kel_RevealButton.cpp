#include "Kel_RevealButton.h"

#include "Kel_WhatsThis.h"

#include <QPointer>

Kel_RevealButton::Kel_RevealButton(QWidget* parent, const char* name)
    : QToolButton(parent), mApplyingModelState(false)
{
    setObjectName(QString::fromLatin1(name));
    setCheckable(true);
    setAutoRaise(true);
    showState(true);
    mRevealed.onNotify([this] { updateAppearance(); });
    connect(this, SIGNAL(toggled(bool)), this, SLOT(userToggled(bool)));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_RevealButton");
}

Kel_RevealButton::~Kel_RevealButton() = default;

void Kel_RevealButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mRevealed.connect(environment);
}

void Kel_RevealButton::showState(bool revealed)
{
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    setChecked(revealed);
    setArrowType(revealed ? Qt::DownArrow : Qt::RightArrow);
    mApplyingModelState = wasApplying;
}

void Kel_RevealButton::updateAppearance()
{
    QPointer<Kel_RevealButton> self(this);
    bool revealed = true;
    mRevealed->get(revealed);
    showState(revealed);
    if (self)
        setEnabled(mRevealed.isConnected());
}

void Kel_RevealButton::userToggled(bool revealed)
{
    if (mApplyingModelState || !mRevealed.isConnected())
        return;
    setArrowType(revealed ? Qt::DownArrow : Qt::RightArrow);
    if (mRevealed.set(revealed) == Mvt_SimpleValue_BaseAPI::kSetRefused)
        updateAppearance();
}
