#include "Kel_LineEdit.h"

#include "Kel_EditMenuCommands.h"
#include "Kel_KeymapMgr.h"
#include "Kel_SubscriptionIdentifierSubstitution.h"
#include "Kel_WhatsThis.h"

#include <QFocusEvent>
#include <QKeyEvent>

Kel_LineEdit::Kel_LineEdit(QWidget* parent, QString name, QString textConnection)
    : Kel_AutoAlignLineEdit(parent)
    , mText(this, [this] { return text(); }, [this](const QString& value) { setText(value); })
    , mAllowHotKeys(false)
{
    setObjectName(name);
    mText.onListenedValue([this](const QString& value) { mInitialValue = value; });
    SetTextConnection(textConnection.toLatin1());
    setFrame(true);
    connect(this, SIGNAL(textChanged(const QString&)), this, SLOT(slotTextChanged()));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_LineEdit");
}

Kel_LineEdit::~Kel_LineEdit() = default;

void Kel_LineEdit::SetTextConnection(const QByteArray& spec)
{
    mText.setSpec(spec, [this](const QString& name) { return Kel_SubscriptionIdentifierSubstitution(name, this); });
}

void Kel_LineEdit::ClearConnection()
{
    mText.clear();
}

void Kel_LineEdit::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mEnvironment = environment;
    mText.connect(environment);
}

bool Kel_LineEdit::findCommandStatus(unsigned int command, bool& enabled, QString&)
{
    return Kel_EditMenuCommands::lineEditStatus(this, command, enabled);
}

void Kel_LineEdit::obeyCommand(unsigned int command)
{
    Kel_EditMenuCommands::obeyLineEdit(this, command);
}

void Kel_LineEdit::slotTextChanged()
{
    mText.textChanged();
}

void Kel_LineEdit::keyPressEvent(QKeyEvent* event)
{
    Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
    if (mAllowHotKeys) {
        const QString hotkey = keymap->lookup(event, QStringLiteral("Hotkey"));
        if (!hotkey.isEmpty()) {
            insert(hotkey.section(QLatin1Char('|'), 1, 1));
            event->accept();
            return;
        }
    }
    if (keymap->handleAction(event, QStringLiteral("LineEdit"), mEnvironment))
        return;
    if (keymap->hasAction(event, QStringLiteral("MainWindow"))) {
        event->ignore(); // the window's key, not text
        return;
    }
    Kel_AutoAlignLineEdit::keyPressEvent(event);
}

void Kel_LineEdit::focusInEvent(QFocusEvent* event)
{
    Kel_AutoAlignLineEdit::focusInEvent(event);
    Kel_EditMenuCommands::focusIn(this);
}

void Kel_LineEdit::focusOutEvent(QFocusEvent* event)
{
    if (!Kel_EditMenuCommands::swallowsFocusOut(this, event))
        Kel_AutoAlignLineEdit::focusOutEvent(event);
}
