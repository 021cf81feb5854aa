#ifndef KEL_REVEALBODY_H
#define KEL_REVEALBODY_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QFrame>

// The body of a reveal group: a frame holding other widgets, shown while
// the bool reveal-state model holds true and hidden while it holds false.
// Without a connected model it is shown. Connecting it connects the widgets
// it holds.
class KELCORE_EXPORT Kel_RevealBody : public QFrame, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray revealStateConnection READ getRevealStateConnection WRITE setRevealStateConnection)

public:
    explicit Kel_RevealBody(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_RevealBody() override;

    // The reveal-state specification; it takes effect at the next makeConnections.
    void setRevealStateConnection(const QByteArray& spec) { mRevealed.setSpec(QString::fromUtf8(spec)); }
    QByteArray getRevealStateConnection() const { return mRevealed.spec().toUtf8(); }

    // Connects the reveal state, then the children.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows or hides the body.
    void updateAppearance();

    // Whether the model says the body is revealed (true without one).
    bool isRevealed() const { return mIsRevealed; }

private:
    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mRevealed{this};
    bool mIsRevealed;
};

#endif
