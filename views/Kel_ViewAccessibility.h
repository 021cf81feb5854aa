#ifndef KEL_VIEWACCESSIBILITY_H
#define KEL_VIEWACCESSIBILITY_H

#include "kelcore_export.h"

#include <QAccessible>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QVariant>
#include <functional>

class Kel_BridgeBase;
class Kel_ViewInterface;
class QAccessibleEvent;
class QAccessibleInterface;
class QObject;
class QWidget;

// Makes the painted views visible to screen readers and UI automation: an
// accessible-interface factory installed with Qt (once, when the first
// bridge, widget list or painted widget is made), interfaces for every
// view, made on first ask and
// forgotten with their view, and the accessibility events of views. Each
// event costs nothing while no accessibility client is active.
class KELCORE_EXPORT Kel_ViewAccessibility
{
public:
    // Makes the interface of a view, or null to leave it to the next creator.
    typedef std::function<QAccessibleInterface*(Kel_ViewInterface* view)> ViewCreator;
    // Makes the interface of a widget, asked with each class name of its
    // class and of its base classes, most derived first; null passes on.
    typedef std::function<QAccessibleInterface*(const QString& className, QObject* object)> WidgetCreator;

    // Installs the factory with Qt; later calls do nothing. Needs the
    // application object (bridges and painted widgets call it when made).
    static void install();
    // Interfaces for view and widget classes that views/ does not know (the
    // lists register theirs); the creator added last is asked first.
    static void addViewCreator(const ViewCreator& creator);
    static void addWidgetCreator(const WidgetCreator& creator);

    // The interface of view, made and registered with Qt on first ask. Null
    // for null, for blank views (they only take room) and for the views a
    // list shows its rows with, which the list presents itself.
    static QAccessibleInterface* interfaceFor(Kel_ViewInterface* view);
    // The interface made for view already, or null; makes none.
    static QAccessibleInterface* existingInterface(Kel_ViewInterface* view);
    // The interface of what holds view: its container's, or its bridge's.
    static QAccessibleInterface* parentInterface(Kel_ViewInterface* view);
    // The views reported as view's children: a container's sub-views in
    // reading order (top to bottom, then left to right), without blank
    // views and without a folded reveal view's body.
    static QList<Kel_ViewInterface*> accessibleChildren(Kel_ViewInterface* view);

    // What a view reports; list rows report the views of their row view so.
    static QAccessible::Role role(Kel_ViewInterface* view);
    // The tool tip, else a reveal view's title, else the view's own
    // (point-of-interest) name.
    static QString name(Kel_ViewInterface* view);
    // What the view shows, read from its models now: a value view's text, a
    // reveal view's title, a container's texts joined by ", ".
    static QString text(Kel_ViewInterface* view);
    static QAccessible::State state(Kel_ViewInterface* view);
    // The widget the view is painted on and the view's rectangle in it;
    // null when no bridge hosts the view.
    static QWidget* hostWidget(Kel_ViewInterface* view, QRect* rectInHost = nullptr);
    // The bridge at the top of view's tree, and the container view that
    // holds view; null when there is none.
    static Kel_BridgeBase* bridge(Kel_ViewInterface* view);
    static Kel_ViewInterface* parentView(Kel_ViewInterface* view);
    // The rectangle on the screen; null when no bridge hosts the view.
    static QRect screenRect(Kel_ViewInterface* view);
    // A left click at local (view coordinates), press and release, with the
    // modifiers: what the press and toggle actions of views do.
    static void click(Kel_ViewInterface* view, const QPoint& local, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    // Sees every accessibility event the views report, besides Qt's
    // clients: an in-process client such as a UI-test harness, which needs
    // no platform accessibility. One observer; null removes it.
    typedef void (*EventObserver)(QAccessibleEvent* event);
    static void setEventObserver(EventObserver observer);
    // Whether events are reported: while an accessibility client is active
    // (QAccessible::isActive()) or an event observer is set.
    static bool reportsEvents();
    // Hands event to the observer and to Qt (QAccessible::updateAccessibility).
    static void send(QAccessibleEvent* event);

    // Events, reported only while reportsEvents().
    static void notifyValueChanged(Kel_ViewInterface* view, const QVariant& value);
    static void notifyStateChanged(Kel_ViewInterface* view, QAccessible::State changed);
    // The view (or the item inside it that has the focus, a list's row) got
    // the keyboard focus.
    static void notifyFocus(Kel_ViewInterface* view);
    static void notifyEvent(Kel_ViewInterface* view, QAccessible::Event type);
};

#endif
