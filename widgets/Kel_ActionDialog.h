#ifndef KEL_ACTIONDIALOG_H
#define KEL_ACTIONDIALOG_H

#include "kelcore_export.h"

#include "Kel_ActionScriptRunner.h"
#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QDialog>

// A dialog (usually the top widget of a dialog form) whose acceptance is an
// action script: accepting runs actionScript and closes the dialog, rejecting
// runs rejectScript, if any, and closes it. While the accept script cannot
// run (a model it names is missing, an action it calls is disabled) the
// dialog cannot be accepted: accept() leaves it open and the accepting
// buttons of its button boxes are disabled. Connecting the dialog connects
// its scripts and every widget in it, and ties its button boxes' accepted
// and rejected signals to accept() and reject().
class KELCORE_EXPORT Kel_ActionDialog : public QDialog, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray actionScript READ getActionScript WRITE setActionScript)
    Q_PROPERTY(QByteArray rejectScript READ getRejectScript WRITE setRejectScript)

public:
    explicit Kel_ActionDialog(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ActionDialog() override;

    // Parsed at once; connected at the next makeConnections.
    void setActionScript(const QByteArray& script) { mAcceptScript.setScript(script); }
    QByteArray getActionScript() const { return mAcceptScript.script(); }
    void setRejectScript(const QByteArray& script) { mRejectScript.setScript(script); }
    QByteArray getRejectScript() const { return mRejectScript.script(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Whether accept() would run the script and close now.
    bool canAccept() { return mAcceptScript.isReady(); }

public slots:
    void accept() override;
    void reject() override;

private:
    void updateAcceptButtons();

    Kel_ActionScriptRunner mAcceptScript{this, "ActionDialogAcceptTask"};
    Kel_ActionScriptRunner mRejectScript{this, "ActionDialogRejectTask"};
};

#endif
