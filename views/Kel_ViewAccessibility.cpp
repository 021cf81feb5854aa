#include "Kel_ViewAccessibility.h"

#include "Kel_BlankView.h"
#include "Kel_BoolTextView.h"
#include "Kel_BridgeBase.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_BridgeQWidget.h"
#include "Kel_ContainerViewBase.h"
#include "Kel_IconView.h"
#include "Kel_RevealView.h"
#include "Kel_SelectableView.h"
#include "Kel_ValueViewBase.h"
#include "Kel_ViewAccessible_p.h"

#include <QAccessible>
#include <QHash>
#include <QMouseEvent>
#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <vector>

namespace {

struct Registry
{
    std::vector<Kel_ViewAccessibility::ViewCreator> viewCreators;
    std::vector<Kel_ViewAccessibility::WidgetCreator> widgetCreators;
    // The interfaces made for views, by view; entries leave with their view.
    QHash<Kel_ViewInterface*, QAccessible::Id> ids;
    bool installed = false;
};

Kel_ViewAccessibility::EventObserver sEventObserver = nullptr;

// Whether a platform client listens, kept by Qt's activation notices so
// that the views' hot paths test a flag rather than ask the platform.
bool sClientActive = false;

struct ActivationWatcher : QAccessible::ActivationObserver
{
    void accessibilityActiveChanged(bool active) override { sClientActive = active; }
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

void forgetView(Kel_ViewInterface* view)
{
    Registry& r = registry();
    const auto entry = r.ids.find(view);
    if (entry == r.ids.end())
        return;
    const QAccessible::Id id = entry.value();
    r.ids.erase(entry);
    if (auto* iface = dynamic_cast<Kel_ViewAccessible*>(QAccessible::accessibleInterface(id)))
        iface->viewDestroyed();
    QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* bridgeInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String("Kel_BridgeQWidget")) {
        auto* bridge = qobject_cast<Kel_BridgeQWidget*>(object);
        return bridge ? new Kel_BridgeAccessible(bridge, bridge, bridge) : nullptr;
    }
    // The content widget of a scroll-area bridge has no class of its own in
    // the meta-object system: it is known by its name and its scroll area.
    if (className != QLatin1String("QWidget") || !object || object->objectName() != QLatin1String("ViewportWidget"))
        return nullptr;
    QObject* viewport = object->parent();
    auto* area = qobject_cast<Kel_BridgeQScrollArea*>(viewport ? viewport->parent() : nullptr);
    if (!area || area->viewportWidget() != object)
        return nullptr;
    return new Kel_BridgeAccessible(area->viewportWidget(), area, area);
}

QAccessibleInterface* factory(const QString& className, QObject* object)
{
    const Registry& r = registry();
    for (auto creator = r.widgetCreators.rbegin(); creator != r.widgetCreators.rend(); ++creator) {
        if (QAccessibleInterface* iface = (*creator)(className, object))
            return iface;
    }
    return bridgeInterface(className, object);
}

Kel_BridgeBase* bridgeOf(Kel_ViewInterface* view)
{
    for (Kel_ViewInterface* v = view; v;) {
        Kel_ViewContainerInterface* parent = v->getParent();
        if (auto* parentView = dynamic_cast<Kel_ViewInterface*>(parent)) {
            v = parentView;
            continue;
        }
        return dynamic_cast<Kel_BridgeBase*>(parent);
    }
    return nullptr;
}

QString ownToolTip(Kel_ViewInterface* view)
{
    // The view's own tip: containers answer their sub-views' by position.
    auto* base = dynamic_cast<Kel_ViewBase*>(view);
    QRect rect;
    QString tip;
    if (base && base->Kel_ViewBase::getToolTip(QPoint(), &rect, &tip))
        return tip;
    return QString();
}

} // namespace

bool Kel_ViewAccessibility::reportsEvents()
{
    return sEventObserver || sClientActive;
}

void Kel_ViewAccessibility::setEventObserver(EventObserver observer)
{
    sEventObserver = observer;
}

void Kel_ViewAccessibility::send(QAccessibleEvent* event)
{
    if (!event)
        return;
    if (sEventObserver)
        sEventObserver(event);
    QAccessible::updateAccessibility(event);
}

void Kel_ViewAccessibility::install()
{
    Registry& r = registry();
    if (r.installed)
        return;
    r.installed = true;
    // Installed after the application's own (the widgets' factory), so it
    // is asked first for the classes it knows.
    QAccessible::installFactory(&factory);
    Kel_ViewInterface::setDestructionObserver(&forgetView);
    // Kept for the life of the process: Qt may notify it while shutting down.
    static ActivationWatcher* watcher = new ActivationWatcher;
    QAccessible::installActivationObserver(watcher);
    sClientActive = QAccessible::isActive();
}

