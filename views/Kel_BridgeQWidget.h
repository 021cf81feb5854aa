#ifndef KEL_BRIDGEQWIDGET_H
#define KEL_BRIDGEQWIDGET_H

#include "kelcore_export.h"

#include "Kel_BridgeBase.h"
#include "Kel_ViewContainerInterface.h"
#include "Kel_WidgetConnectInterface.h"

#include <QWidget>

// A plain widget that hosts one view (usually a container view) at its
// top-left corner: it paints the view over its background, hands it the
// widget's mouse, key, drag and tool-tip events in view coordinates, and
// takes the view's size (in a layout, through its size hint).
class KELCORE_EXPORT Kel_BridgeQWidget : public QWidget,
                          public Kel_ViewContainerInterface,
                          public Kel_BridgeBase,
                          public Kel_WidgetConnectInterface
{
    Q_OBJECT

public:
    explicit Kel_BridgeQWidget(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_BridgeQWidget() override;

    // Hosts view at (0, 0) and resizes the widget to it.
    void setChild(Kel_ViewInterface* view) override;
    // Connects the hosted view.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The hosted view's size.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Kel_ViewContainerInterface
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void childInsertedRow(Kel_ViewInterface* child, int y, int height) override;
    void childDeletedRow(Kel_ViewInterface* child, int y, int height) override;
    void childInsertedColumn(Kel_ViewInterface* child) override;
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override;
    QWidget* getBridgeWidget() override { return this; }
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) override;
    // Removing the hosted view deletes it and leaves the bridge empty.
    void removeView(Kel_ViewInterface* view) override;
    bool releaseView(Kel_ViewInterface* view) override;

protected:
    // Shows the hosted view's tool tip for the point under the mouse.
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
    void showEvent(QShowEvent* event) override;

private:
    void rowsChanged(int y);
    // A bridge with views that take the focus is a tab stop.
    void updateFocusPolicy();
};

#endif
