#ifndef KEL_BRIDGEQSCROLLAREA_H
#define KEL_BRIDGEQSCROLLAREA_H

#include "kelcore_export.h"

#include "Kel_BridgeBase.h"
#include "Kel_ViewContainerInterface.h"
#include "Kel_WidgetConnectInterface.h"

#include <QScrollArea>
#include <QTimer>

// A scroll area that hosts one view (usually a list or a container view):
// its content widget is as large as the view and never smaller than the
// visible area, paints the view and hands it the content's events. It
// scrolls rectangles into sight and, when drag auto-scroll is on, scrolls by
// itself, faster and faster, while something is dragged near its edges.
class KELCORE_EXPORT Kel_BridgeQScrollArea : public QScrollArea,
                              public Kel_ViewContainerInterface,
                              public Kel_BridgeBase,
                              public Kel_WidgetConnectInterface
{
    Q_OBJECT

public:
    // The scrolled content (object name "ViewportWidget"): paints the hosted
    // view and forwards its events to it in content coordinates.
    class ViewportWidget : public QWidget
    {
    public:
        explicit ViewportWidget(Kel_BridgeQScrollArea* area);

        // Hands a drag event (enter, move, leave or drop) to the hosted view
        // at local (content coordinates).
        void forwardDragEvent(QEvent* event, const QPoint& local);

    protected:
        // Offers every event to the hosted view first; shows its tool tips.
        bool event(QEvent* event) override;
        void paintEvent(QPaintEvent* event) override;
        void resizeEvent(QResizeEvent* event) override;
        void mousePressEvent(QMouseEvent* event) override;
        void mouseReleaseEvent(QMouseEvent* event) override;
        void mouseMoveEvent(QMouseEvent* event) override;
        void mouseDoubleClickEvent(QMouseEvent* event) override;
        void keyPressEvent(QKeyEvent* event) override;
        void dragEnterEvent(QDragEnterEvent* event) override;
        void dragMoveEvent(QDragMoveEvent* event) override;
        void dragLeaveEvent(QDragLeaveEvent* event) override;
        void dropEvent(QDropEvent* event) override;
        // Keyboard focus: Tab moves among the views that accept focus first.
        void focusInEvent(QFocusEvent* event) override;
        void focusOutEvent(QFocusEvent* event) override;
        bool focusNextPrevChild(bool next) override;

    private:
        Kel_BridgeQScrollArea* mAreaP;
    };

    explicit Kel_BridgeQScrollArea(QWidget* parent = nullptr);
    ~Kel_BridgeQScrollArea() override;

    // Hosts view at (0, 0) and fits the content to it.
    void setChild(Kel_ViewInterface* view) override;
    // Connects the hosted view.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    ViewportWidget* viewportWidget() const { return mViewportWidgetP; }
    // Size of the visible part of the content.
    int visibleWidth() const;
    int visibleHeight() const;
    // Gives the view its minimum size expanded to the visible area, so that
    // it never shows smaller than the area.
    void adjustChildToPortSize();
    // Scrolls as little as needed to show rect (content coordinates). An
    // axis on which rect is empty is left alone. Scrolling down centres the
    // rectangle; scrolling up lines it up with the top.
    void ensureRectVisible(QRect rect);
    // Scrolling while a drag is held near the edges; off by default.
    void setDragAutoScroll(bool on);
    bool dragAutoScroll() const { return mDragAutoScroll; }
    // Whether a drag is scrolling the area now.
    bool isDragAutoScrolling() const { return mAutoScrollTimer.isActive(); }
    // Paints the hosted view's rect (content coordinates).
    void drawContents(QPainter* painter, QRect rect);

    // Kel_ViewContainerInterface
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void childInsertedRow(Kel_ViewInterface* child, int y, int height) override;
    void childDeletedRow(Kel_ViewInterface* child, int y, int height) override;
    void childInsertedColumn(Kel_ViewInterface* child) override;
    // Repaints rect (content coordinates) when any of it is visible.
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override;
    QWidget* getBridgeWidget() override { return this; }
    // Scrolls (x, y) with the editor's size into sight and puts the editor there.
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) override;
    // Removing the hosted view deletes it and leaves the bridge empty.
    void removeView(Kel_ViewInterface* view) override;
    bool releaseView(Kel_ViewInterface* view) override;

protected:
    // The visible rectangle in content coordinates.
    QRect viewableArea() const;
    // Where the cursor is, in viewport coordinates; auto-scroll steers by it.
    virtual QPoint cursorPosInViewport() const;
    QWidget* viewHostWidget() const override { return mViewportWidgetP; }
    // Scrolls the view that got the keyboard focus into sight.
    void showFocusedRect(const QRect& rect) override;

    // Watches the viewport: drag moves near its edges start auto-scroll.
    bool eventFilter(QObject* watched, QEvent* event) override;
    // Lets drags reach the viewport whenever the bridge accepts drops.
    bool event(QEvent* event) override;
    // Hands drag events arriving on the viewport to the view.
    bool viewportEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

protected slots:
    // One auto-scroll tick.
    void doDragAutoScroll();

private:
    void startDragAutoScroll();
    // Content size = the view's size expanded to the visible area.
    void fitContentToView();
    void releaseContentSize();
    void rowsChanged(int y);

    bool mDragAutoScroll;
    QTimer mAutoScrollTimer;
    int mAutoScrollInterval; // milliseconds
    int mAutoScrollCountdown;
    ViewportWidget* mViewportWidgetP;
    bool mFitting;
};

#endif
