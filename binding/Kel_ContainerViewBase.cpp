#include "Kel_ContainerViewBase.h"

#include "Kel_QtCompat.h"
#include "Ost_Assert.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <vector>

// Mouse events arrive accepted (Qt's convention), so each sub-view is handed
// an accepted event and counts as taking it unless its handler ignores it.
// Drag events must be accepted explicitly: sub-views get them ignored.

Kel_ContainerViewBase::Kel_ContainerViewBase()
    : Kel_ViewBase(), Kel_ViewContainerInterface(), mSubViews(), mMouseView(nullptr), mFocusView(nullptr),
      mDragViewP(nullptr)
{
}

Kel_ContainerViewBase::Kel_ContainerViewBase(const Kel_ContainerViewBase& other, bool copySubViews)
    : Kel_ViewBase(other), Kel_ViewContainerInterface(), mSubViews(), mMouseView(nullptr), mFocusView(nullptr),
      mDragViewP(nullptr)
{
    if (!copySubViews)
        return;
    for (const auto& entry : other.mSubViews) {
        Kel_ViewInterface* copy = entry.second ? entry.second->clone() : nullptr;
        if (!copy)
            continue;
        // Filed under the original's key: equal keys append, so the paint order survives.
        file(entry.first, copy);
        copy->setParent(this);
    }
}

Kel_ContainerViewBase::~Kel_ContainerViewBase()
{
    ViewMap views;
    views.swap(mSubViews);
    mEntries.clear();
    mMouseView = mFocusView = mDragViewP = nullptr;
    for (const auto& entry : views)
        delete entry.second;
}

void Kel_ContainerViewBase::AddSubView(Kel_ViewInterface* view)
{
    if (!view || isSubView(view) || isSelfOrAncestor(view))
        return;
    // Two owners would both delete it.
    if (Kel_ViewContainerInterface* previous = view->getParent())
        previous->releaseView(view);
    file(view->getZOrder(), view);
    view->setParent(this);
}

void Kel_ContainerViewBase::setFocusView(Kel_ViewInterface* view)
{
    if (!view || isSubView(view))
        mFocusView = view;
}

void Kel_ContainerViewBase::file(long key, Kel_ViewInterface* view)
{
    mEntries.insert(view, mSubViews.emplace(key, view));
}

void Kel_ContainerViewBase::unfile(ViewMap::iterator entry)
{
    Kel_ViewInterface* view = entry->second;
    mEntries.remove(view);
    mSubViews.erase(entry);
    if (mMouseView == view)
        mMouseView = nullptr;
    if (mFocusView == view)
        mFocusView = nullptr;
    if (mDragViewP == view)
        mDragViewP = nullptr;
}

void Kel_ContainerViewBase::removeAllSubViews()
{
    ViewMap views;
    views.swap(mSubViews);
    mEntries.clear();
    mMouseView = mFocusView = mDragViewP = nullptr;
    for (const auto& entry : views)
        delete entry.second;
}

Kel_ViewInterface* Kel_ContainerViewBase::getViewByName(const QString& name) const
{
    for (const auto& entry : mSubViews) {
        if (entry.second->getName() == name)
            return entry.second;
    }
    return nullptr;
}

bool Kel_ContainerViewBase::isSelfOrAncestor(const Kel_ViewInterface* view) const
{
    // A container among its own sub-views would paint, route and delete
    // itself without end.
    const Kel_ViewInterface* level = this;
    while (level) {
        if (level == view)
            return true;
        level = dynamic_cast<const Kel_ViewInterface*>(level->getParent());
    }
    return false;
}

bool Kel_ContainerViewBase::isFiledUnderItsZOrder(const Kel_ViewInterface* view) const
{
    const auto found = view ? mEntries.constFind(view) : mEntries.constEnd();
    return found != mEntries.constEnd() && found.value()->first == view->getZOrder();
}

Kel_ContainerViewBase::ViewMap::iterator Kel_ContainerViewBase::findEntry(const Kel_ViewInterface* view)
{
    // Found under its current z-order only: a view whose z-order changed
    // after it was added is not found, and stays (owned) where it was filed.
    return isFiledUnderItsZOrder(view) ? mEntries.value(view) : mSubViews.end();
}

Kel_ContainerViewBase::ViewMap Kel_ContainerViewBase::subViewsContainingPoint(const QPoint& point) const
{
    ViewMap result;
    for (const auto& entry : mSubViews) {
        if (entry.second->getRectInParent().contains(point))
            result.emplace(entry.first, entry.second);
    }
    return result;
}

Kel_ContainerViewBase::ViewMap Kel_ContainerViewBase::subViewsIntersectingRect(const QRect& rect) const
{
    ViewMap result;
    for (const auto& entry : mSubViews) {
        if (entry.second->getRectInParent().intersects(rect))
            result.emplace(entry.first, entry.second);
    }
    return result;
}

void Kel_ContainerViewBase::paintSubView(Kel_ViewInterface* view, QPainter* painter, const QRect& rect)
{
    if (!view || !painter)
        return;
    const QPoint origin = view->getOrigin();
    painter->save();
    painter->translate(origin);
    view->drawContents(painter, rect.translated(-origin) & view->getLocalDrawingRect());
    painter->restore();
}