void Kel_ViewAccessibility::addViewCreator(const ViewCreator& creator)
{
    if (creator)
        registry().viewCreators.push_back(creator);
}

void Kel_ViewAccessibility::addWidgetCreator(const WidgetCreator& creator)
{
    if (creator)
        registry().widgetCreators.push_back(creator);
}

QAccessibleInterface* Kel_ViewAccessibility::interfaceFor(Kel_ViewInterface* view)
{
    if (!view || dynamic_cast<Kel_BlankView*>(view))
        return nullptr;
    Registry& r = registry();
    const auto known = r.ids.constFind(view);
    if (known != r.ids.constEnd())
        return QAccessible::accessibleInterface(known.value());
    // The parent's own answer has looked at its ancestors already: a view
    // inside one that has no interface (a presented one) has none either.
    if (auto* parentView = dynamic_cast<Kel_ViewInterface*>(view->getParent())) {
        QAccessibleInterface* parentIface = interfaceFor(parentView);
        if (!parentIface)
            return nullptr;
        auto* parentViewIface = dynamic_cast<Kel_ViewAccessible*>(parentIface);
        if (parentViewIface && parentViewIface->presentsDescendants())
            return nullptr;
    }
    QAccessibleInterface* iface = nullptr;
    for (auto creator = r.viewCreators.rbegin(); creator != r.viewCreators.rend() && !iface; ++creator)
        iface = (*creator)(view);
    if (!iface)
        iface = new Kel_ViewAccessible(view);
    // Views can be asked about before any bridge was made (a test, say):
    // they still have to leave the registry with their view.
    install();
    r.ids.insert(view, QAccessible::registerAccessibleInterface(iface));
    return iface;
}

QAccessibleInterface* Kel_ViewAccessibility::existingInterface(Kel_ViewInterface* view)
{
    const Registry& r = registry();
    const auto known = r.ids.constFind(view);
    return known == r.ids.constEnd() ? nullptr : QAccessible::accessibleInterface(known.value());
}

QAccessibleInterface* Kel_ViewAccessibility::parentInterface(Kel_ViewInterface* view)
{
    Kel_ViewContainerInterface* parent = view ? view->getParent() : nullptr;
    if (auto* parentView = dynamic_cast<Kel_ViewInterface*>(parent))
        return interfaceFor(parentView);
    if (auto* bridge = dynamic_cast<Kel_BridgeBase*>(parent))
        return QAccessible::queryAccessibleInterface(bridge->viewHost());
    return nullptr;
}

QList<Kel_ViewInterface*> Kel_ViewAccessibility::accessibleChildren(Kel_ViewInterface* view)
{
    QList<Kel_ViewInterface*> children;
    auto* container = dynamic_cast<Kel_ContainerViewBase*>(view);
    if (!container)
        return children;
    auto* reveal = dynamic_cast<Kel_RevealView*>(view);
    for (const auto& entry : container->getSubViews()) {
        Kel_ViewInterface* child = entry.second;
        if (dynamic_cast<Kel_BlankView*>(child) || (reveal && child == reveal->body() && !reveal->isRevealed()))
            continue;
        children.append(child);
    }
    std::stable_sort(children.begin(), children.end(), [](Kel_ViewInterface* a, Kel_ViewInterface* b) {
        const QPoint pa = a->getOrigin();
        const QPoint pb = b->getOrigin();
        return pa.y() != pb.y() ? pa.y() < pb.y() : pa.x() < pb.x();
    });
    return children;
}

QAccessible::Role Kel_ViewAccessibility::role(Kel_ViewInterface* view)
{
    if (dynamic_cast<Kel_SelectableView*>(view))
        return QAccessible::ListItem;
    if (dynamic_cast<Kel_ContainerViewBase*>(view))
        return QAccessible::Grouping;
    if (dynamic_cast<Kel_ValueViewBase*>(view))
        return QAccessible::StaticText;
    return QAccessible::Graphic;
}

QString Kel_ViewAccessibility::name(Kel_ViewInterface* view)
{
    if (!view)
        return QString();
    const QString tip = ownToolTip(view);
    if (!tip.isEmpty())
        return tip;
    if (auto* reveal = dynamic_cast<Kel_RevealView*>(view)) {
        const QString title = reveal->displayedTitle();
        if (!title.isEmpty())
            return title;
    }
    return view->getName();
}

QString Kel_ViewAccessibility::text(Kel_ViewInterface* view)
{
    if (auto* value = dynamic_cast<Kel_ValueViewBase*>(view))
        return value->currentText();
    if (auto* reveal = dynamic_cast<Kel_RevealView*>(view))
        return reveal->displayedTitle();
    QStringList texts;
    for (Kel_ViewInterface* child : accessibleChildren(view)) {
        const QString childText = text(child);
        if (!childText.isEmpty())
            texts.append(childText);
    }
    return texts.join(QStringLiteral(", "));
}

