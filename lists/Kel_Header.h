#ifndef KEL_HEADER_H
#define KEL_HEADER_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_IPointOfInterestFinder.h"
#include "Kel_PopupMenu.h"
#include "Kel_TransparentOverlay.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Action.h"
#include "Mvt_Array.h"
#include "Mvt_ArrayContainer.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>
#include <functional>

class QAction;

// The labels of the visible columns of a column data model, drawn above a
// columned list. The user resizes a column by dragging the divider at its
// right edge, reorders columns by dragging a label, sorts by clicking one
// and hides, shows or adds columns from the context menu. Every gesture is a
// message to the column data model named by the column base name; the header
// and the lists on the same model follow the model.
//
// The keyboard does the same: the header takes the focus by Tab (a click
// leaves it where it was). Left and Right choose a column (framed), Space
// and Return sort by it, Ctrl+Left and Ctrl+Right move it one place,
// Ctrl+Shift+Left and Ctrl+Shift+Right narrow and widen it by 10 pixels
// (down to its minimum width), and the Menu key or Shift+F10 opens the
// context menu under it.
class KELCORE_EXPORT Kel_Header : public QWidget, public Kel_WidgetConnectInterface, public Kel_IPointOfInterestFinder
{
    Q_OBJECT
    Q_PROPERTY(QByteArray columnBaseConnection READ getColumnBaseConnectionSpec WRITE setColumnBaseConnectionSpec)
    Q_PROPERTY(QByteArray columnSelectionConnection READ getColumnSelectionConnectionSpec WRITE setColumnSelectionConnectionSpec)

public:
    // Makes the overlay that shows a dragged column; the header gives it its
    // picture, places, shows and deletes it.
    typedef std::function<Kel_TransparentOverlay*(QWidget* header)> CreateOverlayCallback;

    // Font key of the labels.
    static const char* const kFontKey;

