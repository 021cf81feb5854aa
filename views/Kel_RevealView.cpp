#include "Kel_RevealView.h"

#include "Kel_ValueViewBase.h"
#include "Kel_ViewAccessibility.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

// The triangle's box at the left of the header, and the room around the title.
const int kTriangleBox = 16;
const int kTitleMargin = 4;

} // namespace

Kel_RevealView::Kel_RevealView() : Kel_ContainerViewBase()
{
    // Views are read-only unless they say otherwise; the header is meant to
    // be operated, from the keyboard too (Space).
    setReadOnly(false);
    setAcceptsFocus(true);
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mRevealed, &mTitleModel})
        property->onNotify([this] { updateAppearance(); });
    relayout();
}

Kel_RevealView::Kel_RevealView(const Kel_RevealView& other)
    : Kel_ContainerViewBase(other, false), mTitle(other.mTitle), mOwnState(other.mOwnState), mShown(other.mOwnState)
{
    mRevealed.setSpec(other.mRevealed.spec());
    mTitleModel.setSpec(other.mTitleModel.spec());
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mRevealed, &mTitleModel})
        property->onNotify([this] { updateAppearance(); });
    setBody(other.mBodyP ? other.mBodyP->clone() : nullptr);
}

Kel_RevealView::~Kel_RevealView() = default;

void Kel_RevealView::setTitle(const QString& title)
{
    mTitle = title;
    relayout();
}

void Kel_RevealView::setBody(Kel_ViewInterface* body)
{
    if (body == mBodyP)
        return;
    if (mBodyP) {
        Kel_ViewInterface* old = mBodyP;
        mBodyP = nullptr;
        Kel_ContainerViewBase::removeView(old);
    }
    if (body) {
        Kel_ContainerViewBase::AddSubView(body);
        if (isSubView(body)) // refused when it would contain its own container
            mBodyP = body;
    }
    relayout();
}

QString Kel_RevealView::displayedTitle() const
{
    return mTitleModel.isConnected() ? mTitleModel->value(QString()) : mTitle;
}

int Kel_RevealView::headerHeight() const
{
    return std::max(kTriangleBox, QFontMetrics(Kel_ValueViewBase::listFont()).height() + 2 * kTitleMargin);
}

QSize Kel_RevealView::contentSize() const
{
    const int titleWidth = QFontMetrics(Kel_ValueViewBase::listFont()).horizontalAdvance(displayedTitle());
    int width = kTriangleBox + titleWidth + 2 * kTitleMargin;
    int height = headerHeight();
    if (mBodyP) {
        width = std::max(width, kTriangleBox + mBodyP->getWidth());
        if (mShown)
            height += std::max(0, mBodyP->getHeight());
    }
    return QSize(width, height);
}

void Kel_RevealView::relayout()
{
    if (mBodyP)
        mBodyP->setOrigin(QPoint(kTriangleBox, headerHeight()));
    const QSize oldSize = getSize();
    const QSize newSize = contentSize().expandedTo(mMinSize);
    if (newSize != oldSize)
        setSizeAndNotifyParent(newSize);
    const QRect dirty = QRect(QPoint(0, 0), oldSize).united(QRect(QPoint(0, 0), newSize));
    if (mParent && !dirty.isEmpty())
        mParent->childBitsChanged(this, dirty, false);
}

void Kel_RevealView::updateAppearance()
{
    bool revealed = mOwnState;
    if (mRevealed.isConnected())
        mRevealed->get(revealed);
    const bool changed = mShown != revealed;
    mShown = revealed;
    // The title may have changed the width, the state the height.
    relayout();
    if (changed && Kel_ViewAccessibility::reportsEvents()) {
        QAccessible::State state;
        state.expanded = true;
        state.collapsed = true;
        Kel_ViewAccessibility::notifyStateChanged(this, state);
        Kel_ViewAccessibility::notifyEvent(this, QAccessible::ObjectReorder);
    }
}

void Kel_RevealView::toggle()
{
    if (getReadOnly())
        return;
    if (!mRevealed.isConnected()) {
        mOwnState = !mShown;
        updateAppearance();
        return;
    }
    // An accepted change comes back as a notification; after a refused one
    // the view still shows what the model holds.
    mRevealed.set(!mShown);
}

