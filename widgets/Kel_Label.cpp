#include "Kel_Label.h"

#include "Kel_WhatsThis.h"

#include <QContextMenuEvent>
#include <QPointer>

Kel_Label::Kel_Label(QWidget* parent, const char* name) : QLabel(parent)
{
    setObjectName(QString::fromLatin1(name));

    // Any notification leads to a full re-read.
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mText, &mToolTip, &mMenu})
        property->onNotify([this] { updateAppearance(); });

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Label");
}

Kel_Label::~Kel_Label() = default;

void Kel_Label::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mToolTip, &mMenu, &mText});
}

void Kel_Label::updateAppearance()
{
    QPointer<Kel_Label> self(this);
    setText(getLabelString());
    if (!self)
        return;
    if (mToolTip.isNamed())
        setToolTip(mToolTip->value(QString()));
}

QString Kel_Label::getLabelString()
{
    if (!mText.isNamed())
        return text();
    return mText->value(QString());
}

void Kel_Label::contextMenuEvent(QContextMenuEvent* event)
{
    if (!mMenu.isConnected()) {
        QLabel::contextMenuEvent(event);
        return;
    }
    event->accept();
    mMenu->call(this, event);
}