void Kel_ContainerViewBase::drawContents(QPainter* painter, const QRect& rect)
{
    OST_ASSERT(painter);
    if (!painter)
        return;
    for (const auto& entry : subViewsIntersectingRect(rect)) {
        if (isSubView(entry.second)) // a sub-view may remove another while painting
            paintSubView(entry.second, painter, rect);
    }
}

void Kel_ContainerViewBase::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    std::vector<Kel_ViewInterface*> views;
    for (const auto& entry : mSubViews)
        views.push_back(entry.second);
    for (Kel_ViewInterface* view : views) {
        if (isSubView(view))
            view->makeConnections(environment);
    }
    Kel_ViewBase::makeConnections(environment);
}

Kel_ViewInterface* Kel_ContainerViewBase::clone()
{
    return new Kel_ContainerViewBase(*this);
}

Kel_ViewInterface* Kel_ContainerViewBase::deliverTopDown(QMouseEvent* event, const QPoint& local,
                                                         void (Kel_ViewInterface::*handler)(QMouseEvent*,
                                                                                            const QPoint&))
{
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        Kel_ViewInterface* view = it->second;
        if (!isSubView(view))
            continue;
        event->accept();
        (view->*handler)(event, local - view->getOrigin());
        if (event->isAccepted())
            return isSubView(view) ? view : nullptr;
    }
    event->ignore();
    return nullptr;
}

void Kel_ContainerViewBase::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    Kel_ViewInterface* view = deliverTopDown(event, local, &Kel_ViewInterface::mousePressEvent);
    if (!view)
        return;
    mMouseView = view;
    if (view->acceptsFocus())
        mFocusView = view;
}

void Kel_ContainerViewBase::mouseMoveEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    if (mMouseView) {
        event->accept();
        mMouseView->mouseMoveEvent(event, local - mMouseView->getOrigin());
        return;
    }
    deliverTopDown(event, local, &Kel_ViewInterface::mouseMoveEvent);
}

void Kel_ContainerViewBase::mouseReleaseEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    if (mMouseView) {
        event->accept();
        mMouseView->mouseReleaseEvent(event, local - mMouseView->getOrigin());
        mMouseView = nullptr;
        return;
    }
    Kel_ViewInterface* view = deliverTopDown(event, local, &Kel_ViewInterface::mouseReleaseEvent);
    if (view && view->acceptsFocus())
        mFocusView = view;
}

void Kel_ContainerViewBase::mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    if (mMouseView) {
        event->accept();
        mMouseView->mouseDoubleClickEvent(event, local - mMouseView->getOrigin());
        return;
    }
    Kel_ViewInterface* view = deliverTopDown(event, local, &Kel_ViewInterface::mouseDoubleClickEvent);
    if (view && view->acceptsFocus())
        mFocusView = view;
}

void Kel_ContainerViewBase::keyPressEvent(QKeyEvent* event)
{
    if (!event)
        return;
    if (mFocusView)
        mFocusView->keyPressEvent(event);
    else
        event->ignore(); // nobody here wants it: it travels on to the hosting widget
}

// The drag target is the topmost sub-view under the pointer that accepted the
// drag's enter. When the pointer moves onto another sub-view, that view is
// offered an enter first (made from the move); if it accepts, it becomes the
// target and the previous one gets a leave. A view that refuses the enter is
// asked again on later moves, since what it takes may depend on the position.

void Kel_ContainerViewBase::leaveDragView(QDragLeaveEvent* event, const QPoint& local)
{
    Kel_ViewInterface* view = mDragViewP;
    mDragViewP = nullptr;
    if (!isSubView(view))
        return;
    QDragLeaveEvent leave;
    view->dragLeaveEvent(event ? event : &leave, local - view->getOrigin());
}

void Kel_ContainerViewBase::dragEnterEvent(QDragEnterEvent* event, const QPoint& local)
{
    if (!event)
        return;
    leaveDragView(nullptr, local);
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        Kel_ViewInterface* view = it->second;
        if (!isSubView(view))
            continue;
        event->ignore();
        view->dragEnterEvent(event, local - view->getOrigin());
        if (event->isAccepted()) {
            mDragViewP = isSubView(view) ? view : nullptr;
            return;
        }
    }
    event->ignore();
}

void Kel_ContainerViewBase::dragMoveEvent(QDragMoveEvent* event, const QPoint& local)
{
    if (!event)
        return;
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        Kel_ViewInterface* view = it->second;
        if (!isSubView(view))
            continue;
        const QPoint point = local - view->getOrigin();
        if (view != mDragViewP) {
            QDragEnterEvent enter(Kel_QtCompat::dropPosition(event), event->possibleActions(), event->mimeData(),
                                  Kel_QtCompat::dropButtons(event), Kel_QtCompat::dropModifiers(event));
            enter.setDropAction(event->dropAction());
            enter.ignore();
            view->dragEnterEvent(&enter, point);
            if (!enter.isAccepted() || !isSubView(view))
                continue;
            leaveDragView(nullptr, local);
            mDragViewP = view;
            event->setDropAction(enter.dropAction());
        }
        event->ignore();
        view->dragMoveEvent(event, point);
        return;
    }
    leaveDragView(nullptr, local);
    event->ignore();
}

