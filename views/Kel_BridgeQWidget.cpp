#include "Kel_BridgeQWidget.h"

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
#include <QToolTip>

Kel_BridgeQWidget::Kel_BridgeQWidget(QWidget* parent, const char* name) : QWidget(parent), Kel_BridgeBase(this)
{
    setObjectName(QString::fromLatin1(name));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_BridgeQWidget");
}

Kel_BridgeQWidget::~Kel_BridgeQWidget()
{
    deleteChild();
}

void Kel_BridgeQWidget::setChild(Kel_ViewInterface* view)
{
    Kel_BridgeBase::setChild(view);
    if (!mChildP)
        return;
    mChildP->setParent(this);
    mChildP->setOrigin(QPoint(0, 0));
    resize(mChildP->getSize());
    updateGeometry();
    update();
    updateFocusPolicy();
}

void Kel_BridgeQWidget::updateFocusPolicy()
{
    if (focusPolicy() == Qt::NoFocus && !focusableViews().isEmpty())
        setFocusPolicy(Qt::StrongFocus);
}

void Kel_BridgeQWidget::showEvent(QShowEvent* event)
{
    // Views may have been added to the hosted tree since setChild.
    updateFocusPolicy();
    QWidget::showEvent(event);
}

void Kel_BridgeQWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    focusEntered(event->reason());
}

void Kel_BridgeQWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

bool Kel_BridgeQWidget::focusNextPrevChild(bool next)
{
    if (hasFocus() && focusNextView(next))
        return true;
    return QWidget::focusNextPrevChild(next);
}

void Kel_BridgeQWidget::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (mChildP)
        mChildP->makeConnections(environment);
}

QSize Kel_BridgeQWidget::sizeHint() const
{
    return mChildP ? mChildP->getSize() : minimumSizeHint();
}

QSize Kel_BridgeQWidget::minimumSizeHint() const
{
    return QSize(10, 10);
}

void Kel_BridgeQWidget::childSizeChanged(Kel_ViewInterface*, QSize newSize, QSize)
{
    resize(newSize);
    updateGeometry();
}

void Kel_BridgeQWidget::rowsChanged(int y)
{
    if (!mChildP)
        return;
    update(QRect(0, y, width(), mChildP->getHeight() - y));
    resize(mChildP->getSize());
    updateGeometry();
}

void Kel_BridgeQWidget::childInsertedRow(Kel_ViewInterface*, int y, int)
{
    rowsChanged(y);
}

void Kel_BridgeQWidget::childDeletedRow(Kel_ViewInterface*, int y, int)
{
    rowsChanged(y);
}

void Kel_BridgeQWidget::childInsertedColumn(Kel_ViewInterface*)
{
}

void Kel_BridgeQWidget::childBitsChanged(Kel_ViewInterface*, const QRect& rect, bool immediate)
{
    if (!immediate)
        update(rect);
    else if (mChildP)
        repaint(rect);
    else
        repaint();
}

void Kel_BridgeQWidget::overlayChildEditWidget(Kel_ViewInterface*, QWidget* editor, int x, int y)
{
    if (editor)
        editor->move(x, y);
}

void Kel_BridgeQWidget::removeView(Kel_ViewInterface* view)
{
    if (!view || view != mChildP)
        return;
    deleteChild();
    update();
}

bool Kel_BridgeQWidget::releaseView(Kel_ViewInterface* view)
{
    if (!releaseChild(view))
        return false;
    update();
    return true;
}

bool Kel_BridgeQWidget::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !mChildP)
        return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    QRect rect;
    QString text;
    const bool hasTip = mChildP->getToolTip(mapFromGlobal(help->globalPos()), &rect, &text);
    if (hasTip)
        QToolTip::showText(help->globalPos(), text, this, rect);
    const bool handled = QWidget::event(event);
    if (!hasTip)
        return handled;
    // The view's tip stands; the parent widgets must not put theirs over it.
    event->accept();
    return true;
}

void Kel_BridgeQWidget::paintEvent(QPaintEvent* event)
{
    if (!mChildP)
        return;
    QPainter painter(this);
    paintBackground(painter, rect());
    mChildP->drawContents(&painter, event->rect());
    paintFocusFrame(painter);
}

void Kel_BridgeQWidget::resizeEvent(QResizeEvent* event)
{
    if (mChildP)
        mChildP->setSize(event->size());
    QWidget::resizeEvent(event);
}

void Kel_BridgeQWidget::mousePressEvent(QMouseEvent* event)
{
    if (mChildP)
        mChildP->mousePressEvent(event, event->pos());
    QWidget::mousePressEvent(event);
    focusMayHaveChanged();
}

void Kel_BridgeQWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (mChildP)
        mChildP->mouseReleaseEvent(event, event->pos());
    QWidget::mouseReleaseEvent(event);
}

void Kel_BridgeQWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (mChildP)
        mChildP->mouseMoveEvent(event, event->pos());
    QWidget::mouseMoveEvent(event);
}

void Kel_BridgeQWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (mChildP)
        mChildP->mouseDoubleClickEvent(event, event->pos());
    QWidget::mouseDoubleClickEvent(event);
}

void Kel_BridgeQWidget::keyPressEvent(QKeyEvent* event)
{
    // The view accepts what it uses; the rest goes on to the parent widgets.
    event->ignore();
    if (mChildP)
        mChildP->keyPressEvent(event);
}

void Kel_BridgeQWidget::dragEnterEvent(QDragEnterEvent* event)
{
    if (mChildP)
        mChildP->dragEnterEvent(event, Kel_QtCompat::dropPosition(event));
    // Accepted whatever the view said, so that the moves keep coming and the
    // view can decide per position.
    event->accept();
}

void Kel_BridgeQWidget::dragMoveEvent(QDragMoveEvent* event)
{
    event->ignore();
    if (mChildP)
        mChildP->dragMoveEvent(event, Kel_QtCompat::dropPosition(event));
}

void Kel_BridgeQWidget::dragLeaveEvent(QDragLeaveEvent* event)
{
    if (mChildP)
        mChildP->dragLeaveEvent(event, mapFromGlobal(QCursor::pos()));
}

void Kel_BridgeQWidget::dropEvent(QDropEvent* event)
{
    event->ignore();
    if (mChildP)
        mChildP->dropEvent(event, Kel_QtCompat::dropPosition(event));
}
