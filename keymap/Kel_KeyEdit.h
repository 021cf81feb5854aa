#ifndef KEL_KEYEDIT_H
#define KEL_KEYEDIT_H

#include "kelcore_export.h"

#include "Kel_BoundText.h"
#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QLineEdit>
#include <QString>

class QKeyEvent;

// A one-line field in which the user presses a key combination instead of
// typing: it shows the combination as portable key text (Ctrl+Shift+F5), the
// text keymap files use. Its text is bound to a string model, either one it
// listens to or, for a specification "publish <name>", one it publishes.
class KELCORE_EXPORT Kel_KeyEdit : public QLineEdit, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray textConnection READ GetTextConnection WRITE SetTextConnection)

public:
    explicit Kel_KeyEdit(QWidget* parent = nullptr, QString name = QString(), QString textConnection = QString());
    ~Kel_KeyEdit() override;

    // Leaves the current model (or withdraws the published one) and takes
    // spec: a model to listen to, connected by makeConnections, or "publish"
    // and a name, published at once. Nothing happens when spec is unchanged.
    void SetTextConnection(const QByteArray& spec);
    QByteArray GetTextConnection() const { return mText.spec(); }
    // Unbinds the field: unpublishes its model or leaves the listened one.
    void ClearConnection();

    // Connects the listened model; a published model needs nothing.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The first value the listened model gave, for a dialog that resets its fields.
    QString getInitialText() const { return mInitialText; }

    // The portable text of a key and its Shift, Control, Alt and Meta modifiers.
    static QString keyText(int key, Qt::KeyboardModifiers modifiers);

public slots:
    // Tells the published model's listeners, or writes the text to the listened model.
    void slotTextChanged();

protected:
    // Replaces the text with the pressed combination; modifiers alone change nothing.
    void keyPressEvent(QKeyEvent* event) override;

private:
    Kel_BoundText mText;
    QString mInitialText;
};

#endif
