#include "Kel_ViewBase.h"

#include "Kel_ViewContainerInterface.h"
#include "Ost_Assert.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace {

void ignoreEvent(QEvent* event)
{
    if (event)
        event->ignore();
}

} // namespace

Kel_ViewBase::Kel_ViewBase()
    : mAcceptsFocus(false),
      mCanDrag(false),
      mAcceptsDrops(false),
      mDragType(kDragCopy),
      mParent(nullptr),
      mOrigin(0, 0),
      mName(),
      mIsFixedAspect(false),
      mAspect(0.0f),
      mReadOnly(true),
      mSize(0, 0),
      mMinSize(0, 0),
      mZOrder(0),
      mToolTipConnectionID(),
      mToolTipListener(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
}

Kel_ViewBase::Kel_ViewBase(const Kel_ViewBase& other)
    : Kel_ViewInterface(other),
      mAcceptsFocus(other.mAcceptsFocus),
      mCanDrag(other.mCanDrag),
      mAcceptsDrops(other.mAcceptsDrops),
      mDragType(other.mDragType),
      mParent(nullptr),
      mOrigin(other.mOrigin),
      mName(other.mName),
      mIsFixedAspect(other.mIsFixedAspect),
      mAspect(other.mAspect),
      mReadOnly(other.mReadOnly),
      mSize(other.mSize),
      mMinSize(other.mMinSize),
      mZOrder(other.mZOrder),
      mToolTipConnectionID(other.mToolTipConnectionID),
      mToolTipListener(new Mvt_SimpleValue<QString>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
}

Kel_ViewBase::~Kel_ViewBase()
{
    delete mToolTipListener;
}

int Kel_ViewBase::getWidth() const
{
    // Through the virtual getSize, which derived views may compute.
    return const_cast<Kel_ViewBase*>(this)->getSize().width();
}

int Kel_ViewBase::getHeight() const
{
    return const_cast<Kel_ViewBase*>(this)->getSize().height();
}

QRect Kel_ViewBase::getLocalDrawingRect()
{
    return QRect(QPoint(0, 0), getSize());
}

QRect Kel_ViewBase::getRectInParent()
{
    return QRect(getOrigin(), getSize());
}

void Kel_ViewBase::setRectInParent(const QRect& rect)
{
    setOrigin(rect.topLeft());
    setSize(rect.size());
}

void Kel_ViewBase::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (mToolTipConnectionID.isEmpty())
        return;
    mToolTipListener->SetConnectionName(mToolTipConnectionID);
    mToolTipListener->connect(environment);
}

void Kel_ViewBase::setAspect(float aspect)
{
    mAspect = aspect;
    mIsFixedAspect = true;
}

void Kel_ViewBase::mousePressEvent(QMouseEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::mouseReleaseEvent(QMouseEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::mouseMoveEvent(QMouseEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::mouseDoubleClickEvent(QMouseEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::dragEnterEvent(QDragEnterEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::dragMoveEvent(QDragMoveEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::dragLeaveEvent(QDragLeaveEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

void Kel_ViewBase::dropEvent(QDropEvent* event, const QPoint&)
{
    ignoreEvent(event);
}

bool Kel_ViewBase::canDrag(const QPoint&)
{
    return mCanDrag;
}

void Kel_ViewBase::startDrag(const QPoint&)
{
}

bool Kel_ViewBase::getToolTip(const QPoint&, QRect* oTipRect, QString* oTipString)
{
    OST_ASSERT(oTipRect && oTipString);
    if (!mToolTipListener->isConnectedToModel())
        return false;
    QString text;
    mToolTipListener->get(text);
    if (text.isEmpty())
        return false;
    if (oTipRect)
        *oTipRect = getLocalDrawingRect();
    if (oTipString)
        *oTipString = text;
    return true;
}

QDomElement Kel_ViewBase::getDragData(QPoint, QDomDocument&, QPixmap&)
{
    return QDomElement();
}

void Kel_ViewBase::keyPressEvent(QKeyEvent* event)
{
    ignoreEvent(event);
}

bool Kel_ViewBase::event(QEvent*)
{
    return false;
}

bool Kel_ViewBase::findItem(const QString& name, QPoint* where)
{
    if (getName() != name)
        return false;
    if (where)
        *where = getLocalDrawingRect().center();
    return true;
}

namespace {
Kel_ViewBase::UiNameProbe& uiNameProbe()
{
    static Kel_ViewBase::UiNameProbe probe;
    return probe;
}
} // namespace

void Kel_ViewBase::setUiNameProbe(const UiNameProbe& probe)
{
    uiNameProbe() = probe;
}

void Kel_ViewBase::reportToUiNameProbe(Kel_ViewInterface* view)
{
    if (const UiNameProbe& probe = uiNameProbe())
        probe(view);
}

QString Kel_ViewBase::findUiName(const QPoint&)
{
    reportToUiNameProbe(this);
    return mName;
}

void Kel_ViewBase::setAcceptsDrops(bool accepts)
{
    OST_ASSERT(mParent);
    if (mParent) {
        // Drops are decided per view; the shared bridge only has to let them in.
        if (QWidget* bridge = mParent->getBridgeWidget())
            bridge->setAcceptDrops(true);
    }
    mAcceptsDrops = accepts;
}

void Kel_ViewBase::sendAllBitsChanged()
{
    if (mParent)
        mParent->childBitsChanged(this, getLocalDrawingRect(), false);
}

void Kel_ViewBase::sendAllBitsChangedImmediate()
{
    if (mParent)
        mParent->childBitsChanged(this, getLocalDrawingRect(), true);
}

void Kel_ViewBase::setSizeAndNotifyParent(const QSize& size)
{
    const QSize oldSize = getSize();
    setSize(size);
    if (mParent)
        mParent->childSizeChanged(this, size, oldSize);
}
