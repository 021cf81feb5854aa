#ifndef KEL_LISTVIEW_H
#define KEL_LISTVIEW_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ViewBase.h"
#include "Kel_ViewContainerInterface.h"
#include "Mve_ComputedContainer.h"
#include "Mve_SimpleValue.h"
#include "Mvt_ArrayContainer.h"
#include "SortedValueList.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPair>
#include <QPoint>
#include <QSize>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

class Mv_MessageInterface;
class Uip_ParseNode;
class QMimeData;

// A light-weight view that shows the elements of an array model as a list of
// equal-height rows. It owns one row view and re-uses it for every row: it
// moves its published current-row index to a row and lets the row view,
// whose connections address the element through "$Row", paint or handle
// that row. The list adds the selection (published as models), keyboard
// navigation, ledger shading and row-based drag and drop.
class KELCORE_EXPORT Kel_ListView : public Kel_ViewContainerInterface, public Kel_ViewBase
{
public:
    enum SelectionMode : std::int32_t { Single = 0, Multi = 1, Extended = 2, None = 3 };
    typedef SortedValueList<long> SelectionList;
    typedef QList<QPair<Qt::KeyboardModifiers, Qt::DropAction>> DragActionMap;

    // Unbound, with a blank 100 x 20 row view, selection mode None and the
    // current-row index already published.
    Kel_ListView();
    // Copies the settings and clones the row view; the copy is unconnected
    // and publishes its own current-row index.
    Kel_ListView(const Kel_ListView& other);
    Kel_ListView& operator=(const Kel_ListView& other);

    // Kel_ViewContainerInterface: the row view's requests.
    // The row view changed size: the list re-applies its own size.
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void childInsertedRow(Kel_ViewInterface* child, int y, int height) override;
    void childDeletedRow(Kel_ViewInterface* child, int y, int height) override;
    void childInsertedColumn(Kel_ViewInterface* child) override;
    // Passes rect on to the parent, moved to the row the row view shows now.
    void childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate) override;
    QWidget* getBridgeWidget() override;
    void overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y) override;
    ~Kel_ListView() override;

    // Remembers the bridge's visible size and fits the row view's width to it.
    virtual void adjustToPortSize(const QSize& size);
    virtual SelectionMode getSelectionMode() const { return mSelectionMode; }
    virtual void setSelectionMode(SelectionMode mode) { mSelectionMode = mode; }
    // The one entry of every selection change: row (-1 for none) with the
    // modifiers of the click or key, or with all the select-all toggle.
    virtual bool SetSelected(long row, bool all, Qt::KeyboardModifiers modifiers);
    // The number of selected rows; -1 when there is no selection model.
    virtual int GetRowSelectionListSize() const;
    // The lowest selected row, or -1.
    virtual long GetFirstRowSelection() const;
    // The next selected row after row, or -1.
    virtual long GetNextRowSelection(long row) const;
    virtual bool IsRowSelected(long row) const;
    // The array's size as last learnt (0 while unconnected).
    virtual int GetNumItems() const { return mNumItems; }
    // Deletes the old row view and makes the list the new one's parent.
    virtual void SetChild(Kel_ViewInterface* view);
    // Moves the selection for Home, End, Up or Down.
    virtual void changeSelection(int key);
    virtual void enableLedgerShading(bool enable) { mLedgerShadingEnabled = enable; }
    virtual bool isLedgerShadingEnabled() const { return mLedgerShadingEnabled; }
    virtual QColor GetLedgerShadeHighlightColor() const { return mLedgerShadeHighlightColor; }
    virtual void SetLedgerShadeHighlightColor(const QColor& color) { mLedgerShadeHighlightColor = color; }
    virtual QColor GetLedgerShadeBackgroundColor() const { return mLedgerShadeBackgroundColor; }
    virtual void SetLedgerShadeBackgroundColor(const QColor& color) { mLedgerShadeBackgroundColor = color; }
    virtual QColor GetSelectionBackgroundColor() const { return mSelectionBackgroundColor; }
    virtual void SetSelectionBackgroundColor(const QColor& color) { mSelectionBackgroundColor = color; }
    virtual QColor GetBackgroundColor() const { return mBackgroundColor; }
    virtual void SetBackgroundColor(const QColor& color) { mBackgroundColor = color; }
    // The font rows are painted in; value views of the row view without a
    // font of their own draw their text in it too.
    virtual QFont GetFont() const { return mFont; }
    virtual void SetFont(const QFont& font) { mFont = font; }
    // The row height, which is the row view's height.
    virtual int getCellHeight() const;
    virtual void setCellHeight(int height);
    // What a drag started with event's modifiers does (see setDragActionMap).
    virtual Qt::DropAction getDragAction(const QMouseEvent* event) const;