    explicit Kel_Header(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Header() override;

    // The base name B of the column data model; takes effect at the next makeConnections.
    void setColumnBaseConnectionName(const QString& base);
    QString getColumnBaseConnectionName() const { return mBaseName; }
    void setColumnBaseConnectionSpec(const QByteArray& base) { setColumnBaseConnectionName(QString::fromUtf8(base)); }
    QByteArray getColumnBaseConnectionSpec() const { return mBaseName.toUtf8(); }
    // The action (void()) that lets the user choose a working set of columns.
    void setColumnSelectionConnectionSpec(const QByteArray& spec);
    QByteArray getColumnSelectionConnectionSpec() const { return mColumnSelection.spec().toUtf8(); }

    // Pixels before the first column (the list's own left inset).
    void setLeftMargin(long margin);
    long leftMargin() const { return mLeftMargin; }
    // The list's horizontal scroll position; the labels move left by it.
    // repaintNow paints at once instead of scheduling a paint.
    void setOffset(int offset, bool repaintNow);
    int offset() const { return mOffset; }

    void setCreateColumnDragOverlayCB(const CreateOverlayCallback& callback) { mCreateOverlay = callback; }

    // Extra context-menu items after the fixed ones; choosing one calls
    // handleExtraItemsAction(identifier, column). Identifiers starting with
    // "action0:" come first, then those starting with "action1:", then the
    // rest, each group after a separator. With a submenu title, items of the
    // same title share one submenu.
    void addContextMenuItem(const QString& text, const QString& identifier);
    void addContextMenuItem(const QString& text, const QString& identifier, const QString& submenu);
    void clearContextMenuItems();

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // The divider (visible position whose right edge it is) less than 3
    // pixels from x, -1 for none.
    int dividerIndexForPos(int x);
    // The visible position under the point's x (cell and the separator after
    // it), -1 outside every column.
    int columnIndexForPos(const QPoint& point);
    // The x of the middle of the cell at a visible position.
    int centerOfColumn(int position);
    // The x of each divider, in position order.
    QVector<int> dividerPositions();

    // What the keyboard and screen readers work with, by visible position.
    int visibleColumnCount() const { return int(visibleCount()); }
    // The column index at a visible position, -1 when there is none.
    long columnAt(int position) const;
    // The label shown for the column at a visible position (its identifier
    // when it has no label); empty out of range.
    QString columnLabel(int position) const;
    // The identifier of a column, by column index; empty when there is none.
    QString columnIdentifier(long column) const;
    // Whether the rows are sorted by the column at a visible position, and
    // in which direction.
    bool isSortedBy(int position, bool* ascending = nullptr) const;
    // The label's rectangle (header coordinates); null out of range.
    QRect labelRect(int position);
    // Sorts by the column at a visible position, as a click on its label does.
    void sortByPosition(int position);
    // Opens the context menu under the label of a visible position.
    void showContextMenu(int position);
    // The column the keyboard chose (framed while the header has the focus),
    // -1 while there are no columns.
    int keyboardColumn() const;
    // Chooses the column at a visible position (clamped) for the keyboard.
    void setKeyboardColumn(int position);

    // The open context menu, null while none is shown.
    Kel_PopupMenu* contextMenu() const { return mMenuP; }
    // The overlay of the column being dragged, null when none.
    Kel_TransparentOverlay* columnDragOverlay() const { return mDrag.overlay; }
    bool isDraggingColumn() const { return mDrag.active; }
    bool isDraggingDivider() const { return mDivider.active; }

    // The header (its object name) or the label of a visible column named
    // by its identifier or its label, for guided help.
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // Emitted by handleExtraItemsAction.
    void contextMenuItemChosen(const QString& identifier, int column);

protected:
    // An extra context-menu item was chosen while the menu was open over
    // column (its column index, -1 when the click was on no column).
    virtual void handleExtraItemsAction(const QString& identifier, int column);
    // Whether the user may add columns: the setting
    // "Privileges.CreateProperty" of the settings file "Settings.xml" in the
    // resource folder (start root "Windows"); only the text "false" denies.
    virtual bool hasCreatePropertyPrivs() const;
    // Fills a new menu for a right click at the visible position (-1: none).
    virtual void fillContextMenu(Kel_PopupMenu* menu, int position);

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> LongProperty;
    typedef Kel_BoundProperty<Mvt_ArrayContainer::Listener> ContainerProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<long>>::Listener> LongArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> StringArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<bool>>::Listener> BoolArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_Action<void()>>::Listener> ActionArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_Action<void(long)>>::Listener> PositionActionArrayProperty;

    struct ExtraItem
    {
        QString text;
        QString identifier;
        QString submenu;
    };

    void columnsChanged();
    void widthsChanged();
    void invalidateDividers();
    void validateDividerList();
    QFont labelFont() const;

    long visibleCount() const;
    // The width a column takes (its width, at least its minimum).
    long shownWidth(long column) const;
    // Where the span of a visible position begins (before its 2-pixel inset).
    int columnLeft(int position);
    QString labelText(long column) const;

    void dragDividerTo(int x, int y);
    void startColumnDrag(int position, const QPoint& pressAt);
    void trackColumnDrag(const QPoint& at);
    void stopColumnDrag();
    bool isInCancelBand(const QPoint& at) const;
    // Asks the model to move the dragged column; true when it did.
    bool moveDraggedColumnTo(int target);
    QPixmap columnPicture(int position);
    void placeOverlay(int left);
    void updateHoverCursor(int x);

    void openContextMenu(const QPoint& globalAt, int position);
    // Keys: move the chosen column one place, change its width by delta.
    void moveKeyboardColumn(int step);
    void resizeKeyboardColumn(long delta);
    // Tells a reader which column the keyboard chose.
    void reportKeyboardFocus();
    void contextMenuItemTriggered(QAction* action);

    QString mBaseName;
    long mLeftMargin = 0;
    int mOffset = 0;
    CreateOverlayCallback mCreateOverlay;
    QList<ExtraItem> mExtraItems;

    LongProperty mColumnBeingDragged{this};
    ContainerProperty mVisibleContainer{this};
    LongArrayProperty mVisibleColumns{this};
    ContainerProperty mHiddenContainer{this};
    LongArrayProperty mHiddenColumns{this};
    ContainerProperty mColumns{this};
    StringArrayProperty mIdentifier{this};
    LongArrayProperty mWidth{this};
    LongArrayProperty mMinWidth{this};
    StringArrayProperty mLabel{this};
    BoolArrayProperty mCanHide{this};
    BoolArrayProperty mVisibleFlag{this};
    ActionArrayProperty mHideColumn{this};
    BoolArrayProperty mIsSorted{this};
    BoolArrayProperty mIsSortedAscending{this};
    Kel_BoundProperty<Mvt_Action<void(long)>::Listener> mAddNewColumn{this};
    PositionActionArrayProperty mShowColumn{this};
    ActionArrayProperty mSortByColumn{this};
    Kel_BoundProperty<Mvt_Action<void()>::Listener> mColumnSelection{this};

    // Divider x positions in position order, valid until the columns,
    // widths, margin or offset change.
    QVector<int> mDividers;
    bool mDividersValid = false;

    struct DividerDrag
    {
        bool active = false;
        int index = -1;
        int pressX = 0;
        long startWidth = 0;
    } mDivider;

    bool mLabelPressed = false;
    QPoint mLabelPressAt;

    struct ColumnDrag
    {
        bool active = false;
        int grabOffset = 0;
        int width = 0;
        long column = -1;
        int startPosition = -1;
        int position = -1;
        bool cancelled = false;
        QPointer<Kel_TransparentOverlay> overlay; // owned; deleted later when the drag stops
    } mDrag;

    // The open context menu (owned, deleted later when it closes) and the
    // visible position it was opened over.
    QPointer<Kel_PopupMenu> mMenuP;
    int mMenuPosition = -1;

    // The visible position the keyboard chose.
    int mKeyPosition = 0;
};

#endif
