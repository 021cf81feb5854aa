#ifndef KEL_LABEL_H
#define KEL_LABEL_H

#include "kelcore_export.h"

#include "Kel_BoundFont.h"
#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Action.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QLabel>

class QContextMenuEvent;

// A label bound to models: its text and tool tip come from string models,
// its font from the font manager, and a right-click can call an action
// model. A label without a text specification keeps the text it was given,
// like a plain QLabel; one whose text model is not connected is empty.
class KELCORE_EXPORT Kel_Label : public QLabel, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray textConnection READ getTextConnectionSpec WRITE setTextConnectionSpec)
    Q_PROPERTY(QByteArray fontConnection READ getFontConnectionSpec WRITE setFontConnectionSpec)
    Q_PROPERTY(QByteArray toolTipConnection READ getToolTipConnections WRITE setToolTipConnections)
    Q_PROPERTY(QByteArray menuConnection READ getMenuConnStr WRITE setMenuConnStr)

public:
    // The action a right-click calls, with the label and the event.
    typedef Mvt_Action<void(QWidget*, QContextMenuEvent*)> MenuAction;

    explicit Kel_Label(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Label() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setTextConnectionSpec(const QByteArray& spec) { mText.setSpec(QString::fromUtf8(spec)); }
    QByteArray getTextConnectionSpec() const { return mText.spec().toUtf8(); }
    void setToolTipConnections(const QByteArray& spec) { mToolTip.setSpec(QString::fromUtf8(spec)); }
    QByteArray getToolTipConnections() const { return mToolTip.spec().toUtf8(); }
    void setMenuConnStr(const QByteArray& spec) { mMenu.setSpec(QString::fromUtf8(spec)); }
    QByteArray getMenuConnStr() const { return mMenu.spec().toUtf8(); }
    // A Kel_FontManager key (not a model); a non-empty key sets the font at once.
    void setFontConnectionSpec(const QByteArray& key) { mFont.setKey(key); }
    QByteArray getFontConnectionSpec() const { return mFont.key(); }

    // Connects the tool-tip and menu listeners when they are named, and the
    // text listener always.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the models and shows their values.
    void updateAppearance();

protected:
    // The text to show: the text model's value (empty while it is not
    // connected), or the label's own text when no text model is named.
    // Labels that format a value of another kind override it.
    virtual QString getLabelString();

    // Calls the menu action, when connected, and takes the event.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> StringProperty;

    // Connected always, so that every connection shows the text again.
    StringProperty mText{this, StringProperty::kConnectAlways};
    StringProperty mToolTip{this};
    Kel_BoundProperty<MenuAction::Listener> mMenu{this};
    Kel_BoundFont mFont{this};
};

#endif