protected:
    // The four selection operations, applied to a copy of the selection.
    virtual void SingleSelection(long row, SelectionList& selection);
    virtual void MultiSelection(long row, SelectionList& selection);
    virtual void ExtendedSelection(long row, SelectionList& selection);
    // Selects every row, or clears the selection when all were selected.
    virtual void TotalSelection(SelectionList& selection);

public:
    // The ledger colour of an unselected row: odd rows are highlighted.
    virtual QColor GetLedgerShadeIndexColor(long row) const;

    // Kel_ViewBase
    void drawContents(QPainter* painter, const QRect& rect) override;
    int getWidth() const override;
    // The rows' height, never less than the visible area's.
    int getHeight() const override;
    QSize getSize() override;
    // Stores the minimum size expanded to size, telling the parent of a change.
    void setSize(const QSize& size) override;
    // Row view width by the height of all rows.
    QSize getMinSize() override;
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    Kel_ViewInterface* clone() override;
    bool findItem(const QString& name, QPoint* where) override;
    QString findUiName(const QPoint& local) override;
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseMoveEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) override;
    void dragMoveEvent(QDragMoveEvent* event, const QPoint& local) override;
    void dropEvent(QDropEvent* event, const QPoint& local) override;
    bool getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString) override;
    void keyPressEvent(QKeyEvent* event) override;

    // Kel_ViewContainerInterface: removing the row view leaves the list without one.
    void removeView(Kel_ViewInterface* view) override;
    bool releaseView(Kel_ViewInterface* view) override;

    // Replaces the row view (owned from now on) and repaints the list.
    void SetRowView(Kel_ViewInterface* view);
    Kel_ViewInterface* getRowView() const { return mRowViewP; }

    // The array model's connection specification; takes effect at the next makeConnections.
    void SetListConnectionName(const QString& name) { mListConnectionName = name; }
    QString GetListConnectionName() const { return mListConnectionName; }
    // The name from which the selection's names are derived (":SelectionList",
    // ":LastSelection", ".isSelected" are appended); empty, the default,
    // means the list connection name. A second list on the same array needs
    // one of its own. Takes effect at the next makeConnections.
    void SetSelectionConnectionName(const QString& name) { mSelectionBaseName = name; }
    QString GetSelectionConnectionName() const { return mSelectionBaseName; }
    QString getSelectionListConnectionName() const { return mSelectionListConnectionName; }
    QString getLastSelectionConnectionName() const { return mLastSelectionConnectionName; }
    QString getIsSelectedConnectionName() const { return mIsSelectedName; }
    // The name of the current-row index model, unique to this list.
    QString getCurrentRowConnectionName() const { return mCurrentRowConnectionName; }

    // Action scripts run on Return or Enter, and after every selection
    // change; they take effect at the next makeConnections.
    void setEnterActionString(const QString& script) { mEnterActionString = script; }
    QString getEnterActionString() const { return mEnterActionString; }
    void setSelectionActionString(const QString& script) { mSelectionActionString = script; }
    QString getSelectionActionString() const { return mSelectionActionString; }

    // The row the row view shows now, -1 for none.
    long getCurrentCell() const;
    // Shows row in the row view for the length of the call, telling none of
    // the row's listeners (nothing repaints), and hands visit the row view:
    // how a row is read without painting it (accessibility does).
    void visitRowQuietly(long row, const std::function<void(Kel_ViewInterface* rowView)>& visit);
    // The selection model (its value is the sorted set of selected rows).
    Mve_SimpleValue<SelectionList>* getSelectedList() const;
    // The anchor of extended selections, -1 for none.
    long getLastSelection() const;
    // A child of environment in which "$Row" names the current-row index.
    boost::shared_ptr<Mv_ConnectionEnvironment> getCellConnectionEnv(
        boost::shared_ptr<const Mv_ConnectionEnvironment> environment) const;

    // Replaces the three drag settings: the action without modifiers, the
    // modifiers that count, and the first-match map of modifiers to actions.
    void setDragActionMap(Qt::DropAction defaultAction, Qt::KeyboardModifiers mask, const DragActionMap& map);
    Qt::DropAction getDragDefaultAction() const { return mDragDefaultAction; }
    Qt::KeyboardModifiers getDragModifierMask() const { return mDragModifierMask; }
    DragActionMap getDragActionMap() const { return mDragActionMap; }

    // The visible size last given by adjustToPortSize.
    QSize getPortSize() const { return mPortSize; }

