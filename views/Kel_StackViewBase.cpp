#include "Kel_StackViewBase.h"

#include <algorithm>

Kel_StackViewBase::Kel_StackViewBase(Qt::Orientation orientation)
    : Kel_ContainerViewBase(), mOrientation(orientation)
{
}

Kel_StackViewBase::Kel_StackViewBase(const Kel_StackViewBase& other)
    : Kel_ContainerViewBase(other, false), mOrientation(other.mOrientation)
{
    bool lostOne = false;
    for (Kel_ViewInterface* view : other.mStack) {
        Kel_ViewInterface* copy = view->clone();
        if (!copy) {
            lostOne = true;
            continue;
        }
        Kel_ContainerViewBase::AddSubView(copy);
        mStack.push_back(copy);
    }
    // Origins and sizes came with the copies; only a missing copy leaves a gap.
    if (lostOne)
        relayout();
}

Kel_StackViewBase::~Kel_StackViewBase() = default;

Kel_ViewInterface* Kel_StackViewBase::viewAt(int index) const
{
    return index >= 0 && index < count() ? mStack[size_t(index)] : nullptr;
}

int Kel_StackViewBase::indexOf(const Kel_ViewInterface* view) const
{
    const auto it = std::find(mStack.begin(), mStack.end(), view);
    return it == mStack.end() ? -1 : int(it - mStack.begin());
}

void Kel_StackViewBase::AddSubView(Kel_ViewInterface* view)
{
    insertView(count(), view);
}

void Kel_StackViewBase::insertView(int index, Kel_ViewInterface* view)
{
    if (!view || isSubView(view))
        return;
    index = std::clamp(index, 0, count());
    Kel_ContainerViewBase::AddSubView(view);
    if (!isSubView(view)) // refused: it would contain its own container
        return;
    mStack.insert(mStack.begin() + index, view);
    relayout();
}

void Kel_StackViewBase::removeViewAt(int index)
{
    if (Kel_ViewInterface* view = viewAt(index))
        removeView(view);
}

void Kel_StackViewBase::moveView(int from, int to)
{
    if (from < 0 || from >= count() || to < 0 || to >= count() || from == to)
        return;
    Kel_ViewInterface* view = mStack[size_t(from)];
    mStack.erase(mStack.begin() + from);
    mStack.insert(mStack.begin() + to, view);
    relayout();
}

void Kel_StackViewBase::addProxyView(Kel_ViewInterface* view)
{
    if (!view || isSubView(view))
        return;
    Kel_ContainerViewBase::AddSubView(view);
    if (!isSubView(view))
        return;
    mProxies.push_back(view);
    childBitsChanged(view, view->getLocalDrawingRect(), false);
}

void Kel_StackViewBase::clearProxyViews()
{
    std::vector<Kel_ViewInterface*> proxies;
    proxies.swap(mProxies);
    for (Kel_ViewInterface* proxy : proxies)
        Kel_ContainerViewBase::removeView(proxy);
}

QSize Kel_StackViewBase::contentSize() const
{
    int length = 0;
    int thickness = 0;
    const bool horizontal = mOrientation == Qt::Horizontal;
    for (Kel_ViewInterface* view : mStack) {
        length += std::max(0, horizontal ? view->getWidth() : view->getHeight());
        thickness = std::max(thickness, horizontal ? view->getHeight() : view->getWidth());
    }
    return horizontal ? QSize(length, thickness) : QSize(thickness, length);
}

void Kel_StackViewBase::relayout()
{
    int position = 0;
    const bool horizontal = mOrientation == Qt::Horizontal;
    for (Kel_ViewInterface* view : mStack) {
        view->setOrigin(horizontal ? QPoint(position, 0) : QPoint(0, position));
        position += std::max(0, horizontal ? view->getWidth() : view->getHeight());
    }
    const QSize oldSize = getSize();
    const QSize newSize = contentSize();
    if (newSize != oldSize)
        setSizeAndNotifyParent(newSize);
    // The cells moved: repaint what the stack covered before and covers now.
    const QRect dirty = QRect(QPoint(0, 0), oldSize).united(QRect(QPoint(0, 0), newSize));
    if (mParent && !dirty.isEmpty())
        mParent->childBitsChanged(this, dirty, false);
}

QSize Kel_StackViewBase::getMinSize()
{
    return contentSize().expandedTo(mMinSize);
}

void Kel_StackViewBase::childSizeChanged(Kel_ViewInterface* child, QSize, QSize)
{
    if (indexOf(child) >= 0)
        relayout();
}

void Kel_StackViewBase::removeView(Kel_ViewInterface* view)
{
    // The container keeps a view it does not find under its z-order; the
    // stack then keeps it laid out too.
    if (!isFiledUnderItsZOrder(view))
        return;
    const bool wasLaidOut = forget(view);
    Kel_ContainerViewBase::removeView(view);
    if (wasLaidOut)
        relayout();
}

bool Kel_StackViewBase::forget(Kel_ViewInterface* view)
{
    const auto laidOut = std::find(mStack.begin(), mStack.end(), view);
    if (laidOut == mStack.end()) {
        mProxies.erase(std::remove(mProxies.begin(), mProxies.end(), view), mProxies.end());
        return false;
    }
    mStack.erase(laidOut);
    return true;
}

bool Kel_StackViewBase::releaseView(Kel_ViewInterface* view)
{
    if (!isSubView(view))
        return false;
    const bool wasLaidOut = forget(view);
    Kel_ContainerViewBase::releaseView(view);
    if (wasLaidOut)
        relayout();
    return true;
}

void Kel_StackViewBase::removeAllSubViews()
{
    mStack.clear();
    mProxies.clear();
    Kel_ContainerViewBase::removeAllSubViews();
    relayout();
}
