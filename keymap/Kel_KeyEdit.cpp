#include "Kel_KeyEdit.h"

#include "Kel_SubscriptionIdentifierSubstitution.h"
#include "Kel_WhatsThis.h"

#include <QKeyEvent>
#include <QKeySequence>

Kel_KeyEdit::Kel_KeyEdit(QWidget* parent, QString name, QString textConnection)
    : QLineEdit(parent)
    , mText(this, [this] { return text(); }, [this](const QString& value) { setText(value); })
{
    setObjectName(name);
    mText.onListenedValue([this](const QString& value) {
        if (mInitialText.isEmpty())
            mInitialText = value;
    });
    SetTextConnection(textConnection.toLatin1());
    connect(this, SIGNAL(textChanged(const QString&)), this, SLOT(slotTextChanged()));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_KeyEdit");
}

Kel_KeyEdit::~Kel_KeyEdit() = default;

void Kel_KeyEdit::SetTextConnection(const QByteArray& spec)
{
    mText.setSpec(spec, [this](const QString& name) { return Kel_SubscriptionIdentifierSubstitution(name, this); });
}

void Kel_KeyEdit::ClearConnection()
{
    mText.clear();
}

void Kel_KeyEdit::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mText.connect(environment);
}

QString Kel_KeyEdit::keyText(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers kept =
        modifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return QKeySequence(key | int(kept)).toString(QKeySequence::PortableText);
}

void Kel_KeyEdit::slotTextChanged()
{
    mText.textChanged();
}

void Kel_KeyEdit::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key >= Qt::Key_Shift && key <= Qt::Key_Alt) {
        // A modifier held alone is not a combination yet.
        QLineEdit::keyPressEvent(event);
        return;
    }
    setText(keyText(key, event->modifiers()));
    event->accept();
}
