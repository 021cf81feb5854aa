#ifndef KEL_CONTAINERVIEWBASE_H
#define KEL_CONTAINERVIEWBASE_H

#include "kelcore_export.h"

#include "Kel_ViewBase.h"
#include "Kel_ViewContainerInterface.h"

#include <QHash>
#include <map>

// A view made of sub-views: it owns them, paints them by z-order, routes
// mouse, key and drag input to them, passes their requests up to its own
// parent translated into its coordinates, and answers dotted-name lookups
// through them. Layouts (the stack view) derive from it.
class KELCORE_EXPORT Kel_ContainerViewBase : public Kel_ViewBase, public Kel_ViewContainerInterface
{
public:
    // Z-order to sub-view; equal z-orders keep the order in which they were added.
    typedef std::multimap<long, Kel_ViewInterface*> ViewMap;

    Kel_ContainerViewBase();
    // With copySubViews, every sub-view is cloned into the copy (same paint
    // order); without, the copy starts empty so that a derived class can
    // rebuild its own arrangement. Mouse, focus and drag targets are not copied.
    Kel_ContainerViewBase(const Kel_ContainerViewBase& other, bool copySubViews = true);
    // Sub-views are owned; a member-wise assignment would share them.
    Kel_ContainerViewBase& operator=(const Kel_ContainerViewBase&) = delete;
    ~Kel_ContainerViewBase() override;

    // Takes ownership of view, filed under its current z-order (changing the
    // z-order later does not refile it), and becomes its parent. A view held
    // by another container is taken out of it first, so only one owns it.
    // Null, a view already here, and this container or one that holds it are
    // ignored.
    virtual void AddSubView(Kel_ViewInterface* view);
    // Deletes every sub-view.
    virtual void removeAllSubViews();
    // The first direct sub-view in z-order with that name, or null.
    Kel_ViewInterface* getViewByName(const QString& name) const;
    // Gives view the mouse until the next release.
    void setSubViewForMouseEvents(Kel_ViewInterface* view) { mMouseView = view; }
    Kel_ViewInterface* getMouseView() const { return mMouseView; }
    Kel_ViewInterface* getFocusView() const { return mFocusView; }
    // Makes view (a sub-view, or null for none) the one that receives key
    // presses, as a click on a view that accepts focus does; keyboard focus
    // moving between views goes through it. Anything else is ignored.
    void setFocusView(Kel_ViewInterface* view);
    const ViewMap& getSubViews() const { return mSubViews; }
    bool isSubView(const Kel_ViewInterface* view) const { return view && mEntries.contains(view); }

    // Kel_ViewInterface
    // Paints the sub-views that meet rect, lowest z-order first; nothing of its own.
    void drawContents(QPainter* painter, const QRect& rect) override;
    // Every sub-view in z-order, then the container's own tool tip.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseMoveEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event, const QPoint& local) override;
    void dragMoveEvent(QDragMoveEvent* event, const QPoint& local) override;
    void dragLeaveEvent(QDragLeaveEvent* event, const QPoint& local) override;
    void dropEvent(QDropEvent* event, const QPoint& local) override;
    // True when a sub-view under the point can drag from there.
    bool canDrag(const QPoint& local) override;
    // Starts the drag of the topmost sub-view under the point that can drag.
    void startDrag(const QPoint& local) override;
    // The first non-null drag data of the sub-views under the point, top down.
    QDomElement getDragData(QPoint local, QDomDocument& document, QPixmap& pixmap) override;
    // The tool tip of the topmost sub-view under the point that has one, its
    // rectangle in container coordinates. oTipRect is required.
    bool getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString) override;
    // path names this container first ("Panel.Row.Button"); where receives
    // the centre of the named view in container coordinates.
    bool findItem(const QString& path, QPoint* where) override;
    // The dotted path from this container to the innermost view under the point.
    QString findUiName(const QPoint& local) override;

    // Kel_ViewContainerInterface
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void childInsertedRow(Kel_ViewInterface* child, int y, int height) override;
    void childDeletedRow(Kel_ViewInterface* child, int y, int height) override;
    void childInsertedColumn(Kel_ViewInterface* child) override;
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override;
    QWidget* getBridgeWidget() override;
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) override;
    // Repaints the view's area at once and deletes it; a view that is not a
    // sub-view, or not filed under its current z-order, is left alone.
    void removeView(Kel_ViewInterface* view) override;
    // Takes a sub-view out (whatever its z-order now) and repaints its area,
    // without deleting it; the view keeps no parent.
    bool releaseView(Kel_ViewInterface* view) override;

protected:
    // New maps (z-order to view) of the sub-views whose rectangle in this
    // container contains the point (edges included) or meets the rectangle.
    ViewMap subViewsContainingPoint(const QPoint& point) const;
    ViewMap subViewsIntersectingRect(const QRect& rect) const;
    // Paints one sub-view clipped to its part of rect (container coordinates).
    void paintSubView(Kel_ViewInterface* view, QPainter* painter, const QRect& rect);
    // Whether removeView would take view: it is filed under its current z-order.
    bool isFiledUnderItsZOrder(const Kel_ViewInterface* view) const;

private:
    ViewMap::iterator findEntry(const Kel_ViewInterface* view);
    // Files view under key in both the map and the index.
    void file(long key, Kel_ViewInterface* view);
    // Takes the entry out of the map and the index and forgets view as
    // mouse, focus or drag target.
    void unfile(ViewMap::iterator entry);
    bool isSelfOrAncestor(const Kel_ViewInterface* view) const;
    // Offers a mouse event to the sub-views under the point, top down, until
    // one accepts; answers that view or null (the event is then ignored).
    Kel_ViewInterface* deliverTopDown(QMouseEvent* event, const QPoint& local,
                                      void (Kel_ViewInterface::*handler)(QMouseEvent*, const QPoint&));
    // Sends a drag leave (event, or one made here when null) to the current
    // drag target, if any, and forgets it.
    void leaveDragView(QDragLeaveEvent* event, const QPoint& local);

    ViewMap mSubViews;
    // Where each sub-view is filed in mSubViews (map iterators stay valid
    // until their entry is erased), so membership costs no search.
    QHash<const Kel_ViewInterface*, ViewMap::iterator> mEntries;
    Kel_ViewInterface* mMouseView;
    Kel_ViewInterface* mFocusView;
    // The sub-view that accepted the drag now over this container.
    Kel_ViewInterface* mDragViewP;
};

#endif
