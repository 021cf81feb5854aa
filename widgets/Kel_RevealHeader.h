#ifndef KEL_REVEALHEADER_H
#define KEL_REVEALHEADER_H

#include "kelcore_export.h"

#include "Kel_WidgetConnectInterface.h"

#include <QByteArray>
#include <QFrame>

class Kel_Label;
class Kel_RevealButton;

// The header of a reveal group: a Kel_RevealButton and a Kel_Label side by
// side. Its reveal-state specification is the button's and its text
// specification the label's (a header without one shows its own text); a
// click anywhere on the header works the button.
class KELCORE_EXPORT Kel_RevealHeader : public QFrame, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray revealStateConnection READ getRevealStateConnection WRITE setRevealStateConnection)
    Q_PROPERTY(QByteArray textConnection READ getTextConnectionSpec WRITE setTextConnectionSpec)
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit Kel_RevealHeader(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_RevealHeader() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setRevealStateConnection(const QByteArray& spec);
    QByteArray getRevealStateConnection() const;
    void setTextConnectionSpec(const QByteArray& spec);
    QByteArray getTextConnectionSpec() const;
    // The text shown while no text model is named.
    void setText(const QString& text);
    QString text() const;

    // Connects the button and the label.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    Kel_RevealButton* button() const { return mButtonP; }
    Kel_Label* label() const { return mLabelP; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Kel_RevealButton* mButtonP;
    Kel_Label* mLabelP;
};

#endif
