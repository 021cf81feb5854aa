#include "Kel_RevealBody.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_WhatsThis.h"

#include <QPointer>

Kel_RevealBody::Kel_RevealBody(QWidget* parent, const char* name) : QFrame(parent), mIsRevealed(true)
{
    setObjectName(QString::fromLatin1(name));
    mRevealed.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_RevealBody");
}

Kel_RevealBody::~Kel_RevealBody() = default;

void Kel_RevealBody::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_RevealBody> self(this);
    if (!mRevealed.connect(environment))
        return;
    updateAppearance();
    if (self)
        Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
}

void Kel_RevealBody::updateAppearance()
{
    bool revealed = true;
    mRevealed->get(revealed);
    mIsRevealed = revealed;
    // Explicit either way: a window shown later keeps a concealed body
    // hidden, and a revealed one appears with its window.
    setVisible(revealed);
}
