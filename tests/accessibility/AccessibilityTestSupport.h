// Walking the accessibility tree and recording accessibility events.
#ifndef ACCESSIBILITYTESTSUPPORT_H
#define ACCESSIBILITYTESTSUPPORT_H

#include "Kel_ViewAccessibility.h"
#include "TestSupport.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QList>
#include <QString>
#include <QTest>
#include <QWidget>
#include <functional>

namespace a11ytest {

// Every interface under root, depth first; lists and tables are entered no
// further than their first rows, so that a long list is not walked whole.
inline QList<QAccessibleInterface*> walk(QAccessibleInterface* root, int rowsPerList = 3)
{
    QList<QAccessibleInterface*> all;
    if (!root)
        return all;
    all.append(root);
    const bool isList = root->role() == QAccessible::List || root->role() == QAccessible::Table;
    const int count = isList ? qMin(root->childCount(), rowsPerList) : root->childCount();
    for (int i = 0; i < count; ++i)
        all += walk(root->child(i), rowsPerList);
    return all;
}

// The first interface under root with that name (and role, when given).
inline QAccessibleInterface* findByName(QAccessibleInterface* root, const QString& name,
                                        QAccessible::Role role = QAccessible::NoRole)
{
    for (QAccessibleInterface* iface : walk(root)) {
        if (iface->text(QAccessible::Name) == name && (role == QAccessible::NoRole || iface->role() == role))
            return iface;
    }
    return nullptr;
}

// Shows window and makes it the active one, as keyboard focus needs on a
// display server.
inline bool showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

// One accessibility event as a client would take it.
struct Event
{
    QAccessible::Event type;
    QAccessibleInterface* iface;
    QString name;
    QVariant value;
    // A table-model change: its kind and columns.
    int modelChange = -1;
    int firstColumn = -1;
    int lastColumn = -1;
};

// Observes the accessibility events that the views send while it lives.
class EventRecorder
{
public:
    EventRecorder()
    {
        sCurrent = this;
        Kel_ViewAccessibility::setEventObserver(&EventRecorder::handler);
    }
    ~EventRecorder()
    {
        Kel_ViewAccessibility::setEventObserver(nullptr);
        sCurrent = nullptr;
    }
    EventRecorder(const EventRecorder&) = delete;
    EventRecorder& operator=(const EventRecorder&) = delete;

    QList<Event> events;
    QList<Event> ofType(QAccessible::Event type) const
    {
        QList<Event> found;
        for (const Event& e : events) {
            if (e.type == type)
                found.append(e);
        }
        return found;
    }

private:
    static void handler(QAccessibleEvent* event)
    {
        if (!sCurrent)
            return;
        QAccessibleInterface* iface = event->accessibleInterface();
        QVariant value;
        if (event->type() == QAccessible::ValueChanged)
            value = static_cast<QAccessibleValueChangeEvent*>(event)->value();
        Event e{event->type(), iface, iface ? iface->text(QAccessible::Name) : QString(), value};
        if (event->type() == QAccessible::TableModelChanged) {
            const auto* change = static_cast<QAccessibleTableModelChangeEvent*>(event);
            e.modelChange = change->modelChangeType();
            e.firstColumn = change->firstColumn();
            e.lastColumn = change->lastColumn();
        }
        sCurrent->events.append(e);
    }
    static EventRecorder* sCurrent;
};

inline EventRecorder* EventRecorder::sCurrent = nullptr;

} // namespace a11ytest

#endif
