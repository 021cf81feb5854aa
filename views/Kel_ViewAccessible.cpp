#include "Kel_ViewAccessible_p.h"

#include "Kel_BridgeBase.h"
#include "Kel_LongIntView.h"
#include "Kel_RevealView.h"
#include "Kel_SelectableView.h"
#include "Kel_ValueViewBase.h"
#include "Kel_ViewAccessibility.h"

#include <QWidget>
#include <QWindow>

// ---------------------------------------------------------------------------
// Kel_ViewAccessible

Kel_ViewAccessible::Kel_ViewAccessible(Kel_ViewInterface* view) : mViewP(view)
{
}

Kel_ViewAccessible::~Kel_ViewAccessible() = default;

bool Kel_ViewAccessible::isValid() const
{
    return mViewP != nullptr;
}

QWindow* Kel_ViewAccessible::window() const
{
    QWidget* host = Kel_ViewAccessibility::hostWidget(mViewP);
    return host ? host->window()->windowHandle() : nullptr;
}

QAccessibleInterface* Kel_ViewAccessible::parent() const
{
    return Kel_ViewAccessibility::parentInterface(mViewP);
}

QAccessibleInterface* Kel_ViewAccessible::child(int index) const
{
    return Kel_ViewAccessibility::interfaceFor(Kel_ViewAccessibility::accessibleChildren(mViewP).value(index));
}

int Kel_ViewAccessible::childCount() const
{
    return Kel_ViewAccessibility::accessibleChildren(mViewP).size();
}

int Kel_ViewAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* viewChild = dynamic_cast<const Kel_ViewAccessible*>(child);
    return viewChild ? Kel_ViewAccessibility::accessibleChildren(mViewP).indexOf(viewChild->view()) : -1;
}

QAccessibleInterface* Kel_ViewAccessible::childAt(int x, int y) const
{
    const QList<Kel_ViewInterface*> children = Kel_ViewAccessibility::accessibleChildren(mViewP);
    // Views seldom overlap; where they do, the later in reading order wins.
    for (int i = children.size() - 1; i >= 0; --i) {
        if (Kel_ViewAccessibility::screenRect(children.at(i)).contains(x, y))
            return Kel_ViewAccessibility::interfaceFor(children.at(i));
    }
    return nullptr;
}

QAccessibleInterface* Kel_ViewAccessible::focusChild() const
{
    QWidget* host = Kel_ViewAccessibility::hostWidget(mViewP);
    Kel_BridgeBase* bridge = Kel_ViewAccessibility::bridge(mViewP);
    if (!host || !bridge || !host->hasFocus())
        return nullptr;
    Kel_ViewInterface* focused = bridge->focusedView();
    if (!focused || focused == mViewP)
        return nullptr;
    // Only a view inside this one.
    for (Kel_ViewInterface* up = Kel_ViewAccessibility::parentView(focused); up; up = Kel_ViewAccessibility::parentView(up)) {
        if (up != mViewP)
            continue;
        QAccessibleInterface* iface = Kel_ViewAccessibility::interfaceFor(focused);
        QAccessibleInterface* item = iface ? iface->focusChild() : nullptr;
        return item ? item : iface;
    }
    return nullptr;
}

QString Kel_ViewAccessible::text(QAccessible::Text type) const
{
    if (!mViewP)
        return QString();
    switch (type) {
    case QAccessible::Name: {
        const QString name = Kel_ViewAccessibility::name(mViewP);
        // A text without a name of its own is named by what it says.
        return name.isEmpty() && showsText() ? Kel_ViewAccessibility::text(mViewP) : name;
    }
    case QAccessible::Value:
        if (showsText() || dynamic_cast<Kel_SelectableView*>(mViewP))
            return Kel_ViewAccessibility::text(mViewP);
        return QString();
    default:
        return QString();
    }
}

QRect Kel_ViewAccessible::rect() const
{
    return Kel_ViewAccessibility::screenRect(mViewP);
}

QAccessible::Role Kel_ViewAccessible::role() const
{
    return Kel_ViewAccessibility::role(mViewP);
}

QAccessible::State Kel_ViewAccessible::state() const
{
    QAccessible::State state = Kel_ViewAccessibility::state(mViewP);
    if (!mViewP)
        state.invalid = true;
    return state;
}

void* Kel_ViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    switch (type) {
    case QAccessible::ActionInterface:
        return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::TextInterface:
        return showsText() ? static_cast<QAccessibleTextInterface*>(this) : nullptr;
    case QAccessible::ValueInterface:
        return showsNumber() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    default:
        return nullptr;
    }
}

bool Kel_ViewAccessible::showsText() const
{
    return dynamic_cast<Kel_ValueViewBase*>(mViewP) != nullptr;
}

bool Kel_ViewAccessible::showsNumber() const
{
    return dynamic_cast<Kel_LongIntView*>(mViewP) != nullptr;
}

