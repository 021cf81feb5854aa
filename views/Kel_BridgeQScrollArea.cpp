#include "Kel_BridgeQScrollArea.h"

#include "Kel_QtCompat.h"
#include "Kel_ViewInterface.h"
#include "Kel_WhatsThis.h"

#include <QCursor>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QResizeEvent>
#include <QScrollBar>
#include <QToolTip>

namespace {

// Width of the band along the viewport's edges in which a drag scrolls.
const int kAutoScrollMargin = 16;
// The first tick interval, and the step limit that the interval counts down from.
const int kAutoScrollStartInterval = 30;
// Ticks at one speed before the timer speeds up by a millisecond.
const int kAutoScrollTicksPerSpeed = 5;

bool isDragEvent(const QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

// ---------------------------------------------------------------------------
// ViewportWidget

Kel_BridgeQScrollArea::ViewportWidget::ViewportWidget(Kel_BridgeQScrollArea* area) : QWidget(nullptr), mAreaP(area)
{
    setObjectName(QStringLiteral("ViewportWidget"));
    setMaximumHeight(0xFFFFFF);
    // The scroll area hands its focus to the content (its focus proxy), and
    // Qt's Tab chain skips a widget with a proxy: the content itself is the
    // tab stop. A click leaves the focus alone unless a view asks for it.
    setFocusPolicy(Qt::TabFocus);
}

void Kel_BridgeQScrollArea::ViewportWidget::forwardDragEvent(QEvent* event, const QPoint& local)
{
    Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr;
    switch (event->type()) {
    case QEvent::DragEnter: {
        auto* enter = static_cast<QDragEnterEvent*>(event);
        if (view)
            view->dragEnterEvent(enter, local);
        // Taken whatever the view said, so that the moves keep coming: the
        // view may take the drag further on, and auto-scroll needs them.
        enter->accept();
        break;
    }
    case QEvent::DragMove: {
        auto* move = static_cast<QDragMoveEvent*>(event);
        move->ignore();
        if (view)
            view->dragMoveEvent(move, local);
        break;
    }
    case QEvent::DragLeave:
        if (view)
            view->dragLeaveEvent(static_cast<QDragLeaveEvent*>(event), local);
        break;
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->ignore();
        if (view)
            view->dropEvent(drop, local);
        break;
    }
    default:
        break;
    }
}

bool Kel_BridgeQScrollArea::ViewportWidget::event(QEvent* event)
{
    Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr;
    if (view && view->event(event))
        return true;
    if (view && event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        QRect rect;
        QString text;
        if (view->getToolTip(mapFromGlobal(help->globalPos()), &rect, &text)) {
            QToolTip::showText(help->globalPos(), text, this, rect);
            return true;
        }
    }
    return QWidget::event(event);
}

void Kel_BridgeQScrollArea::ViewportWidget::paintEvent(QPaintEvent* event)
{
    if (!mAreaP || !mAreaP->getChild())
        return;
    QPainter painter(this);
    mAreaP->paintBackground(painter, rect());
    mAreaP->drawContents(&painter, event->rect());
    mAreaP->paintFocusFrame(painter);
}

void Kel_BridgeQScrollArea::ViewportWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    if (mAreaP)
        mAreaP->focusEntered(event->reason());
}

void Kel_BridgeQScrollArea::ViewportWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

bool Kel_BridgeQScrollArea::ViewportWidget::focusNextPrevChild(bool next)
{
    if (mAreaP && hasFocus() && mAreaP->focusNextView(next))
        return true;
    return QWidget::focusNextPrevChild(next);
}

void Kel_BridgeQScrollArea::ViewportWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (mAreaP)
        mAreaP->adjustChildToPortSize();
}

void Kel_BridgeQScrollArea::ViewportWidget::mousePressEvent(QMouseEvent* event)
{
    if (Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr)
        view->mousePressEvent(event, event->pos());
    // The content keeps the mouse until the release, whatever the view did.
    event->accept();
    if (mAreaP)
        mAreaP->focusMayHaveChanged();
}

void Kel_BridgeQScrollArea::ViewportWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr)
        view->mouseReleaseEvent(event, event->pos());
    else
        QWidget::mouseReleaseEvent(event);
}