void Kel_ContainerViewBase::dragLeaveEvent(QDragLeaveEvent* event, const QPoint& local)
{
    leaveDragView(event, local);
    if (event)
        event->ignore();
}

void Kel_ContainerViewBase::dropEvent(QDropEvent* event, const QPoint& local)
{
    if (!event)
        return;
    Kel_ViewInterface* target = mDragViewP;
    mDragViewP = nullptr;
    if (isSubView(target)) {
        event->ignore();
        target->dropEvent(event, local - target->getOrigin());
        return;
    }
    // Dropped without a move over us (or after the target went): like a release.
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        Kel_ViewInterface* view = it->second;
        if (!isSubView(view))
            continue;
        event->ignore();
        view->dropEvent(event, local - view->getOrigin());
        if (event->isAccepted())
            return;
    }
    event->ignore();
}

bool Kel_ContainerViewBase::canDrag(const QPoint& local)
{
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        if (it->second->canDrag(local - it->second->getOrigin()))
            return true;
    }
    return false;
}

void Kel_ContainerViewBase::startDrag(const QPoint& local)
{
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        const QPoint point = local - it->second->getOrigin();
        if (it->second->canDrag(point)) {
            it->second->startDrag(point);
            return;
        }
    }
}

QDomElement Kel_ContainerViewBase::getDragData(QPoint local, QDomDocument& document, QPixmap& pixmap)
{
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        QDomElement element = it->second->getDragData(local - it->second->getOrigin(), document, pixmap);
        if (!element.isNull())
            return element;
    }
    return QDomElement();
}

bool Kel_ContainerViewBase::getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString)
{
    OST_ASSERT(oTipRect);
    const ViewMap under = subViewsContainingPoint(local);
    for (auto it = under.rbegin(); it != under.rend(); ++it) {
        Kel_ViewInterface* view = it->second;
        QRect rect;
        QString text;
        if (view->getToolTip(local - view->getOrigin(), &rect, &text)) {
            if (oTipRect)
                *oTipRect = rect.translated(view->getOrigin());
            if (oTipString)
                *oTipString = text;
            return true;
        }
    }
    return false;
}

bool Kel_ContainerViewBase::findItem(const QString& path, QPoint* where)
{
    const int dot = path.indexOf(QLatin1Char('.'));
    const QString head = dot < 0 ? path : path.left(dot);
    if (head != getName())
        return false;
    if (dot < 0) {
        if (where)
            *where = getLocalDrawingRect().center();
        return true;
    }
    const QString rest = path.mid(dot + 1);
    Kel_ViewInterface* view = getViewByName(rest.section(QLatin1Char('.'), 0, 0));
    QPoint point;
    if (!view || !view->findItem(rest, &point))
        return false;
    if (where)
        *where = point + view->getOrigin();
    return true;
}

QString Kel_ContainerViewBase::findUiName(const QPoint& local)
{
    reportToUiNameProbe(this);
    QString name = getName();
    const ViewMap under = subViewsContainingPoint(local);
    if (!under.empty()) {
        Kel_ViewInterface* top = under.rbegin()->second;
        name += QLatin1Char('.') + top->findUiName(local - top->getOrigin());
    }
    return name;
}

void Kel_ContainerViewBase::childSizeChanged(Kel_ViewInterface*, QSize, QSize)
{
}

void Kel_ContainerViewBase::childInsertedRow(Kel_ViewInterface*, int, int)
{
}

void Kel_ContainerViewBase::childDeletedRow(Kel_ViewInterface*, int, int)
{
}

void Kel_ContainerViewBase::childInsertedColumn(Kel_ViewInterface* child)
{
    if (mParent)
        mParent->childInsertedColumn(child);
}

void Kel_ContainerViewBase::childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate)
{
    if (!mParent)
        return;
    const QPoint origin = child ? child->getOrigin() : QPoint();
    mParent->childBitsChanged(this, rect.translated(origin), immediate);
}

QWidget* Kel_ContainerViewBase::getBridgeWidget()
{
    return mParent ? mParent->getBridgeWidget() : nullptr;
}

void Kel_ContainerViewBase::overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y)
{
    if (!mParent)
        return;
    const QPoint origin = child ? child->getOrigin() : QPoint();
    mParent->overlayChildEditWidget(this, editor, x + origin.x(), y + origin.y());
}

void Kel_ContainerViewBase::removeView(Kel_ViewInterface* view)
{
    const auto it = findEntry(view);
    if (it == mSubViews.end())
        return;
    unfile(it);
    // Erased first, so the immediate repaint no longer draws it.
    childBitsChanged(view, view->getLocalDrawingRect(), true);
    delete view;
}

bool Kel_ContainerViewBase::releaseView(Kel_ViewInterface* view)
{
    if (!isSubView(view))
        return false;
    unfile(mEntries.value(view));
    childBitsChanged(view, view->getLocalDrawingRect(), true);
    view->setParent(nullptr);
    return true;
}
