#include "Kel_SelectableView.h"

#include "Kel_ViewAccessibility.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>

Kel_SelectableView::Kel_SelectableView() : Kel_ContainerViewBase()
{
    // Views are read-only unless they say otherwise; this one is meant to be clicked.
    setReadOnly(false);
    // A click makes it the focus of its container, for Space.
    setAcceptsFocus(true);
    mSelected.onNotify([this] { selectionNotified(); });
}

Kel_SelectableView::Kel_SelectableView(const Kel_SelectableView& other)
    : Kel_ContainerViewBase(other), mHighlight(other.mHighlight), mHighlightedText(other.mHighlightedText)
{
    mSelected.setSpec(other.mSelected.spec());
    mSelected.onNotify([this] { selectionNotified(); });
}

Kel_SelectableView::~Kel_SelectableView() = default;

QColor Kel_SelectableView::highlightColor() const
{
    return mHighlight.isValid() ? mHighlight : QApplication::palette().color(QPalette::Highlight);
}

QColor Kel_SelectableView::highlightedTextColor() const
{
    return mHighlightedText.isValid() ? mHighlightedText : QApplication::palette().color(QPalette::HighlightedText);
}

bool Kel_SelectableView::isSelected() const
{
    return mSelected->value(false);
}

void Kel_SelectableView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mSelected.connect(environment);
    Kel_ContainerViewBase::makeConnections(environment);
}

void Kel_SelectableView::drawContents(QPainter* painter, const QRect& rect)
{
    if (!painter)
        return;
    if (!isSelected()) {
        Kel_ContainerViewBase::drawContents(painter, rect);
        return;
    }
    painter->save();
    painter->fillRect(getLocalDrawingRect().intersected(rect), highlightColor());
    painter->setPen(highlightedTextColor());
    Kel_ContainerViewBase::drawContents(painter, rect);
    painter->restore();
}

Kel_ViewInterface* Kel_SelectableView::clone()
{
    return new Kel_SelectableView(*this);
}

void Kel_SelectableView::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    Kel_ContainerViewBase::mousePressEvent(event, local);
    if (event->isAccepted() || event->button() != Qt::LeftButton || !mSelected.isConnected() || getReadOnly())
        return;
    event->accept();
    userSetSelected((event->modifiers() & Qt::ControlModifier) ? !isSelected() : true);
}

void Kel_SelectableView::keyPressEvent(QKeyEvent* event)
{
    if (getFocusView()) {
        Kel_ContainerViewBase::keyPressEvent(event);
        if (event->isAccepted())
            return;
    }
    if (event->key() != Qt::Key_Space || !mSelected.isConnected() || getReadOnly()) {
        event->ignore();
        return;
    }
    event->accept();
    userSetSelected(!isSelected());
}

void Kel_SelectableView::selectionNotified()
{
    sendAllBitsChanged();
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    QAccessible::State changed;
    changed.selected = true;
    Kel_ViewAccessibility::notifyStateChanged(this, changed);
}

void Kel_SelectableView::userSetSelected(bool selected)
{
    // The model's notification repaints an accepted change; a refused one
    // changes nothing, and the view already draws the model's state.
    if (mSelected.set(selected) == Mvt_SimpleValue_BaseAPI::kSetRefused)
        sendAllBitsChanged();
}
