#ifndef KEL_VIEWACCESSIBLE_P_H
#define KEL_VIEWACCESSIBLE_P_H

// Internal to the library; not installed (exported for white-box tests).

#include "kelcore_export.h"

#include <QAccessibleInterface>
#include <QAccessibleWidget>

class Kel_BridgeBase;
class Kel_ViewInterface;

// The accessible interface of one light-weight view. What it reports comes
// from Kel_ViewAccessibility, read afresh at every question; the view's
// destruction makes it invalid. Interfaces of views that present more than
// their sub-views (the list view) derive from it.
class KELCORE_EXPORT Kel_ViewAccessible : public QAccessibleInterface,
                           public QAccessibleActionInterface,
                           public QAccessibleTextInterface,
                           public QAccessibleValueInterface
{
public:
    explicit Kel_ViewAccessible(Kel_ViewInterface* view);
    ~Kel_ViewAccessible() override;

    Kel_ViewInterface* view() const { return mViewP; }
    // The view is gone; the interface stays, invalid, until Qt drops it.
    void viewDestroyed() { mViewP = nullptr; }
    // True when the view presents what lies inside it by itself (a list's
    // rows), so that its sub-views get no interfaces of their own.
    virtual bool presentsDescendants() const { return false; }

    // QAccessibleInterface
    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text type) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleActionInterface: press (a click), toggle (Ctrl+click on a
    // selectable view, a click on a reveal view's header), set focus.
    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString& actionName) const override;

    // QAccessibleTextInterface, read-only: the text the view shows.
    void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

    // QAccessibleValueInterface, for views showing a number; read-only.
    QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return QVariant(); }
    QVariant minimumValue() const override { return QVariant(); }
    QVariant minimumStepSize() const override { return QVariant(); }

protected:
    // The text interface is offered for views that show text.
    bool showsText() const;
    bool showsNumber() const;

private:
    Kel_ViewInterface* mViewP; // not owned
};

// The interface of a widget that views are painted on (a plain bridge, or
// the content of a scroll-area bridge): its first child is the hosted view,
// then come its child widgets, and its focus child is the view that has the
// keyboard focus.
class Kel_BridgeAccessible : public QAccessibleWidget
{
public:
    Kel_BridgeAccessible(QWidget* host, Kel_BridgeBase* bridge, QWidget* bridgeWidget);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text type) const override;

private:
    QAccessibleInterface* hostedView() const;

    Kel_BridgeBase* mBridgeP;   // not owned; lives as long as the host
    QWidget* mBridgeWidgetP;    // not owned
};

#endif
