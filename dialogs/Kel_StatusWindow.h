#ifndef KEL_STATUSWINDOW_H
#define KEL_STATUSWINDOW_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Action.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QDialog>

class Kel_Label;
class Kel_ProgressThermometer;
class QPushButton;

// The status window of a long piece of work: a message, a progress
// thermometer and a Cancel button. The message and the progress come from a
// string and a double model; Cancel (and Escape, and closing the window)
// calls a cancel action, is disabled while that action is missing or
// disabled, and after a call reads "Cancelling..." until the work ends. With
// an active-state model (bool) the window shows itself while it holds true
// and hides when it turns false; without one its owner shows and hides it.
class KELCORE_EXPORT Kel_StatusWindow : public QDialog, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray messageConnection READ getMessageConnectionSpec WRITE setMessageConnectionSpec)
    Q_PROPERTY(QByteArray progressConnection READ getProgressConnectionSpec WRITE setProgressConnectionSpec)
    Q_PROPERTY(QByteArray cancelConnection READ getCancelConnectionSpec WRITE setCancelConnectionSpec)
    Q_PROPERTY(QByteArray activeStateConnection READ getActiveStateConnectionSpec WRITE setActiveStateConnectionSpec)

public:
    typedef Mvt_Action<void()> CancelAction;

    explicit Kel_StatusWindow(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_StatusWindow() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setMessageConnectionSpec(const QByteArray& spec);
    QByteArray getMessageConnectionSpec() const;
    void setProgressConnectionSpec(const QByteArray& spec);
    QByteArray getProgressConnectionSpec() const;
    void setCancelConnectionSpec(const QByteArray& spec) { mCancel.setSpec(QString::fromUtf8(spec)); }
    QByteArray getCancelConnectionSpec() const { return mCancel.spec().toUtf8(); }
    void setActiveStateConnectionSpec(const QByteArray& spec) { mActive.setSpec(QString::fromUtf8(spec)); }
    QByteArray getActiveStateConnectionSpec() const { return mActive.spec().toUtf8(); }

    // Connects the window's own models and the message and thermometer.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the cancel action and the active state.
    void updateAppearance();

    Kel_Label* messageLabel() const { return mMessageP; }
    Kel_ProgressThermometer* thermometer() const { return mThermometerP; }
    QPushButton* cancelButton() const { return mCancelButtonP; }
    bool isCancelRequested() const { return mCancelRequested; }

public slots:
    // Asks the work to stop through the cancel action; the window stays
    // until the work ends (or, without an active-state model, closes at once
    // when the action took the request).
    void requestCancel();
    // Escape and the window's close button cancel (or just close the
    // window when no cancel action is named).
    void reject() override;

private:
    Kel_BoundProperty<CancelAction::Listener> mCancel{this};
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mActive{this};
    Kel_Label* mMessageP;
    Kel_ProgressThermometer* mThermometerP;
    QPushButton* mCancelButtonP;
    bool mCancelRequested;
};

#endif
