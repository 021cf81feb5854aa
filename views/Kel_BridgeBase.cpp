#include "Kel_BridgeBase.h"

#include "Kel_ContainerViewBase.h"
#include "Kel_PoiLookup.h"
#include "Kel_RevealView.h"
#include "Kel_ViewAccessibility.h"
#include "Kel_ViewContainerInterface.h"
#include "Kel_ViewInterface.h"

#include <QPainter>
#include <QPen>
#include <functional>
#include <vector>
#include <QWidget>

Kel_BridgeBase::Kel_BridgeBase(QWidget* widget)
    : mChildP(nullptr), mTiled(false), mBackgroundPixmap(), mHasBackgroundColor(false), mBackgroundColor(),
      mWidgetP(widget)
{
    // Screen readers see views through the factory, installed with the first bridge.
    Kel_ViewAccessibility::install();
}

namespace {

void collectFocusable(Kel_ViewInterface* view, QList<Kel_ViewInterface*>& views)
{
    if (view->acceptsFocus())
        views.append(view);
    for (Kel_ViewInterface* child : Kel_ViewAccessibility::accessibleChildren(view))
        collectFocusable(child, views);
}

} // namespace

Kel_BridgeBase::~Kel_BridgeBase()
{
    deleteChild();
}

void Kel_BridgeBase::setChild(Kel_ViewInterface* view)
{
    if (view == mChildP)
        return;
    // Two owners would both delete it.
    if (Kel_ViewContainerInterface* previous = view ? view->getParent() : nullptr)
        previous->releaseView(view);
    deleteChild();
    mChildP = view;
}

bool Kel_BridgeBase::releaseChild(Kel_ViewInterface* view)
{
    if (!view || view != mChildP)
        return false;
    mChildP = nullptr;
    view->setParent(nullptr);
    return true;
}

void Kel_BridgeBase::setBridgeBackgroundColor(const QColor& color)
{
    mBackgroundColor = color;
    mHasBackgroundColor = true;
    if (QWidget* host = viewHostWidget())
        host->update();
}

void Kel_BridgeBase::setBridgeBackgroundPixmap(const QPixmap& pixmap, bool tiled)
{
    mBackgroundPixmap = pixmap;
    mTiled = tiled;
    if (QWidget* host = viewHostWidget())
        host->update();
}

QString Kel_BridgeBase::findUiName(const QPoint& point)
{
    QString name = mWidgetP ? mWidgetP->objectName() : QString();
    QWidget* host = viewHostWidget();
    if (!mChildP || !host)
        return name;
    const QPoint local = host == mWidgetP ? point : host->mapFrom(mWidgetP, point);
    if (!mChildP->getLocalDrawingRect().contains(local))
        return name;
    if (!name.isEmpty())
        name += QLatin1Char('.');
    return name + mChildP->findUiName(local);
}

QRect Kel_BridgeBase::findPoi(const QString& dottedName)
{
    if (!mWidgetP || dottedName.isEmpty())
        return QRect();
    const QString name = mWidgetP->objectName();
    QString rest = dottedName;
    if (!name.isEmpty()) {
        if (dottedName == name)
            return QRect(mWidgetP->mapToGlobal(QPoint(0, 0)), mWidgetP->size());
        if (!dottedName.startsWith(name + QLatin1Char('.')))
            return QRect();
        rest = dottedName.mid(name.size() + 1);
    }
    QWidget* host = viewHostWidget();
    QPoint where;
    if (!mChildP || !host || !mChildP->findItem(rest, &where))
        return QRect();
    return QRect(host->mapToGlobal(where), QSize(1, 1));
}

namespace {

// Guided help reaches the views of a bridge through the bridge's own lookup.
const struct BridgePoiResolver
{
    BridgePoiResolver()
    {
        Kel_PoiLookup::addResolver([](QWidget* widget, const QString& rest, QRect* globalRect) {
            auto* bridge = dynamic_cast<Kel_BridgeBase*>(widget);
            if (!bridge || rest.isEmpty())
                return false;
            const QString name = widget->objectName();
            const QRect found = bridge->findPoi(name.isEmpty() ? rest : name + QLatin1Char('.') + rest);
            if (found.isNull())
                return false;
            if (globalRect)
                *globalRect = found;
            return true;
        });
    }
} bridgePoiResolver;

} // namespace

