#ifndef KEL_VIEWINTERFACE_H
#define KEL_VIEWINTERFACE_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QDomDocument>
#include <QDomElement>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <boost/shared_ptr.hpp>

class Kel_ViewContainerInterface;
class QDragEnterEvent;
class QDragLeaveEvent;
class QDragMoveEvent;
class QDropEvent;
class QEvent;
class QKeyEvent;
class QMouseEvent;
class QPainter;

// A light-weight view: a painted area that is not a widget, hosted by a
// bridge widget and grouped by container views. Points given to a view are
// in its own coordinates (origin at its top-left corner).
class KELCORE_EXPORT Kel_ViewInterface
{
public:
    virtual ~Kel_ViewInterface();

    virtual void setParent(Kel_ViewContainerInterface* parent) = 0;
    virtual Kel_ViewContainerInterface* getParent() const = 0;
    virtual void setName(QString name) = 0;
    virtual QString getName() const = 0;
    // Position of the view's top-left corner in its parent.
    virtual void setOrigin(const QPoint& origin) = 0;
    virtual QPoint getOrigin() = 0;
    // Paints the view; rect is the area to repaint, in view coordinates.
    virtual void drawContents(QPainter* painter, const QRect& rect) = 0;
    virtual int getWidth() const = 0;
    virtual int getHeight() const = 0;
    // The view's own rectangle at (0,0), and the same placed at its origin.
    virtual QRect getLocalDrawingRect() = 0;
    virtual QRect getRectInParent() = 0;
    virtual void setRectInParent(const QRect& rect) = 0;
    virtual QSize getSize() = 0;
    virtual void setSize(const QSize& size) = 0;
    virtual QSize getMinSize() = 0;
    virtual void setMinSize(const QSize& size) = 0;
    virtual long getZOrder() const = 0;
    virtual void setZOrder(long zOrder) = 0;
    virtual void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) = 0;
    // A new copy of the view, owned by the caller.
    virtual Kel_ViewInterface* clone() = 0;
    virtual bool isFixedAspect() = 0;
    virtual void setIsFixedAspect(bool fixed) = 0;
    virtual void setAspect(float aspect) = 0;
    virtual float getAspect() = 0;
    virtual void setReadOnly(bool readOnly) = 0;
    virtual bool getReadOnly() = 0;
    virtual bool acceptsFocus() const = 0;
    virtual void setAcceptsFocus(bool accepts) = 0;
    virtual void mousePressEvent(QMouseEvent* event, const QPoint& local) = 0;
    virtual void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) = 0;
    virtual void mouseMoveEvent(QMouseEvent* event, const QPoint& local) = 0;
    virtual void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) = 0;
    virtual void dragEnterEvent(QDragEnterEvent* event, const QPoint& local) = 0;
    virtual void dragMoveEvent(QDragMoveEvent* event, const QPoint& local) = 0;
    virtual void dragLeaveEvent(QDragLeaveEvent* event, const QPoint& local) = 0;
    virtual void dropEvent(QDropEvent* event, const QPoint& local) = 0;
    virtual bool canDrag(const QPoint& local) = 0;
    virtual void startDrag(const QPoint& local) = 0;
    // The tool tip at local: its text and the rectangle in which it holds.
    virtual bool getToolTip(const QPoint& local, QRect* tipRect, QString* tipText) = 0;
    virtual QDomElement getDragData(QPoint local, QDomDocument& document, QPixmap& pixmap) = 0;
    virtual void keyPressEvent(QKeyEvent* event) = 0;
    // Offered every event of a scroll-area bridge's viewport first; true
    // when the view handled it.
    virtual bool event(QEvent* event) = 0;
    // The centre of the view named name, in view coordinates.
    virtual bool findItem(const QString& name, QPoint* where) = 0;
    // The dotted name of the innermost view under local.
    virtual QString findUiName(const QPoint& local) = 0;

    // Called with every view as it is destroyed (after its derived parts
    // are gone: use the pointer as a key only), so that a registry keyed by
    // views, such as the accessibility interfaces, can forget it. One
    // observer for the process; null removes it.
    typedef void (*DestructionObserver)(Kel_ViewInterface* view);
    static void setDestructionObserver(DestructionObserver observer);
};

#endif