void Kel_BridgeQScrollArea::ViewportWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr)
        view->mouseMoveEvent(event, event->pos());
    else
        QWidget::mouseMoveEvent(event);
}

void Kel_BridgeQScrollArea::ViewportWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr)
        view->mouseDoubleClickEvent(event, event->pos());
    else
        QWidget::mouseDoubleClickEvent(event);
}

void Kel_BridgeQScrollArea::ViewportWidget::keyPressEvent(QKeyEvent* event)
{
    // Keys the view leaves go on to the scroll area, which scrolls with them.
    if (Kel_ViewInterface* view = mAreaP ? mAreaP->getChild() : nullptr)
        view->keyPressEvent(event);
    else
        event->ignore();
}

void Kel_BridgeQScrollArea::ViewportWidget::dragEnterEvent(QDragEnterEvent* event)
{
    forwardDragEvent(event, Kel_QtCompat::dropPosition(event));
}

void Kel_BridgeQScrollArea::ViewportWidget::dragMoveEvent(QDragMoveEvent* event)
{
    forwardDragEvent(event, Kel_QtCompat::dropPosition(event));
}

void Kel_BridgeQScrollArea::ViewportWidget::dragLeaveEvent(QDragLeaveEvent* event)
{
    forwardDragEvent(event, mapFromGlobal(QCursor::pos()));
}

void Kel_BridgeQScrollArea::ViewportWidget::dropEvent(QDropEvent* event)
{
    forwardDragEvent(event, Kel_QtCompat::dropPosition(event));
}

// ---------------------------------------------------------------------------
// Kel_BridgeQScrollArea

Kel_BridgeQScrollArea::Kel_BridgeQScrollArea(QWidget* parent)
    : QScrollArea(parent), Kel_BridgeBase(this), mDragAutoScroll(false), mAutoScrollTimer(),
      mAutoScrollInterval(kAutoScrollStartInterval), mAutoScrollCountdown(kAutoScrollTicksPerSpeed),
      mViewportWidgetP(nullptr), mFitting(false)
{
    setFrameShape(QFrame::NoFrame);
    mViewportWidgetP = new ViewportWidget(this);
    setWidget(mViewportWidgetP);
    setWidgetResizable(true);
    // Focus given to the bridge (a list asks for it) lands on the content,
    // so that key presses reach the view.
    setFocusProxy(mViewportWidgetP);
    mAutoScrollTimer.setParent(this);
    mAutoScrollTimer.setObjectName(QStringLiteral("autoScrollTimer"));
    connect(&mAutoScrollTimer, SIGNAL(timeout()), this, SLOT(doDragAutoScroll()));
    viewport()->installEventFilter(this);
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_BridgeQScrollArea");
}

Kel_BridgeQScrollArea::~Kel_BridgeQScrollArea()
{
    mAutoScrollTimer.stop();
    viewport()->removeEventFilter(this);
    deleteChild();
    // The content asks the bridge for the view; it goes while the bridge is whole.
    setFocusProxy(nullptr);
    delete takeWidget();
    mViewportWidgetP = nullptr;
}

void Kel_BridgeQScrollArea::setChild(Kel_ViewInterface* view)
{
    Kel_BridgeBase::setChild(view);
    if (mChildP) {
        mChildP->setParent(this);
        mChildP->setOrigin(QPoint(0, 0));
        fitContentToView();
    } else {
        releaseContentSize();
    }
    mViewportWidgetP->update();
}

void Kel_BridgeQScrollArea::releaseContentSize()
{
    // Empty again: the content just fills the visible area.
    mViewportWidgetP->setMinimumSize(0, 0);
    mViewportWidgetP->setMaximumSize(QWIDGETSIZE_MAX, 0xFFFFFF);
    setWidgetResizable(true);
}

void Kel_BridgeQScrollArea::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (mChildP)
        mChildP->makeConnections(environment);
}

int Kel_BridgeQScrollArea::visibleWidth() const
{
    return viewport()->width();
}

int Kel_BridgeQScrollArea::visibleHeight() const
{
    return viewport()->height();
}

QRect Kel_BridgeQScrollArea::viewableArea() const
{
    return QRect(horizontalScrollBar()->value(), verticalScrollBar()->value(), visibleWidth(), visibleHeight());
}