void Kel_BridgeBase::paintBackground(QPainter& painter, const QRect& area) const
{
    if (mHasBackgroundColor)
        painter.fillRect(area, mBackgroundColor);
    if (mBackgroundPixmap.isNull())
        return;
    if (mTiled)
        painter.drawTiledPixmap(area, mBackgroundPixmap, area.topLeft());
    else
        painter.drawPixmap(area, mBackgroundPixmap);
}

void Kel_BridgeBase::deleteChild()
{
    Kel_ViewInterface* view = mChildP;
    mChildP = nullptr;
    delete view;
}

QList<Kel_ViewInterface*> Kel_BridgeBase::focusableViews() const
{
    QList<Kel_ViewInterface*> views;
    if (mChildP)
        collectFocusable(mChildP, views);
    return views;
}

Kel_ViewInterface* Kel_BridgeBase::focusedView() const
{
    Kel_ViewInterface* view = mChildP;
    Kel_ViewInterface* focused = view && view->acceptsFocus() ? view : nullptr;
    while (auto* container = dynamic_cast<Kel_ContainerViewBase*>(view)) {
        view = container->getFocusView();
        auto* reveal = dynamic_cast<Kel_RevealView*>(container);
        // A folded body takes no keys.
        if (!view || (reveal && view == reveal->body() && !reveal->isRevealed()))
            break;
        if (view->acceptsFocus())
            focused = view;
    }
    return focused;
}

void Kel_BridgeBase::setFocusedView(Kel_ViewInterface* view)
{
    std::vector<Kel_ViewInterface*> path;
    for (Kel_ViewInterface* v = view; v; v = Kel_ViewAccessibility::parentView(v))
        path.push_back(v);
    if (path.empty() || path.back() != mChildP)
        return;
    for (size_t i = path.size() - 1; i > 0; --i) {
        if (auto* container = dynamic_cast<Kel_ContainerViewBase*>(path[i]))
            container->setFocusView(path[i - 1]);
    }
    if (auto* container = dynamic_cast<Kel_ContainerViewBase*>(view))
        container->setFocusView(nullptr);
    focusMayHaveChanged();
}

bool Kel_BridgeBase::focusNextView(bool next)
{
    const QList<Kel_ViewInterface*> views = focusableViews();
    const int current = views.indexOf(focusedView());
    const int target = current < 0 ? (next ? 0 : views.size() - 1) : (next ? current + 1 : current - 1);
    if (target < 0 || target >= views.size())
        return false;
    setFocusedView(views.at(target));
    return true;
}

void Kel_BridgeBase::focusEntered(Qt::FocusReason reason)
{
    // Entered from outside: the focused view is new to the reader.
    mReportedFocusP = nullptr;
    // The focusable views are collected only when one is to be picked
    // (a click picks its own view).
    const bool pick = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                      (reason != Qt::MouseFocusReason && !focusedView());
    const QList<Kel_ViewInterface*> views = pick ? focusableViews() : QList<Kel_ViewInterface*>();
    if (views.isEmpty())
        focusMayHaveChanged();
    else
        setFocusedView(reason == Qt::BacktabFocusReason ? views.last() : views.first());
    if (QWidget* host = viewHostWidget())
        host->update();
}

void Kel_BridgeBase::focusMayHaveChanged()
{
    Kel_ViewInterface* focused = focusedView();
    if (focused == mReportedFocusP)
        return;
    mReportedFocusP = focused;
    QWidget* host = viewHostWidget();
    // The frame and the reader follow the keyboard focus only.
    if (!host || !focused || !host->hasFocus())
        return;
    host->update();
    QRect rect;
    if (focused != mChildP && Kel_ViewAccessibility::hostWidget(focused, &rect))
        showFocusedRect(rect);
    Kel_ViewAccessibility::notifyFocus(focused);
}

void Kel_BridgeBase::paintFocusFrame(QPainter& painter) const
{
    QWidget* host = viewHostWidget();
    Kel_ViewInterface* focused = host && host->hasFocus() ? focusedView() : nullptr;
    QRect rect;
    if (!focused || focused == mChildP || !Kel_ViewAccessibility::hostWidget(focused, &rect) || rect.width() < 3 ||
        rect.height() < 3)
        return;
    painter.save();
    painter.setPen(QPen(host->palette().color(QPalette::Highlight), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}