protected:
    // Hands the finished drag to Qt: a QDrag on the bridge widget runs
    // action. image is the composed picture of the dragged rows, which is
    // not attached. Takes data.
    virtual void execDrag(QMimeData* data, const QPixmap& image, Qt::DropAction action);

    // row = y / cell height (-1 without a row view or height); true when row
    // is one of the array's rows.
    bool CellContaining(int y, long* row) const;
    // Asks the parent to repaint one row.
    void CellUpdate(long row);
    // Paints one row: its background, then the row view showing it.
    void paintCell(QPainter* painter, long row, const QRect& clip);
    // Places the row view on row and names it after it.
    void moveCellView(long row);
    // Moves the current-row index to row, telling every listener of it.
    void setCurrentCell(long row);
    // The top-left corner of row.
    QPoint rowOrigin(long row) const;
    // Whether a selection action was parsed, and running it.
    bool hasSelectionAction() const { return bool(mSelectionActionP); }
    void runSelectionAction() { runScript(mSelectionActionP); }

private:
    class CurrentRowIndex;
    class SelectionListModel;
    class QuietRow;
    friend class CurrentRowIndex;
    friend class SelectionListModel;
    friend class QuietRow;

    // Moves the current-row index to row without telling its listeners.
    void moveQuietly(long row);
    void initModels();
    void copySettings(const Kel_ListView& other);
    void handleListMessage(const Mv_MessageInterface& message);
    void handleConnectedChanged();
    void handleElementsReplaced(long first, long removedEnd, long insertedCount, long newSize);
    // Makes selection the selection: rows outside the array are dropped,
    // changed rows repainted and the isSelected array's listeners told.
    void storeSelection(SelectionList selection);
    // Publishes model under name, warning when another model holds it.
    void publishSelectionModel(Mv_ModelBase& model, const QString& name);
    void runScript(const std::shared_ptr<Uip_ParseNode>& script);
    void connectScript(const QString& text, std::shared_ptr<Uip_ParseNode>& script,
                       boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    // Hands event to the row view at the row under local (in the row view's
    // coordinates): as the new current row, or shown quietly for the call.
    // Off the rows the event is ignored.
    void forwardToRow(QEvent* event, const QPoint& local, bool makeCurrent,
                      const std::function<void(const QPoint&)>& deliver);
    void startRowDrag(Qt::DropAction action);
    void clearDragState();
    void sizeMayHaveChanged(const QSize& oldSize);

    Qt::DropAction mDragDefaultAction;
    Qt::KeyboardModifiers mDragModifierMask;
    DragActionMap mDragActionMap;
    QString mListConnectionName;
    QString mCurrentRowConnectionName;
    QString mSelectionListConnectionName;
    QString mLastSelectionConnectionName;
    Kel_ViewInterface* mRowViewP; // owned
    std::unique_ptr<CurrentRowIndex> mCurrentRowP;
    int mNumItems;
    std::unique_ptr<Mve_SimpleValue<long>> mLastSelectionP;
    SelectionMode mSelectionMode;
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mListListener;
    QSize mPortSize;
    bool mDragPending;
    bool mDragStarted;
    bool mDeferredSelect;
    QPoint mPressGlobalPos;
    QPoint mPressLocalPos;
    bool mLedgerShadingEnabled;
    QColor mLedgerShadeHighlightColor;
    QColor mLedgerShadeBackgroundColor;
    QColor mSelectionBackgroundColor;
    QColor mBackgroundColor;
    QFont mFont;
    QString mEnterActionString;
    QString mSelectionActionString;
    std::shared_ptr<Uip_ParseNode> mEnterActionP;
    std::shared_ptr<Uip_ParseNode> mSelectionActionP;
    std::unique_ptr<SelectionListModel> mSelectionListP;
    QString mIsSelectedName;
    std::unique_ptr<Mve_ComputedContainer<bool>> mIsSelectedP;
    QString mSelectionBaseName;
    // The size the parent was last told of (or gave).
    QSize mToldSize;
    // The rows a selection change made stale, painted at once by SetSelected.
    QRect mStaleRect;
    // The environment the row view was last connected in, so that a new row
    // view is connected like the old one.
    boost::shared_ptr<const Mv_ConnectionEnvironment> mCellEnvironment;
};

#endif