QAccessible::State Kel_ViewAccessibility::state(Kel_ViewInterface* view)
{
    QAccessible::State state;
    if (!view)
        return state;
    QRect rect;
    QWidget* host = hostWidget(view, &rect);
    if (!host || !host->isVisible())
        state.invisible = true;
    else if (!host->visibleRegion().intersects(rect))
        state.offscreen = true;
    if (host && !host->isEnabled())
        state.disabled = true;
    state.readOnly = view->getReadOnly();
    if (view->acceptsFocus()) {
        state.focusable = true;
        Kel_BridgeBase* bridge = bridgeOf(view);
        state.focused = host && host->hasFocus() && bridge && bridge->focusedView() == view;
    }
    if (auto* value = dynamic_cast<Kel_ValueViewBase*>(view)) {
        // A value view without its model cannot show anything.
        if (!value->isBound())
            state.disabled = true;
    }
    if (auto* boolView = dynamic_cast<Kel_BoolTextView*>(view)) {
        state.checkable = true;
        state.checked = boolView->currentValue();
    }
    if (auto* selectable = dynamic_cast<Kel_SelectableView*>(view)) {
        state.selectable = true;
        state.selected = selectable->isSelected();
        if (!selectable->isBound())
            state.readOnly = true;
    }
    if (auto* reveal = dynamic_cast<Kel_RevealView*>(view)) {
        state.expandable = true;
        state.expanded = reveal->isRevealed();
        state.collapsed = !reveal->isRevealed();
    }
    return state;
}

QWidget* Kel_ViewAccessibility::hostWidget(Kel_ViewInterface* view, QRect* rectInHost)
{
    QPoint origin;
    for (Kel_ViewInterface* v = view; v;) {
        origin += v->getOrigin();
        Kel_ViewContainerInterface* parent = v->getParent();
        if (auto* parentView = dynamic_cast<Kel_ViewInterface*>(parent)) {
            v = parentView;
            continue;
        }
        auto* bridge = dynamic_cast<Kel_BridgeBase*>(parent);
        if (!bridge)
            return nullptr;
        if (rectInHost)
            *rectInHost = QRect(origin, view->getSize());
        return bridge->viewHost();
    }
    return nullptr;
}

Kel_BridgeBase* Kel_ViewAccessibility::bridge(Kel_ViewInterface* view)
{
    return bridgeOf(view);
}

Kel_ViewInterface* Kel_ViewAccessibility::parentView(Kel_ViewInterface* view)
{
    return view ? dynamic_cast<Kel_ViewInterface*>(view->getParent()) : nullptr;
}

QRect Kel_ViewAccessibility::screenRect(Kel_ViewInterface* view)
{
    QRect rect;
    QWidget* host = hostWidget(view, &rect);
    return host ? QRect(host->mapToGlobal(rect.topLeft()), rect.size()) : QRect();
}

void Kel_ViewAccessibility::click(Kel_ViewInterface* view, const QPoint& local, Qt::KeyboardModifiers modifiers)
{
    if (!view)
        return;
    QRect rect;
    QWidget* host = hostWidget(view, &rect);
    const QPointF global = host ? QPointF(host->mapToGlobal(rect.topLeft() + local)) : QPointF(local);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(local), global, Qt::LeftButton, Qt::LeftButton, modifiers);
    view->mousePressEvent(&press, local);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(local), global, Qt::LeftButton, Qt::NoButton, modifiers);
    view->mouseReleaseEvent(&release, local);
}

namespace {

// Sends an event of class Event about view, made with the view's interface
// and args, while someone listens.
template <class Event, class... Args>
void report(Kel_ViewInterface* view, const Args&... args)
{
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    if (QAccessibleInterface* iface = Kel_ViewAccessibility::interfaceFor(view)) {
        Event event(iface, args...);
        Kel_ViewAccessibility::send(&event);
    }
}

} // namespace

void Kel_ViewAccessibility::notifyValueChanged(Kel_ViewInterface* view, const QVariant& value)
{
    report<QAccessibleValueChangeEvent>(view, value);
}

void Kel_ViewAccessibility::notifyStateChanged(Kel_ViewInterface* view, QAccessible::State changed)
{
    report<QAccessibleStateChangeEvent>(view, changed);
}

void Kel_ViewAccessibility::notifyFocus(Kel_ViewInterface* view)
{
    if (!reportsEvents())
        return;
    QAccessibleInterface* iface = interfaceFor(view);
    if (!iface)
        return;
    if (QAccessibleInterface* item = iface->focusChild())
        iface = item;
    QAccessibleEvent event(iface, QAccessible::Focus);
    send(&event);
}

void Kel_ViewAccessibility::notifyEvent(Kel_ViewInterface* view, QAccessible::Event type)
{
    report<QAccessibleEvent>(view, type);
}
