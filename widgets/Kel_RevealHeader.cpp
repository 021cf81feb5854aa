#include "Kel_RevealHeader.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_RevealButton.h"
#include "Kel_WhatsThis.h"

#include <QHBoxLayout>
#include <QMouseEvent>

Kel_RevealHeader::Kel_RevealHeader(QWidget* parent, const char* name)
    : QFrame(parent), mButtonP(new Kel_RevealButton(this, "revealButton")), mLabelP(new Kel_Label(this, "revealText"))
{
    setObjectName(QString::fromLatin1(name));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mButtonP);
    layout->addWidget(mLabelP, 1);
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_RevealHeader");
}

Kel_RevealHeader::~Kel_RevealHeader() = default;

void Kel_RevealHeader::setRevealStateConnection(const QByteArray& spec)
{
    mButtonP->setRevealStateConnection(spec);
}

QByteArray Kel_RevealHeader::getRevealStateConnection() const
{
    return mButtonP->getRevealStateConnection();
}

void Kel_RevealHeader::setTextConnectionSpec(const QByteArray& spec)
{
    mLabelP->setTextConnectionSpec(spec);
}

QByteArray Kel_RevealHeader::getTextConnectionSpec() const
{
    return mLabelP->getTextConnectionSpec();
}

void Kel_RevealHeader::setText(const QString& text)
{
    mLabelP->setText(text);
}

QString Kel_RevealHeader::text() const
{
    return mLabelP->text();
}

void Kel_RevealHeader::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
}

void Kel_RevealHeader::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        event->accept(); // so that the release comes here
    else
        QFrame::mousePressEvent(event);
}

void Kel_RevealHeader::mouseReleaseEvent(QMouseEvent* event)
{
    // The whole header is the button's target, as users expect of a disclosure row.
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()) && mButtonP->isEnabled()) {
        event->accept();
        mButtonP->click();
        return;
    }
    QFrame::mouseReleaseEvent(event);
}