bool Kel_RevealView::inHeader(const QPoint& local) const
{
    return local.y() >= 0 && local.y() < headerHeight();
}

void Kel_RevealView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mRevealed, &mTitleModel});
    Kel_ContainerViewBase::makeConnections(environment);
    updateAppearance();
}

void Kel_RevealView::drawContents(QPainter* painter, const QRect& rect)
{
    if (!painter)
        return;
    const int header = headerHeight();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    // The triangle points right while the body is hidden and down while shown.
    const QPointF c(kTriangleBox / 2.0, header / 2.0);
    const qreal r = 4;
    QPainterPath triangle;
    if (mShown) {
        triangle.moveTo(c.x() - r, c.y() - r / 2);
        triangle.lineTo(c.x() + r, c.y() - r / 2);
        triangle.lineTo(c.x(), c.y() + r / 2 + 1);
    } else {
        triangle.moveTo(c.x() - r / 2, c.y() - r);
        triangle.lineTo(c.x() + r / 2 + 1, c.y());
        triangle.lineTo(c.x() - r / 2, c.y() + r);
    }
    triangle.closeSubpath();
    painter->fillPath(triangle, painter->pen().color());
    painter->setFont(Kel_ValueViewBase::listFont());
    painter->drawText(QRect(kTriangleBox + kTitleMargin, 0, getWidth() - kTriangleBox - kTitleMargin, header),
                      Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, displayedTitle());
    painter->restore();
    if (mShown && mBodyP)
        paintSubView(mBodyP, painter, rect);
}

Kel_ViewInterface* Kel_RevealView::clone()
{
    return new Kel_RevealView(*this);
}

QSize Kel_RevealView::getMinSize()
{
    return contentSize().expandedTo(mMinSize);
}

void Kel_RevealView::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    if (inHeader(local)) {
        event->accept();
        if (event->button() == Qt::LeftButton)
            toggle();
        return;
    }
    if (mShown)
        Kel_ContainerViewBase::mousePressEvent(event, local);
    else
        event->ignore();
}

void Kel_RevealView::mouseReleaseEvent(QMouseEvent* event, const QPoint& local)
{
    if (getMouseView() || (mShown && !inHeader(local)))
        Kel_ContainerViewBase::mouseReleaseEvent(event, local);
    else
        event->setAccepted(inHeader(local));
}

void Kel_RevealView::mouseMoveEvent(QMouseEvent* event, const QPoint& local)
{
    if (getMouseView() || (mShown && !inHeader(local)))
        Kel_ContainerViewBase::mouseMoveEvent(event, local);
    else
        event->ignore();
}

void Kel_RevealView::mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local)
{
    // The press of a double click toggled already; the header takes the rest.
    if (getMouseView() || (mShown && !inHeader(local)))
        Kel_ContainerViewBase::mouseDoubleClickEvent(event, local);
    else
        event->setAccepted(inHeader(local));
}

void Kel_RevealView::keyPressEvent(QKeyEvent* event)
{
    if (mShown && getFocusView()) {
        Kel_ContainerViewBase::keyPressEvent(event);
        if (event->isAccepted())
            return;
    }
    if (event->key() != Qt::Key_Space) {
        event->ignore();
        return;
    }
    event->accept();
    toggle();
}

void Kel_RevealView::childSizeChanged(Kel_ViewInterface* child, QSize, QSize)
{
    if (child == mBodyP)
        relayout();
}

void Kel_RevealView::removeView(Kel_ViewInterface* view)
{
    if (view && view == mBodyP)
        setBody(nullptr);
    else
        Kel_ContainerViewBase::removeView(view);
}

bool Kel_RevealView::releaseView(Kel_ViewInterface* view)
{
    const bool wasBody = view && view == mBodyP;
    if (wasBody)
        mBodyP = nullptr;
    const bool released = Kel_ContainerViewBase::releaseView(view);
    if (wasBody)
        relayout();
    return released;
}

void Kel_RevealView::removeAllSubViews()
{
    mBodyP = nullptr;
    Kel_ContainerViewBase::removeAllSubViews();
    relayout();
}