void Kel_BridgeQScrollArea::adjustChildToPortSize()
{
    if (mChildP)
        mChildP->setSize(mChildP->getMinSize().expandedTo(viewport()->size()));
}

void Kel_BridgeQScrollArea::fitContentToView()
{
    if (!mChildP || !mViewportWidgetP || mFitting)
        return;
    mFitting = true;
    // Showing or hiding a scroll bar changes the visible area; fit again
    // until it holds still.
    for (int round = 0; round < 3; ++round) {
        const QSize port = viewport()->size();
        adjustChildToPortSize();
        if (!mChildP)
            break;
        mViewportWidgetP->setFixedSize(mChildP->getSize().expandedTo(port));
        setWidgetResizable(true);
        if (viewport()->size() == port)
            break;
    }
    mFitting = false;
}

void Kel_BridgeQScrollArea::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    fitContentToView();
}

void Kel_BridgeQScrollArea::drawContents(QPainter* painter, QRect rect)
{
    if (mChildP && painter)
        mChildP->drawContents(painter, rect);
}

void Kel_BridgeQScrollArea::childSizeChanged(Kel_ViewInterface*, QSize newSize, QSize)
{
    mViewportWidgetP->setFixedSize(newSize.expandedTo(viewport()->size()));
    adjustChildToPortSize();
    mViewportWidgetP->update();
}

void Kel_BridgeQScrollArea::rowsChanged(int y)
{
    if (!mChildP)
        return;
    mViewportWidgetP->update(QRect(0, y, mViewportWidgetP->width(), mChildP->getHeight() - y));
    mViewportWidgetP->setFixedSize(mChildP->getSize().expandedTo(viewport()->size()));
    adjustChildToPortSize();
}

void Kel_BridgeQScrollArea::childInsertedRow(Kel_ViewInterface*, int y, int)
{
    rowsChanged(y);
}

void Kel_BridgeQScrollArea::childDeletedRow(Kel_ViewInterface*, int y, int)
{
    rowsChanged(y);
}

void Kel_BridgeQScrollArea::childInsertedColumn(Kel_ViewInterface*)
{
    rowsChanged(0);
}

void Kel_BridgeQScrollArea::childBitsChanged(Kel_ViewInterface*, const QRect& rect, bool)
{
    if (rect.intersects(viewableArea()))
        mViewportWidgetP->update(rect);
}

void Kel_BridgeQScrollArea::overlayChildEditWidget(Kel_ViewInterface*, QWidget* editor, int x, int y)
{
    if (!editor)
        return;
    ensureRectVisible(QRect(x, y, editor->width(), editor->height()));
    editor->move(x - horizontalScrollBar()->value(), y - verticalScrollBar()->value() + viewport()->y());
}

void Kel_BridgeQScrollArea::removeView(Kel_ViewInterface* view)
{
    if (!view || view != mChildP)
        return;
    deleteChild();
    releaseContentSize();
    mViewportWidgetP->update();
}

bool Kel_BridgeQScrollArea::releaseView(Kel_ViewInterface* view)
{
    if (!releaseChild(view))
        return false;
    releaseContentSize();
    mViewportWidgetP->update();
    return true;
}

void Kel_BridgeQScrollArea::ensureRectVisible(QRect rect)
{
    const QRect visible = viewableArea();
    // An empty axis is taken as already in sight.
    if (rect.width() < 1) {
        rect.setLeft(visible.left());
        rect.setRight(visible.right());
    }
    if (rect.height() < 1) {
        rect.setTop(visible.top());
        rect.setBottom(visible.bottom());
    }
    if (visible.contains(rect))
        return;

    int x = visible.left();
    const int left = visible.left() - rect.left();     // how far rect sticks out on the left
    const int right = rect.right() - visible.right();  // ... and on the right
    if (left > 0 && right > 0)
        x = rect.left() + left - (left - right) / 2;
    else if (left > 0)
        x = rect.left();
    else if (right > 0)
        x = rect.right() - visible.width();

    int y = visible.top();
    const int above = visible.top() - rect.top();
    const int below = rect.bottom() - visible.bottom();
    if (above > 0 && below > 0) {
        y = rect.top() + above - (above - below) / 2;
    } else if (above > 0) {
        // Scrolling up: the rectangle lines up with the top edge.
        y = rect.top();
    } else if (below > 0) {
        // Scrolling down: the rectangle is centred.
        const int centring = below - (below - above) / 2;
        y = rect.bottom() - centring - visible.height();
    }

    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
}

