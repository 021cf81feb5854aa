#include "Kel_TextEdit.h"

#include "Kel_EditMenuCommands.h"
#include "Kel_SubscriptionIdentifierSubstitution.h"
#include "Kel_WhatsThis.h"

#include <QFocusEvent>

Kel_TextEdit::Kel_TextEdit(QWidget* parent, QString title, QString textConnection)
    : Kel_AutoAlignTextEdit(parent)
    , mText(this, [this] { return get(); }, [this](const QString& value) { set(value); })
    , mPlainTextMode(false)
{
    setWindowTitle(title);
    init(textConnection);
}

Kel_TextEdit::Kel_TextEdit(QWidget* parent, const char* name)
    : Kel_AutoAlignTextEdit(parent)
    , mText(this, [this] { return get(); }, [this](const QString& value) { set(value); })
    , mPlainTextMode(false)
{
    setObjectName(QString::fromLatin1(name));
    init(QString());
}

void Kel_TextEdit::init(const QString& textConnection)
{
    mText.onListenedValue([this](const QString& value) { mInitialValue = value; });
    SetTextConnection(textConnection.toLatin1());
    connect(this, SIGNAL(textChanged()), this, SLOT(slotTextChanged()));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_TextEdit");
}

Kel_TextEdit::~Kel_TextEdit() = default;

QString Kel_TextEdit::get() const
{
    return mPlainTextMode ? toPlainText() : toHtml();
}

void Kel_TextEdit::set(const QString& text)
{
    if (mPlainTextMode)
        setPlainText(text);
    else
        setHtml(text);
}

void Kel_TextEdit::SetTextConnection(const QByteArray& spec)
{
    mText.setSpec(spec, [this](const QString& name) { return Kel_SubscriptionIdentifierSubstitution(name, this); });
}

void Kel_TextEdit::ClearConnection()
{
    mText.clear();
}

void Kel_TextEdit::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mText.connect(environment);
}

bool Kel_TextEdit::findCommandStatus(unsigned int command, bool& enabled, QString&)
{
    return Kel_EditMenuCommands::textEditStatus(this, command, enabled);
}

void Kel_TextEdit::obeyCommand(unsigned int command)
{
    Kel_EditMenuCommands::obeyTextEdit(this, command, false);
}

void Kel_TextEdit::slotTextChanged()
{
    mText.textChanged();
}

void Kel_TextEdit::focusInEvent(QFocusEvent* event)
{
    Kel_AutoAlignTextEdit::focusInEvent(event);
    Kel_EditMenuCommands::focusIn(this);
}

void Kel_TextEdit::focusOutEvent(QFocusEvent* event)
{
    if (!Kel_EditMenuCommands::swallowsFocusOut(this, event))
        Kel_AutoAlignTextEdit::focusOutEvent(event);
}