QStringList Kel_ViewAccessible::actionNames() const
{
    QStringList names;
    if (!mViewP)
        return names;
    const bool toggles = dynamic_cast<Kel_SelectableView*>(mViewP) || dynamic_cast<Kel_RevealView*>(mViewP);
    if (!mViewP->getReadOnly()) {
        names.append(pressAction());
        if (toggles)
            names.append(toggleAction());
    }
    if (mViewP->acceptsFocus() && Kel_ViewAccessibility::hostWidget(mViewP))
        names.append(setFocusAction());
    return names;
}

void Kel_ViewAccessible::doAction(const QString& actionName)
{
    if (!mViewP || !actionNames().contains(actionName))
        return;
    if (actionName == setFocusAction()) {
        QWidget* host = Kel_ViewAccessibility::hostWidget(mViewP);
        if (Kel_BridgeBase* bridge = Kel_ViewAccessibility::bridge(mViewP))
            bridge->setFocusedView(mViewP);
        if (host)
            host->setFocus(Qt::OtherFocusReason);
        return;
    }
    QPoint point = mViewP->getLocalDrawingRect().center();
    if (auto* reveal = dynamic_cast<Kel_RevealView*>(mViewP))
        point = QPoint(mViewP->getWidth() / 2, reveal->headerHeight() / 2);
    const bool ctrl = actionName == toggleAction() && dynamic_cast<Kel_SelectableView*>(mViewP);
    Kel_ViewAccessibility::click(mViewP, point, ctrl ? Qt::ControlModifier : Qt::NoModifier);
}

QStringList Kel_ViewAccessible::keyBindingsForAction(const QString& actionName) const
{
    if (actionName == toggleAction())
        return QStringList(QStringLiteral("Space"));
    return QStringList();
}

void Kel_ViewAccessible::selection(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = 0;
}

QString Kel_ViewAccessible::text(int startOffset, int endOffset) const
{
    const QString shown = Kel_ViewAccessibility::text(mViewP);
    if (startOffset < 0 || endOffset < startOffset)
        return QString();
    return shown.mid(startOffset, endOffset - startOffset);
}

int Kel_ViewAccessible::characterCount() const
{
    return Kel_ViewAccessibility::text(mViewP).size();
}

QRect Kel_ViewAccessible::characterRect(int) const
{
    return rect();
}

int Kel_ViewAccessible::offsetAtPoint(const QPoint&) const
{
    return -1;
}

QString Kel_ViewAccessible::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return QString();
}

QVariant Kel_ViewAccessible::currentValue() const
{
    bool ok = false;
    const qlonglong value = Kel_ViewAccessibility::text(mViewP).toLongLong(&ok);
    return ok ? QVariant(value) : QVariant();
}

// ---------------------------------------------------------------------------
// Kel_BridgeAccessible

Kel_BridgeAccessible::Kel_BridgeAccessible(QWidget* host, Kel_BridgeBase* bridge, QWidget* bridgeWidget)
    : QAccessibleWidget(host, QAccessible::Client), mBridgeP(bridge), mBridgeWidgetP(bridgeWidget)
{
}

QAccessibleInterface* Kel_BridgeAccessible::hostedView() const
{
    return isValid() ? Kel_ViewAccessibility::interfaceFor(mBridgeP->getChild()) : nullptr;
}

int Kel_BridgeAccessible::childCount() const
{
    return (hostedView() ? 1 : 0) + QAccessibleWidget::childCount();
}

QAccessibleInterface* Kel_BridgeAccessible::child(int index) const
{
    QAccessibleInterface* view = hostedView();
    if (view && index == 0)
        return view;
    return QAccessibleWidget::child(view ? index - 1 : index);
}

int Kel_BridgeAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    QAccessibleInterface* view = hostedView();
    if (view && child == view)
        return 0;
    const int index = QAccessibleWidget::indexOfChild(child);
    return index < 0 || !view ? index : index + 1;
}

QAccessibleInterface* Kel_BridgeAccessible::childAt(int x, int y) const
{
    if (QAccessibleInterface* widgetChild = QAccessibleWidget::childAt(x, y))
        return widgetChild; // editors lie over the views
    QAccessibleInterface* view = hostedView();
    return view && view->rect().contains(x, y) ? view : nullptr;
}

QAccessibleInterface* Kel_BridgeAccessible::focusChild() const
{
    if (!isValid() || !widget()->hasFocus())
        return QAccessibleWidget::focusChild();
    QAccessibleInterface* focused = Kel_ViewAccessibility::interfaceFor(mBridgeP->focusedView());
    if (!focused)
        return nullptr;
    QAccessibleInterface* item = focused->focusChild();
    return item ? item : focused;
}

QString Kel_BridgeAccessible::text(QAccessible::Text type) const
{
    const QString own = QAccessibleWidget::text(type);
    if (type != QAccessible::Name || !own.isEmpty() || !mBridgeWidgetP)
        return own;
    return mBridgeWidgetP->accessibleName().isEmpty() ? mBridgeWidgetP->objectName() : mBridgeWidgetP->accessibleName();
}
