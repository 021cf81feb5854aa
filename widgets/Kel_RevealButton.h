#ifndef KEL_REVEALBUTTON_H
#define KEL_REVEALBUTTON_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QToolButton>

// The disclosure triangle of a reveal group: it points down while the bool
// reveal-state model holds true and right while it holds false, and a click
// writes the opposite state (taken back when refused). The body of the
// group (Kel_RevealBody) follows the same model. Without a connected model
// the button points down and is disabled.
class KELCORE_EXPORT Kel_RevealButton : public QToolButton, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray revealStateConnection READ getRevealStateConnection WRITE setRevealStateConnection)

public:
    explicit Kel_RevealButton(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_RevealButton() override;

    // The reveal-state specification; it takes effect at the next makeConnections.
    void setRevealStateConnection(const QByteArray& spec) { mRevealed.setSpec(QString::fromUtf8(spec)); }
    QByteArray getRevealStateConnection() const { return mRevealed.spec().toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows its state.
    void updateAppearance();

    bool isRevealed() const { return isChecked(); }

private slots:
    void userToggled(bool revealed);

private:
    void showState(bool revealed);

    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mRevealed{this, Kel_BoundPropertyBase::kConnectAlways};
    bool mApplyingModelState;
};

#endif
