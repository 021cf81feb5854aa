#ifndef KEL_LINEEDIT_H
#define KEL_LINEEDIT_H

#include "kelcore_export.h"

#include "Dak_EditMenuCommander.h"
#include "Kel_AutoAlignLineEdit.h"
#include "Kel_BoundText.h"
#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QString>

class QFocusEvent;
class QKeyEvent;

// A one-line text field bound to a string model (listened to, or published
// by the field for "publish <name>"), acting on the Edit menu's commands
// while it has the focus. Keys go to the keymap first: the "LineEdit"
// context may use them, and a key mapped in "MainWindow" is left to the
// window instead of being typed.
class KELCORE_EXPORT Kel_LineEdit : public Kel_AutoAlignLineEdit,
                                    public Dak_EditMenuCommander,
                                    public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray textConnection READ GetTextConnection WRITE SetTextConnection)

public:
    explicit Kel_LineEdit(QWidget* parent = nullptr, QString name = QString(), QString textConnection = QString());
    ~Kel_LineEdit() override;

    // Lets keys mapped in the "Hotkey" context insert their text ("Hotkey|text").
    void setAllowHotKeys(bool allow) { mAllowHotKeys = allow; }
    // The last value the listened model gave.
    QString getInitialValue() const { return mInitialValue; }

    // As Kel_KeyEdit: a model to listen to, or "publish" and a name.
    void SetTextConnection(const QByteArray& spec);
    QByteArray GetTextConnection() const { return mText.spec(); }
    void ClearConnection();
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    bool findCommandStatus(unsigned int command, bool& enabled, QString& text) override;
    void obeyCommand(unsigned int command) override;

public slots:
    void slotTextChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    // Skipped while the Edit menu opens over the field, which keeps its selection.
    void focusOutEvent(QFocusEvent* event) override;

private:
    Kel_BoundText mText;
    QString mInitialValue;
    bool mAllowHotKeys;
    // The environment of the last makeConnections, for keymap scripts.
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
};

#endif