void Kel_BridgeQScrollArea::setDragAutoScroll(bool on)
{
    mDragAutoScroll = on;
    if (!on)
        mAutoScrollTimer.stop();
}

QPoint Kel_BridgeQScrollArea::cursorPosInViewport() const
{
    return viewport()->mapFromGlobal(QCursor::pos());
}

void Kel_BridgeQScrollArea::startDragAutoScroll()
{
    if (mAutoScrollTimer.isActive())
        return;
    mAutoScrollCountdown = kAutoScrollTicksPerSpeed;
    mAutoScrollInterval = kAutoScrollStartInterval;
    mAutoScrollTimer.start(kAutoScrollStartInterval);
}

void Kel_BridgeQScrollArea::doDragAutoScroll()
{
    const QPoint pos = cursorPosInViewport();
    // Every sixth tick the timer runs a millisecond faster and the step
    // grows by a pixel.
    if (mAutoScrollCountdown-- < 1 && mAutoScrollInterval != 0) {
        mAutoScrollCountdown = kAutoScrollTicksPerSpeed;
        --mAutoScrollInterval;
        mAutoScrollTimer.start(mAutoScrollInterval);
    }
    const int step = qMax(kAutoScrollStartInterval - mAutoScrollInterval, 1);

    int dy = 0;
    if (pos.y() < kAutoScrollMargin)
        dy = -step;
    else if (pos.y() > visibleHeight() - kAutoScrollMargin)
        dy = step;
    int dx = 0;
    if (pos.x() < kAutoScrollMargin)
        dx = -step;
    else if (pos.x() > visibleWidth() - kAutoScrollMargin)
        dx = step;

    if (dx == 0 && dy == 0) {
        mAutoScrollTimer.stop();
        return;
    }
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + dx);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + dy);
}

bool Kel_BridgeQScrollArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport()) {
        switch (event->type()) {
        case QEvent::DragLeave:
        case QEvent::Drop:
            mAutoScrollTimer.stop();
            break;
        case QEvent::DragMove:
            if (mDragAutoScroll) {
                auto* move = static_cast<QDragMoveEvent*>(event);
                const QRect inner(kAutoScrollMargin, kAutoScrollMargin, visibleWidth() - 2 * kAutoScrollMargin,
                                  visibleHeight() - 2 * kAutoScrollMargin);
                if (!inner.contains(Kel_QtCompat::dropPosition(move))) {
                    startDragAutoScroll();
                    // An empty answer rectangle: moves keep coming while the pointer rests.
                    move->accept(QRect());
                }
            }
            break;
        case QEvent::Resize:
            // A scroll bar came or went: the content must still cover the visible area.
            fitContentToView();
            break;
        default:
            break;
        }
    }
    return QScrollArea::eventFilter(watched, event);
}

bool Kel_BridgeQScrollArea::event(QEvent* event)
{
    // Drags are delivered to the viewport, the widget under the content that
    // the auto-scroll watches; it takes drops whenever the bridge does.
    if (event->type() == QEvent::AcceptDropsChange && viewport())
        viewport()->setAcceptDrops(acceptDrops());
    return QScrollArea::event(event);
}

bool Kel_BridgeQScrollArea::viewportEvent(QEvent* event)
{
    if (!isDragEvent(event) || !mViewportWidgetP)
        return QScrollArea::viewportEvent(event);
    QPoint local;
    if (event->type() == QEvent::DragLeave)
        local = viewport()->mapFromGlobal(QCursor::pos());
    else
        local = Kel_QtCompat::dropPosition(static_cast<QDropEvent*>(event));
    mViewportWidgetP->forwardDragEvent(event, mViewportWidgetP->mapFrom(viewport(), local));
    return true;
}

void Kel_BridgeQScrollArea::showFocusedRect(const QRect& rect)
{
    ensureRectVisible(rect);
}
