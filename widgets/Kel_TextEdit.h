#ifndef KEL_TEXTEDIT_H
#define KEL_TEXTEDIT_H

#include "kelcore_export.h"

#include "Dak_EditMenuCommander.h"
#include "Kel_AutoAlignTextEdit.h"
#include "Kel_BoundText.h"
#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QString>

class QFocusEvent;

// A multi-line text field bound to a string model (listened to, or
// published by the field for "publish <name>"), holding HTML, or plain text
// in plain-text mode, and acting on the Edit menu's commands while it has
// the focus. Delete is reported available with a writable selection but
// does nothing here; Kel_AutoSizeTextEdit carries it out.
class KELCORE_EXPORT Kel_TextEdit : public Kel_AutoAlignTextEdit,
                                    public Dak_EditMenuCommander,
                                    public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray textConnection READ GetTextConnection WRITE SetTextConnection)

public:
    // title becomes the window title.
    Kel_TextEdit(QWidget* parent, QString title, QString textConnection = QString());
    // The factory's form: name becomes the object name.
    explicit Kel_TextEdit(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_TextEdit() override;

    bool isPlainTextMode() const { return mPlainTextMode; }
    void setPlainTextMode(bool plain) { mPlainTextMode = plain; }

    // The text as the model holds it: plain text in plain-text mode, else HTML.
    QString get() const;
    void set(const QString& text);

    // As Kel_KeyEdit: a model to listen to, or "publish" and a name.
    void SetTextConnection(const QByteArray& spec);
    QByteArray GetTextConnection() const { return mText.spec(); }
    void ClearConnection();
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    // The last value the listened model gave.
    QString getInitialValue() const { return mInitialValue; }

    bool findCommandStatus(unsigned int command, bool& enabled, QString& text) override;
    void obeyCommand(unsigned int command) override;

public slots:
    void slotTextChanged();

protected:
    void focusInEvent(QFocusEvent* event) override;
    // Skipped while the Edit menu opens over the field, which keeps its selection.
    void focusOutEvent(QFocusEvent* event) override;

private:
    void init(const QString& textConnection);

    Kel_BoundText mText;
    QString mInitialValue;
    bool mPlainTextMode;
};

#endif
