#include "Kel_Label.h"

#include "Kel_FontManager.h"
#include "Kel_WhatsThis.h"
#include "Mv_MessageDispatcher.h"

#include <QContextMenuEvent>
#include <QPointer>

namespace {

// One dispatcher per listener role, shared by every label; any
// notification leads to a full re-read.
const Mv_MessageDispatcher<Kel_Label>& textDispatcher()
{
    static const Mv_MessageDispatcher<Kel_Label> dispatcher(&Kel_Label::updateAppearance);
    return dispatcher;
}

const Mv_MessageDispatcher<Kel_Label>& toolTipDispatcher()
{
    static const Mv_MessageDispatcher<Kel_Label> dispatcher(&Kel_Label::updateAppearance);
    return dispatcher;
}

const Mv_MessageDispatcher<Kel_Label>& menuDispatcher()
{
    static const Mv_MessageDispatcher<Kel_Label> dispatcher(&Kel_Label::updateAppearance);
    return dispatcher;
}

} // namespace

Kel_Label::Kel_Label(QWidget* parent, const char* name) : QLabel(parent)
{
    setObjectName(QString::fromLatin1(name));

    const auto blank = Mv_ConnectionEnvironment::blankEnvironment();
    mTextListenerP.reset(new StringListener(QString(), blank));
    mTextListenerP->setReceiveMessageCB([this](const Mv_MessageInterface& m) { textDispatcher().dispatch(this, m); });
    mToolTipListenerP.reset(new StringListener(QString(), blank));
    mToolTipListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { toolTipDispatcher().dispatch(this, m); });
    mMenuListenerP.reset(new MenuAction::Listener(QString(), blank));
    mMenuListenerP->setReceiveMessageCB([this](const Mv_MessageInterface& m) { menuDispatcher().dispatch(this, m); });

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Label");
}

Kel_Label::~Kel_Label()
{
    // Leave the models before the widget part goes away.
    mTextListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mToolTipListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mMenuListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mMenuListenerP.reset();
    mToolTipListenerP.reset();
    mTextListenerP.reset();
}

void Kel_Label::setTextConnectionSpec(const QByteArray& spec)
{
    mTextConnectionSpec = spec;
}

void Kel_Label::setToolTipConnections(const QByteArray& spec)
{
    mToolTipConnectionSpec = spec;
}

void Kel_Label::setMenuConnStr(const QByteArray& spec)
{
    mMenuConnectionSpec = spec;
}

void Kel_Label::setFontConnectionSpec(const QByteArray& key)
{
    if (key == mFontConnectionSpec)
        return;
    mFontConnectionSpec = key;
    if (!key.isEmpty())
        setFont(Kel_FontManager::getFont(QString::fromUtf8(key)));
}

void Kel_Label::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_Label> self(this); // a notification may delete the form
    if (!mToolTipConnectionSpec.isEmpty()) {
        mToolTipListenerP->SetConnectionName(QString::fromUtf8(mToolTipConnectionSpec));
        mToolTipListenerP->connect(environment);
        if (!self)
            return;
    }
    if (!mMenuConnectionSpec.isEmpty()) {
        mMenuListenerP->SetConnectionName(QString::fromUtf8(mMenuConnectionSpec));
        mMenuListenerP->connect(environment);
        if (!self)
            return;
    }
    mTextListenerP->SetConnectionName(QString::fromUtf8(mTextConnectionSpec));
    mTextListenerP->connect(environment);
}

void Kel_Label::updateAppearance()
{
    QPointer<Kel_Label> self(this);
    setText(getLabelString());
    if (!self)
        return;
    if (!mToolTipConnectionSpec.isEmpty())
        setToolTip(mToolTipListenerP->value(QString()));
}

QString Kel_Label::getLabelString()
{
    if (mTextConnectionSpec.isEmpty())
        return text();
    return mTextListenerP->value(QString());
}

void Kel_Label::contextMenuEvent(QContextMenuEvent* event)
{
    if (!mMenuListenerP->isConnectedToModel()) {
        QLabel::contextMenuEvent(event);
        return;
    }
    event->accept();
    mMenuListenerP->call(this, event);
}
