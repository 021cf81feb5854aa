#ifndef KEL_VIEWBASE_H
#define KEL_VIEWBASE_H

#include "kelcore_export.h"

#include "Kel_ViewInterface.h"
#include "Mvt_SimpleValue.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <cstdint>
#include <functional>

// The common part of every light-weight view: geometry, name, flags, a tool
// tip bound to a string model, and event handlers that ignore their events
// so that what a derived view does not handle reaches the hosting widget.
// Derived views paint (drawContents) and copy themselves (clone).
class KELCORE_EXPORT Kel_ViewBase : public Kel_ViewInterface
{
public:
    // What dragging a view's contents does; the lists decide per drag.
    enum EDragType : std::int32_t { kDragNone = 0, kDragMove = 1, kDragCopy = 2, kDragLink = 3 };

    Kel_ViewBase();
    // Copies every setting except the parent; the copy gets its own,
    // unconnected tool-tip listener (connect it with makeConnections).
    Kel_ViewBase(const Kel_ViewBase& other);
    // Member-wise: the parent and the tool-tip listener pointer are shared
    // with other afterwards. Views are copied by construction (clone); code
    // that assigns views must make sure only one of them deletes the listener.
    Kel_ViewBase& operator=(const Kel_ViewBase& other) = default;
    ~Kel_ViewBase() override;

    void setParent(Kel_ViewContainerInterface* parent) override { mParent = parent; }
    Kel_ViewContainerInterface* getParent() const override { return mParent; }
    void setName(QString name) override { mName = name; }
    QString getName() const override { return mName; }
    void setOrigin(const QPoint& origin) override { mOrigin = origin; }
    QPoint getOrigin() override { return mOrigin; }
    int getWidth() const override;
    int getHeight() const override;
    QRect getLocalDrawingRect() override;
    QRect getRectInParent() override;
    // setOrigin, then setSize, so that derived views see both.
    void setRectInParent(const QRect& rect) override;
    QSize getSize() override { return mSize; }
    void setSize(const QSize& size) override { mSize = size; }
    QSize getMinSize() override { return mMinSize; }
    void setMinSize(const QSize& size) override { mMinSize = size; }
    long getZOrder() const override { return mZOrder; }
    void setZOrder(long zOrder) override { mZOrder = zOrder; }
    // Connects the tool-tip listener when a tool-tip model is named.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    bool isFixedAspect() override { return mIsFixedAspect; }
    void setIsFixedAspect(bool fixed) override { mIsFixedAspect = fixed; }
    // Stores the aspect ratio and makes it fixed.
    void setAspect(float aspect) override;
    float getAspect() override { return mAspect; }
    void setReadOnly(bool readOnly) override { mReadOnly = readOnly; }
    bool getReadOnly() override { return mReadOnly; }
    bool acceptsFocus() const override { return mAcceptsFocus; }
    void setAcceptsFocus(bool accepts) override { mAcceptsFocus = accepts; }
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseMoveEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) override;
    void dragEnterEvent(QDragEnterEvent* event, const QPoint& local) override;
    void dragMoveEvent(QDragMoveEvent* event, const QPoint& local) override;
    void dragLeaveEvent(QDragLeaveEvent* event, const QPoint& local) override;
    void dropEvent(QDropEvent* event, const QPoint& local) override;
    bool canDrag(const QPoint& local) override;
    void startDrag(const QPoint& local) override;
    // The tool-tip model's text for the whole view; false when the model is
    // not connected or its text is empty. Both pointers are required.
    bool getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString) override;
    QDomElement getDragData(QPoint local, QDomDocument& document, QPixmap& pixmap) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    // True, with the centre of the view, when name is this view's name.
    bool findItem(const QString& name, QPoint* where) override;
    QString findUiName(const QPoint& local) override;

    // For tools that must know which views lie under a point (the model
    // inspector): while a probe is set, findUiName of the library's views
    // hands it each view that answers, at the moment it answers, so that a
    // list shows the row under the point then. Null removes the probe.
    typedef std::function<void(Kel_ViewInterface* view)> UiNameProbe;
    static void setUiNameProbe(const UiNameProbe& probe);
    // What a findUiName override calls for its own view.
    static void reportToUiNameProbe(Kel_ViewInterface* view);

    void setCanDrag(bool canDrag) { mCanDrag = canDrag; }
    EDragType getDragType() const { return mDragType; }
    void setDragType(EDragType type) { mDragType = type; }
    bool acceptsDrops() const { return mAcceptsDrops; }
    // Lets the hosting bridge widget accept drops (it keeps accepting them
    // once any view asked) and stores whether this view takes them. The view
    // must have a parent.
    void setAcceptsDrops(bool accepts);
    // Connection specification of the string model that holds the tool tip;
    // takes effect at the next makeConnections.
    void setToolTipConnectionID(const QString& connectionID) { mToolTipConnectionID = connectionID; }
    QString getToolTipConnectionID() const { return mToolTipConnectionID; }

    // Asks the parent to repaint the whole view, with the next paint or at once.
    void sendAllBitsChanged();
    void sendAllBitsChangedImmediate();
    // setSize, then tells the parent the new and the old size.
    void setSizeAndNotifyParent(const QSize& size);

protected:
    bool mAcceptsFocus;
    bool mCanDrag;
    bool mAcceptsDrops;
    EDragType mDragType;
    Kel_ViewContainerInterface* mParent; // not owned
    QPoint mOrigin;
    QString mName;
    bool mIsFixedAspect;
    float mAspect;
    bool mReadOnly;
    QSize mSize;
    QSize mMinSize;
    long mZOrder;
    QString mToolTipConnectionID;
    Mvt_SimpleValue<QString>::Listener* mToolTipListener; // owned
};

#endif
