#include "Kel_ListView.h"

#include "Kel_BlankView.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_KeymapMgr.h"
#include "Kel_ListViewAccessible_p.h"
#include "Kel_Logging_p.h"
#include "Kel_QtCompat.h"
#include "Kel_ValueViewBase.h"
#include "Kel_ViewAccessibility.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mvt_Root_Notifications.h"
#include "Mv_Utils.h"
#include "Mve_Index.h"
#include "Ost_Assert.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QAccessible>
#include <QApplication>
#include <QDomDocument>
#include <QDrag>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>

namespace {

// How far (in x or in y) the mouse must travel from the press before a
// press on a selected row becomes a drag.
const int kDragThreshold = 11;
// The drag picture shows this many rows; a text line counts the rest.
const int kDragImageRows = 9;
// Selections changing more rows than this repaint and announce the whole
// list instead of row by row.
const int kRowByRowLimit = 64;

const char kAssertSource[] = "Kel_ListView";

// The most a list claims of its bridge: a scroll area's content cannot
// reach Qt's widget size limit (QWIDGETSIZE_MAX, 16,777,215 pixels) and
// still scroll, so rows further down cannot be shown anyway.
const qint64 kMaxHeight = 16000000;

} // namespace

// The current-row index: a value set through a listener (a script, say)
// moves the row view before anyone hears of it, like the list's own moves.
class Kel_ListView::CurrentRowIndex : public Mve_Index<long>
{
public:
    CurrentRowIndex(Kel_ListView& list, const QString& name) : Mve_Index<long>(-1, name), mList(list) {}

protected:
    int handleSet(const long& value) override
    {
        if (!isReadOnly())
            mList.moveCellView(value);
        return Mve_Index<long>::handleSet(value);
    }

private:
    Kel_ListView& mList;
};

// The published selection: a selection set from outside goes through the
// list, so that rows outside the array are dropped and changed rows repainted.
class Kel_ListView::SelectionListModel : public Mve_SimpleValue<SelectionList>
{
public:
    explicit SelectionListModel(Kel_ListView& list) : mList(list) {}

protected:
    int handleSet(const SelectionList& value) override
    {
        if (isReadOnly())
            return Mvt_SimpleValue_BaseAPI::kSetRefused;
        const SelectionList before = getValue();
        mList.storeSelection(value);
        return before == getValue() ? Mvt_SimpleValue_BaseAPI::kSetUnchanged : Mvt_SimpleValue_BaseAPI::kSetChanged;
    }

private:
    Kel_ListView& mList;
};

// Shows one row for a moment without telling anyone: moves the current-row
// index quietly and puts it back at the end of the scope. Painting, tool
// tips, names and drags go through it, so that the row listeners, which
// would each ask for a repaint, never hear of the passing rows.
class Kel_ListView::QuietRow
{
public:
    QuietRow(Kel_ListView& list, long row) : mList(list), mSaved(list.getCurrentCell()) { mList.moveQuietly(row); }
    ~QuietRow() { mList.moveQuietly(mSaved); }
    QuietRow(const QuietRow&) = delete;
    QuietRow& operator=(const QuietRow&) = delete;

private:
    Kel_ListView& mList;
    long mSaved;
};

// ---------------------------------------------------------------------------
// Construction

Kel_ListView::Kel_ListView()
    : Kel_ViewContainerInterface(), Kel_ViewBase(),
      mDragDefaultAction(Qt::MoveAction), mDragModifierMask(Qt::ControlModifier),
      mDragActionMap{qMakePair(Qt::KeyboardModifiers(Qt::ControlModifier), Qt::CopyAction)},
      mRowViewP(nullptr), mNumItems(0), mSelectionMode(None), mPortSize(100, 0),
      mDragPending(false), mDragStarted(false), mDeferredSelect(false),
      mLedgerShadingEnabled(true), mLedgerShadeHighlightColor(229, 240, 247, 255),
      mLedgerShadeBackgroundColor(Qt::white), mSelectionBackgroundColor(100, 136, 170, 255),
      mBackgroundColor(Qt::white), mFont(Kel_ValueViewBase::listFont())
{
    initModels();
    SetChild(new Kel_BlankView(QSize(100, 20)));
    setName(QStringLiteral("ListView"));
    // Its keys (arrows, Return) work once it has the focus, by Tab as by a click.
    setAcceptsFocus(true);
    mToldSize = getSize();
}

Kel_ListView::Kel_ListView(const Kel_ListView& other)
    : Kel_ViewContainerInterface(other), Kel_ViewBase(other), mRowViewP(nullptr), mNumItems(0),
      mDragPending(false), mDragStarted(false), mDeferredSelect(false)
{
    copySettings(other);
    initModels();
    SetChild(other.mRowViewP ? other.mRowViewP->clone() : nullptr);
    mToldSize = getSize();
}

Kel_ListView& Kel_ListView::operator=(const Kel_ListView& other)
{
    if (this == &other)
        return *this;
    // The view settings, without the parent and the tool-tip listener, which stay this list's own.
    mAcceptsFocus = other.mAcceptsFocus;
    mCanDrag = other.mCanDrag;
    mAcceptsDrops = other.mAcceptsDrops;
    mDragType = other.mDragType;
    mOrigin = other.mOrigin;
    mName = other.mName;
    mIsFixedAspect = other.mIsFixedAspect;
    mAspect = other.mAspect;
    mReadOnly = other.mReadOnly;
    mSize = other.mSize;
    mMinSize = other.mMinSize;
    mZOrder = other.mZOrder;
    mToolTipConnectionID = other.mToolTipConnectionID;
    copySettings(other);
    SetChild(other.mRowViewP ? other.mRowViewP->clone() : nullptr);
    setCurrentCell(-1);
    clearDragState();
    return *this;
}

void Kel_ListView::copySettings(const Kel_ListView& other)
{
    mDragDefaultAction = other.mDragDefaultAction;
    mDragModifierMask = other.mDragModifierMask;
    mDragActionMap = other.mDragActionMap;
    mListConnectionName = other.mListConnectionName;
    mSelectionMode = other.mSelectionMode;
    mPortSize = other.mPortSize;
    mLedgerShadingEnabled = other.mLedgerShadingEnabled;
    mLedgerShadeHighlightColor = other.mLedgerShadeHighlightColor;
    mLedgerShadeBackgroundColor = other.mLedgerShadeBackgroundColor;
    mSelectionBackgroundColor = other.mSelectionBackgroundColor;
    mBackgroundColor = other.mBackgroundColor;
    mFont = other.mFont;
    mEnterActionString = other.mEnterActionString;
    mSelectionActionString = other.mSelectionActionString;
    mSelectionBaseName = other.mSelectionBaseName;
}

void Kel_ListView::initModels()
{
    if (mCurrentRowP)
        return;
    mCurrentRowConnectionName = Mv_Utils::Mv_UniqueConnString(QStringLiteral("Kel_ListView%1::currentRow"));
    mCurrentRowP.reset(new CurrentRowIndex(*this, mCurrentRowConnectionName));
    mCurrentRowP->Publish(Mv_ConnectionDict::Singleton());
    mLastSelectionP.reset(new Mve_SimpleValue<long>(-1));
    mSelectionListP.reset(new SelectionListModel(*this));
    mIsSelectedP.reset(new Mve_ComputedContainer<bool>([this](long row, bool& selected) {
        selected = IsRowSelected(row);
        return row >= 0 && row < mNumItems;
    }));
    mIsSelectedP->setSizeFunction([this] { return long(mNumItems); });
    mListListener.onMessage([this](const Mv_MessageInterface& message) { handleListMessage(message); });
}

Kel_ListView::~Kel_ListView()
{
    // The row view's listeners go first, while the models they follow are whole.
    delete mRowViewP;
    mRowViewP = nullptr;
}

Kel_ViewInterface* Kel_ListView::clone()
{
    // The copy constructor starts with row -1 and no drag.
    return new Kel_ListView(*this);
}

// ---------------------------------------------------------------------------
// Row view

void Kel_ListView::SetChild(Kel_ViewInterface* view)
{
    if (view == mRowViewP)
        return;
    delete mRowViewP;
    mRowViewP = view;
    if (mRowViewP) {
        mRowViewP->setParent(this);
        moveCellView(getCurrentCell());
        if (mCellEnvironment)
            mRowViewP->makeConnections(mCellEnvironment);
    }
}

void Kel_ListView::SetRowView(Kel_ViewInterface* view)
{
    const QSize oldSize = mToldSize;
    SetChild(view);
    setCurrentCell(-1);
    sizeMayHaveChanged(oldSize);
    sendAllBitsChanged();
}

void Kel_ListView::removeView(Kel_ViewInterface* view)
{
    if (!view || view != mRowViewP)
        return;
    sendAllBitsChanged();
    delete mRowViewP;
    mRowViewP = nullptr;
}

bool Kel_ListView::releaseView(Kel_ViewInterface* view)
{
    if (!view || view != mRowViewP)
        return false;
    sendAllBitsChanged();
    mRowViewP->setParent(nullptr);
    mRowViewP = nullptr;
    return true;
}

void Kel_ListView::visitRowQuietly(long row, const std::function<void(Kel_ViewInterface* rowView)>& visit)
{
    if (!visit)
        return;
    QuietRow shown(*this, row);
    visit(mRowViewP);
}

long Kel_ListView::getCurrentCell() const
{
    return mCurrentRowP ? mCurrentRowP->getValue() : -1;
}

void Kel_ListView::setCurrentCell(long row)
{
    // The row view is in place before the row listeners repaint it.
    moveCellView(row);
    mCurrentRowP->setValue(row);
}

void Kel_ListView::moveQuietly(long row)
{
    moveCellView(row);
    mCurrentRowP->setValueQuietly(row);
}

void Kel_ListView::moveCellView(long row)
{
    if (!mRowViewP)
        return;
    mRowViewP->setOrigin(rowOrigin(row));
    mRowViewP->setName(QStringLiteral("RowView(%1)").arg(row));
}

QPoint Kel_ListView::rowOrigin(long row) const
{
    return QPoint(0, int(qBound(qint64(INT_MIN), qint64(getCellHeight()) * row, qint64(INT_MAX))));
}

int Kel_ListView::getCellHeight() const
{
    return mRowViewP ? mRowViewP->getHeight() : 0;
}

void Kel_ListView::setCellHeight(int height)
{
    if (!mRowViewP)
        return;
    const QSize oldSize = mToldSize;
    mRowViewP->setSize(QSize(mRowViewP->getWidth(), height));
    moveCellView(getCurrentCell());
    sizeMayHaveChanged(oldSize);
    sendAllBitsChanged();
}

boost::shared_ptr<Mv_ConnectionEnvironment> Kel_ListView::getCellConnectionEnv(
    boost::shared_ptr<const Mv_ConnectionEnvironment> environment) const
{
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();
    auto cellEnvironment = Mv_ConnectionEnvironment::create(environment, Mv_ConnectionDict::Singleton());
    cellEnvironment->set(QStringLiteral("Row"), mCurrentRowConnectionName);
    return cellEnvironment;
}

// ---------------------------------------------------------------------------
// Geometry

int Kel_ListView::getWidth() const
{
    return qMax(mSize.width(), mPortSize.width());
}

int Kel_ListView::getHeight() const
{
    const qint64 rows = qint64(getCellHeight()) * mNumItems;
    return int(std::max(std::min(rows, kMaxHeight), qint64(mPortSize.height())));
}

QSize Kel_ListView::getSize()
{
    return QSize(getWidth(), getHeight());
}

QSize Kel_ListView::getMinSize()
{
    const qint64 rows = qint64(getCellHeight()) * mNumItems;
    return QSize(mRowViewP ? mRowViewP->getWidth() : 0, int(std::min(rows, kMaxHeight)));
}

void Kel_ListView::setSize(const QSize& size)
{
    const QSize oldSize = mToldSize;
    mSize = getMinSize().expandedTo(size);
    sizeMayHaveChanged(oldSize);
}

void Kel_ListView::adjustToPortSize(const QSize& size)
{
    const QSize oldSize = mToldSize;
    mPortSize = size;
    if (getSize() == oldSize)
        return;
    if (mRowViewP)
        mRowViewP->setSize(QSize(size.width(), mRowViewP->getHeight()));
    sizeMayHaveChanged(oldSize);
}

void Kel_ListView::sizeMayHaveChanged(const QSize& oldSize)
{
    const QSize newSize = getSize();
    if (newSize == oldSize && newSize == mToldSize)
        return;
    mToldSize = newSize;
    if (mParent && newSize != oldSize)
        mParent->childSizeChanged(this, newSize, oldSize);
}

// ---------------------------------------------------------------------------
// Container duties towards the row view

void Kel_ListView::childSizeChanged(Kel_ViewInterface* child, QSize, QSize)
{
    if (child != mRowViewP)
        return;
    // The minimum size follows the row height.
    moveCellView(getCurrentCell());
    setSize(QSize(mSize.width(), mSize.height()));
}

void Kel_ListView::childInsertedRow(Kel_ViewInterface*, int, int)
{
}

void Kel_ListView::childDeletedRow(Kel_ViewInterface*, int, int)
{
}

void Kel_ListView::childInsertedColumn(Kel_ViewInterface*)
{
    if (mParent)
        mParent->childInsertedColumn(this);
}

void Kel_ListView::childBitsChanged(Kel_ViewInterface* child, const QRect& rect, bool immediate)
{
    if (!mParent || !child || child != mRowViewP)
        return;
    mParent->childBitsChanged(this, rect.translated(0, mRowViewP->getOrigin().y()), immediate);
}

QWidget* Kel_ListView::getBridgeWidget()
{
    return mParent ? mParent->getBridgeWidget() : nullptr;
}

void Kel_ListView::overlayChildEditWidget(Kel_ViewInterface* child, QWidget* editor, int x, int y)
{
    if (!mParent || !child)
        return;
    const QPoint origin = child->getOrigin();
    mParent->overlayChildEditWidget(this, editor, x + origin.x(), y + origin.y());
}

// ---------------------------------------------------------------------------
// Binding

void Kel_ListView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();
    const auto listEnvironment = getCellConnectionEnv(environment);

    mListListener.setSpec(mListConnectionName);
    mListListener.connect(listEnvironment);

    const QString base = mSelectionBaseName.isEmpty() ? mListConnectionName : mSelectionBaseName;
    mSelectionListConnectionName = base.isEmpty() ? QString() : base + QStringLiteral(":SelectionList");
    publishSelectionModel(*mSelectionListP, mSelectionListConnectionName);
    mLastSelectionConnectionName = base.isEmpty() ? QString() : base + QStringLiteral(":LastSelection");
    publishSelectionModel(*mLastSelectionP, mLastSelectionConnectionName);
    mLastSelectionP->setValue(-1);

    connectScript(mEnterActionString, mEnterActionP, listEnvironment);
    connectScript(mSelectionActionString, mSelectionActionP, listEnvironment);

    mCellEnvironment = listEnvironment;
    if (mRowViewP)
        mRowViewP->makeConnections(listEnvironment);

    mIsSelectedName = base.isEmpty() ? QString() : base + QStringLiteral(".isSelected");
    publishSelectionModel(*mIsSelectedP, mIsSelectedName);

    Kel_ViewBase::makeConnections(environment);
}

void Kel_ListView::publishSelectionModel(Mv_ModelBase& model, const QString& name)
{
    if (name.isEmpty()) {
        model.UnPublish();
        return;
    }
    model.SetConnectionName(name);
    if (!model.Publish(Mv_ConnectionDict::Singleton()))
        qCWarning(lcKelViews).noquote() << QStringLiteral(
            "Kel_ListView::makeConnections - %1 is held by another model; give this list a selection name of its "
            "own (SetSelectionConnectionName)").arg(name);
}

void Kel_ListView::connectScript(const QString& text, std::shared_ptr<Uip_ParseNode>& script,
                                 boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    script.reset();
    if (text.isEmpty())
        return;
    script.reset(Uip_ParseScript(text, nullptr));
    if (script)
        script->ConnectAndTypeCheck(environment, getBridgeWidget());
}

void Kel_ListView::runScript(const std::shared_ptr<Uip_ParseNode>& script)
{
    // Held here, so that a script that replaces the list's scripts finishes.
    const std::shared_ptr<Uip_ParseNode> running = script;
    if (running)
        running->Evaluate(nullptr);
}

void Kel_ListView::handleListMessage(const Mv_MessageInterface& message)
{
    if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        handleConnectedChanged();
    } else if (const auto* replaced = message.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
        handleElementsReplaced(replaced->first(), replaced->removedEnd(), replaced->insertedCount(),
                               replaced->newSize());
    } else if (const auto* changed = message.as<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>()) {
        CellUpdate(changed->index());
        Kel_ListViewAccessible::rowChanged(this, changed->index());
    } else if (const auto* moved = message.as<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()) {
        const long low = qMin(moved->from(), moved->to());
        const long high = qMax(moved->from(), moved->to());
        if (mParent && low >= 0 && high >= low)
            mParent->childBitsChanged(this, QRect(rowOrigin(low), QSize(getWidth(), int(getCellHeight() * (high - low + 1)))), false);
    }
}

void Kel_ListView::handleConnectedChanged()
{
    SetSelected(-1, false, Qt::NoModifier);
    const QSize oldSize = mToldSize;
    mNumItems = mListListener.isConnected() ? int(qBound(0L, mListListener->size(), long(INT_MAX))) : 0;
    sizeMayHaveChanged(oldSize);
    sendAllBitsChanged();
    Kel_ListViewAccessible::rowsReplaced(this, 0, 0, 0);
}

void Kel_ListView::handleElementsReplaced(long first, long removedEnd, long insertedCount, long newSize)
{
    const QSize oldSize = mToldSize;
    mNumItems = int(qBound(0L, newSize, long(INT_MAX)));
    SelectionList kept;
    for (long row : getSelectedList()->getValue()) {
        if (row < newSize)
            kept.add(row);
    }
    storeSelection(kept);
    Kel_ListViewAccessible::rowsReplaced(this, first, removedEnd, insertedCount);

    const long removed = removedEnd - first;
    const long delta = insertedCount - removed;
    if (mParent) {
        const int cellHeight = getCellHeight();
        if (delta > 0) {
            const int y = int(cellHeight * removedEnd);
            mParent->childInsertedRow(this, y, int(cellHeight * (removedEnd + delta)) - y);
        } else if (delta < 0) {
            const int y = int(cellHeight * (removedEnd + delta));
            mParent->childDeletedRow(this, y, int(cellHeight * removedEnd) - y);
        }
        if (removed - std::labs(delta) >= 1) {
            const int top = int(cellHeight * first);
            mParent->childBitsChanged(
                this, QRect(0, top, getWidth(), int(cellHeight * (removedEnd - std::labs(delta))) - top), false);
        }
    }
    sizeMayHaveChanged(oldSize);
}

// ---------------------------------------------------------------------------
// Selection

Mve_SimpleValue<Kel_ListView::SelectionList>* Kel_ListView::getSelectedList() const
{
    return mSelectionListP.get();
}

long Kel_ListView::getLastSelection() const
{
    return mLastSelectionP->getValue();
}

int Kel_ListView::GetRowSelectionListSize() const
{
    return mSelectionListP ? mSelectionListP->getValue().size() : -1;
}

long Kel_ListView::GetFirstRowSelection() const
{
    return mSelectionListP ? mSelectionListP->getValue().first() : -1;
}

long Kel_ListView::GetNextRowSelection(long row) const
{
    return mSelectionListP ? mSelectionListP->getValue().next(row) : -1;
}

bool Kel_ListView::IsRowSelected(long row) const
{
    return mSelectionListP && mSelectionListP->getValue().contains(row);
}

bool Kel_ListView::SetSelected(long row, bool all, Qt::KeyboardModifiers modifiers)
{
    // A row equal to the number of items stays as it is: the operations
    // below leave it out of the selection, but it still becomes the anchor.
    if (row > mNumItems)
        row = mNumItems - 1;
    if (row < 0)
        row = -1;
    if (mSelectionMode == None)
        return true;
    SelectionList selection = mSelectionListP->getValue();
    mStaleRect = QRect();

    if (all) {
        if (mSelectionMode == Multi || mSelectionMode == Extended)
            TotalSelection(selection);
    } else if (mSelectionMode == Multi && (modifiers & Qt::ControlModifier)) {
        MultiSelection(row, selection);
    } else if (mSelectionMode == Extended && (modifiers & Qt::ShiftModifier)) {
        ExtendedSelection(row, selection);
    } else if (mSelectionMode == Extended && (modifiers & Qt::ControlModifier)) {
        MultiSelection(row, selection);
    } else {
        SingleSelection(row, selection);
    }
    storeSelection(selection);
    // The current row moves first, so that the repaint below also covers
    // what its row view asks for.
    if (row >= 0) {
        setCurrentCell(row);
        // A reader follows the row the keys (or a click) moved to.
        QWidget* bridge = getBridgeWidget();
        if (Kel_ViewAccessibility::reportsEvents() && bridge && bridge->hasFocus())
            Kel_ViewAccessibility::notifyFocus(this);
    }

    auto* area = dynamic_cast<Kel_BridgeQScrollArea*>(getBridgeWidget());
    if (area && mRowViewP) {
        // At once, so that the new selection shows before the selection
        // action runs: the rows whose state changed, which is all that the
        // change made stale (a key press then costs two rows, not a page).
        if (!mStaleRect.isEmpty())
            area->viewportWidget()->repaint(mStaleRect);
        if (row >= 0)
            area->ensureRectVisible(
                QRect(area->horizontalScrollBar()->value(), int(rowOrigin(row).y()), 0, getCellHeight()));
    }
    mStaleRect = QRect();
    runScript(mSelectionActionP);
    return true;
}

void Kel_ListView::SingleSelection(long row, SelectionList& selection)
{
    selection.clear();
    if (row != -1)
        selection.add(row);
    mLastSelectionP->setValue(row);
}

void Kel_ListView::MultiSelection(long row, SelectionList& selection)
{
    if (row == -1) {
        selection.clear();
        mLastSelectionP->setValue(-1);
    } else if (selection.contains(row)) {
        selection.remove(row);
        mLastSelectionP->setValue(-1);
    } else {
        selection.add(row);
        mLastSelectionP->setValue(row);
    }
}

void Kel_ListView::ExtendedSelection(long row, SelectionList& selection)
{
    if (row == -1) {
        selection.clear();
        mLastSelectionP->setValue(-1);
        return;
    }
    const long anchor = mLastSelectionP->getValue();
    if (anchor == -1)
        return;
    const long low = qMin(anchor, row);
    const long high = qMax(anchor, row);
    std::vector<long> removed;
    for (long selected = selection.first(); selected != -1; selected = selection.next(selected)) {
        if (selected < low || selected > high)
            removed.push_back(selected);
    }
    // What stays and what is added make up the range, so it is built in
    // order rather than inserted row by row.
    SelectionList range;
    for (long r = qMax(0L, low); r <= high && r < mNumItems; ++r)
        range.add(r);
    selection = range;

    if (removed.size() > size_t(kRowByRowLimit)) {
        sendAllBitsChanged();
    } else {
        for (long gone : removed)
            CellUpdate(gone);
    }
    const long top = qMax(0L, low);
    const long bottom = qMin(high, long(mNumItems) - 1);
    if (mParent && bottom >= top)
        mParent->childBitsChanged(
            this, QRect(rowOrigin(top), QSize(getWidth(), int(getCellHeight() * (bottom - top + 1)))), false);
}

void Kel_ListView::TotalSelection(SelectionList& selection)
{
    // The rows of the array already selected: all of them means deselect all.
    const long inRange = long(std::lower_bound(selection.begin(), selection.end(), long(mNumItems)) -
                              std::lower_bound(selection.begin(), selection.end(), 0L));
    if (mNumItems == 0 || inRange >= mNumItems) {
        selection.clear();
        return;
    }
    SelectionList all;
    for (long row = 0; row < mNumItems; ++row)
        all.add(row);
    for (long row : selection) {
        if (row < 0 || row >= mNumItems)
            all.add(row);
    }
    selection = all;
}

void Kel_ListView::storeSelection(SelectionList selection)
{
    // Only rows of the array can be selected.
    if (selection.first() < 0 || (selection.size() > 0 && selection.last() >= mNumItems)) {
        SelectionList kept;
        for (long row : selection) {
            if (row >= 0 && row < mNumItems)
                kept.add(row);
        }
        selection = kept;
    }
    const SelectionList& before = mSelectionListP->getValue();
    if (before == selection)
        return;

    // The rows whose state changes, unless there are too many to name.
    std::vector<long> changed;
    bool many = false;
    auto a = before.begin();
    auto b = selection.begin();
    while ((a != before.end() || b != selection.end()) && !many) {
        long row;
        if (b == selection.end() || (a != before.end() && *a < *b)) {
            row = *a++;
        } else if (a == before.end() || *b < *a) {
            row = *b++;
        } else {
            ++a;
            ++b;
            continue;
        }
        changed.push_back(row);
        many = changed.size() > size_t(kRowByRowLimit);
    }

    Mv_ModelBase::Guard guard(mSelectionListP.get());
    mSelectionListP->setValue(selection);
    if (!guard.alive())
        return;
    if (Kel_ViewAccessibility::reportsEvents())
        Kel_ListViewAccessible::selectionChanged(this, QList<long>(changed.begin(), changed.end()), many);
    if (many) {
        mStaleRect = getLocalDrawingRect();
        sendAllBitsChanged();
        mIsSelectedP->notifyElementsReplaced(0, mNumItems, mNumItems);
        return;
    }
    for (long row : changed) {
        mStaleRect |= QRect(rowOrigin(row), QSize(getWidth(), getCellHeight()));
        CellUpdate(row);
    }
    Mv_ModelBase::Guard isSelectedGuard(mIsSelectedP.get());
    for (long row : changed) {
        mIsSelectedP->notifyElementValueChanged(row);
        if (!isSelectedGuard.alive())
            return;
    }
}

void Kel_ListView::CellUpdate(long row)
{
    if (!mParent || row < 0 || row >= mNumItems)
        return;
    mParent->childBitsChanged(this, QRect(rowOrigin(row), QSize(getWidth(), getCellHeight())), false);
}

// ---------------------------------------------------------------------------
// Keyboard

void Kel_ListView::keyPressEvent(QKeyEvent* event)
{
    if (!event)
        return;
    if (mSelectionMode == None) {
        event->ignore();
        return;
    }
    // Application shortcuts win over list navigation.
    if (Kel_KeymapMgr::getInstance()->hasAction(event, QStringLiteral("MainWindow"), -1)) {
        event->ignore();
        return;
    }
    switch (event->key()) {
    case Qt::Key_A:
        if (event->modifiers() & Qt::ControlModifier)
            SetSelected(0, true, Qt::NoModifier);
        event->ignore();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->accept();
        runScript(mEnterActionP);
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Up:
    case Qt::Key_Down:
        event->accept();
        changeSelection(event->key());
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        event->accept();
        QWidget* bridge = getBridgeWidget();
        const int cellHeight = getCellHeight();
        const long page = bridge && cellHeight > 0 ? bridge->height() / cellHeight : 0;
        const long first = GetFirstRowSelection();
        long target;
        if (event->key() == Qt::Key_PageUp)
            target = first - page >= 0 ? first - page : 0;
        else
            target = first + page < mNumItems ? first + page : mNumItems - 1;
        SetSelected(target, false, Qt::NoModifier);
        break;
    }
    default:
        event->ignore();
        break;
    }
}

void Kel_ListView::changeSelection(int key)
{
    const SelectionList& selection = mSelectionListP->getValue();
    long target = -1;
    switch (key) {
    case Qt::Key_Home:
        target = 0;
        break;
    case Qt::Key_End:
        target = mNumItems - 1;
        break;
    case Qt::Key_Up:
        // Wraps to the bottom, also when nothing is selected.
        target = selection.first() >= 1 ? selection.first() - 1 : mNumItems - 1;
        break;
    case Qt::Key_Down:
        // Wraps to the top.
        target = selection.last() != -1 && selection.last() < mNumItems - 1 ? selection.last() + 1 : 0;
        break;
    default:
        return;
    }
    SetSelected(target, false, Qt::NoModifier);
}

// ---------------------------------------------------------------------------
// Hit testing and mouse

bool Kel_ListView::CellContaining(int y, long* row) const
{
    const int cellHeight = getCellHeight();
    *row = cellHeight > 0 ? long(y / cellHeight) : -1;
    return *row < mNumItems;
}

void Kel_ListView::mousePressEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    clearDragState();
    long row = -1;
    const bool onRow = CellContaining(local.y(), &row) && row >= 0;
    if (event->button() == Qt::RightButton) {
        // The context menu acts on the selection; a click elsewhere makes one.
        if (!onRow)
            SetSelected(-1, false, Qt::NoModifier);
        else if (!IsRowSelected(row))
            SetSelected(row, false, Qt::NoModifier);
        return;
    }
    if (QWidget* bridge = getBridgeWidget()) {
        bridge->setFocusPolicy(Qt::StrongFocus);
        bridge->setFocus(Qt::OtherFocusReason);
    }
    if (!onRow) {
        SetSelected(-1, false, Qt::NoModifier);
        event->ignore();
        return;
    }
    setCurrentCell(row);
    const QPoint rowLocal(local.x(), local.y() - rowOrigin(row).y());
    const bool draggable = mRowViewP->canDrag(rowLocal);
    if (draggable && IsRowSelected(row))
        mDeferredSelect = true; // a drag of the whole selection may follow
    else
        SetSelected(row, false, event->modifiers());
    if (draggable && IsRowSelected(row)) {
        mDragPending = true;
        mPressGlobalPos = Kel_QtCompat::globalMousePosition(event);
        mPressLocalPos = local;
    }
    if (mRowViewP) {
        moveCellView(row);
        mRowViewP->mousePressEvent(event, rowLocal);
    }
}

void Kel_ListView::mouseMoveEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    if (!mDragPending) {
        // Hovering shows each row for a moment only.
        forwardToRow(event, local, false, [this, event](const QPoint& p) { mRowViewP->mouseMoveEvent(event, p); });
        return;
    }
    long row = -1;
    const Qt::DropAction action = getDragAction(event);
    if (action == Qt::IgnoreAction || !CellContaining(mPressLocalPos.y(), &row) || row < 0) {
        mDragPending = false;
        return;
    }
    const QPoint travel = Kel_QtCompat::globalMousePosition(event) - mPressGlobalPos;
    if (std::abs(travel.x()) < kDragThreshold && std::abs(travel.y()) < kDragThreshold)
        return;
    mDragPending = false;
    mDeferredSelect = false;
    mDragStarted = true;
    startRowDrag(action);
}

void Kel_ListView::mouseReleaseEvent(QMouseEvent* event, const QPoint& local)
{
    if (!event)
        return;
    QPoint position = local;
    if (mDragPending) {
        position = mPressLocalPos;
        mDragPending = false;
    }
    long row = -1;
    const bool onRow = CellContaining(position.y(), &row) && row >= 0;
    if (onRow)
        setCurrentCell(row);
    if (onRow && mDeferredSelect && !mDragStarted)
        SetSelected(row, false, event->modifiers()); // one row of a multi-selection clicked
    mDeferredSelect = false;
    mDragStarted = false;
    if (onRow && mRowViewP) {
        moveCellView(row);
        mRowViewP->mouseReleaseEvent(event, QPoint(position.x(), position.y() - rowOrigin(row).y()));
    } else {
        event->ignore();
    }
}

void Kel_ListView::forwardToRow(QEvent* event, const QPoint& local, bool makeCurrent,
                                const std::function<void(const QPoint&)>& deliver)
{
    if (!event)
        return;
    long row = -1;
    if (!CellContaining(local.y(), &row) || row < 0) {
        event->ignore();
        return;
    }
    const QPoint rowLocal(local.x(), local.y() - rowOrigin(row).y());
    if (makeCurrent) {
        setCurrentCell(row);
        deliver(rowLocal);
        return;
    }
    QuietRow shown(*this, row);
    deliver(rowLocal);
}

void Kel_ListView::mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local)
{
    forwardToRow(event, local, true, [this, event](const QPoint& p) { mRowViewP->mouseDoubleClickEvent(event, p); });
}

void Kel_ListView::dragMoveEvent(QDragMoveEvent* event, const QPoint& local)
{
    forwardToRow(event, local, false, [this, event](const QPoint& p) { mRowViewP->dragMoveEvent(event, p); });
}

void Kel_ListView::dropEvent(QDropEvent* event, const QPoint& local)
{
    forwardToRow(event, local, true, [this, event](const QPoint& p) { mRowViewP->dropEvent(event, p); });
}

void Kel_ListView::clearDragState()
{
    mDragPending = false;
    mDragStarted = false;
    mDeferredSelect = false;
}

// ---------------------------------------------------------------------------
// Dragging

void Kel_ListView::setDragActionMap(Qt::DropAction defaultAction, Qt::KeyboardModifiers mask, const DragActionMap& map)
{
    mDragDefaultAction = defaultAction;
    mDragModifierMask = mask;
    mDragActionMap = map;
}

Qt::DropAction Kel_ListView::getDragAction(const QMouseEvent* event) const
{
    const Qt::KeyboardModifiers masked = mDragModifierMask & (event ? event->modifiers() : Qt::NoModifier);
    if (masked == Qt::NoModifier || mDragActionMap.isEmpty())
        return mDragDefaultAction;
    for (const auto& entry : mDragActionMap) {
        if ((entry.first & masked) == entry.first)
            return entry.second;
    }
    return mDragDefaultAction;
}

namespace {

// A transparent picture of size with old at the top, ready for a band below it.
QPixmap grown(const QPixmap& old, int width, int height)
{
    if (width < 1 || height < 1)
        return old;
    QPixmap image(width, height);
    image.fill(Qt::transparent);
    if (!old.isNull()) {
        QPainter painter(&image);
        painter.drawPixmap(0, 0, old);
    }
    return image;
}

} // namespace

void Kel_ListView::startRowDrag(Qt::DropAction action)
{
    if (!mRowViewP)
        return;
    QDomDocument document;
    QDomElement root = document.createElement(QStringLiteral("mobIDDragObjectList"));
    document.appendChild(root);
    QPixmap image;
    const int total = GetRowSelectionListSize();
    const int cellHeight = getCellHeight();
    const QPoint pressPoint(mPressLocalPos.x(), cellHeight > 0 ? mPressLocalPos.y() % cellHeight : 0);
    int count = 0;
    {
        const long saved = getCurrentCell();
        for (long row = GetFirstRowSelection(); row != -1; row = GetNextRowSelection(row)) {
            ++count;
            moveQuietly(row);
            QPixmap rowImage;
            const QDomElement element = mRowViewP->getDragData(pressPoint, document, rowImage);
            if (!element.isNull())
                root.appendChild(element);
            if (count == 1) {
                image = rowImage;
            } else if (count <= kDragImageRows || total == kDragImageRows + 1) {
                if (count > kDragImageRows + 1)
                    continue;
                const int top = image.height();
                image = grown(image, qMax(image.width(), rowImage.width()), top + rowImage.height());
                if (!rowImage.isNull() && !image.isNull()) {
                    QPainter painter(&image);
                    painter.drawPixmap(0, top, rowImage);
                }
            } else if (count == kDragImageRows + 1) {
                // Instead of the tenth row: how many more there are.
                const QString text = QStringLiteral("... (+%1)").arg(total - kDragImageRows);
                QFont font = QApplication::font();
                font.setPointSize(12);
                const QFontMetrics metrics(font);
                const int top = image.height();
                image = grown(image, qMax(image.width(), metrics.horizontalAdvance(text) + 6), top + metrics.height());
                if (!image.isNull()) {
                    QPainter painter(&image);
                    painter.fillRect(QRect(0, top, image.width(), metrics.height()), Qt::color0);
                    painter.setPen(QColor(Qt::color1));
                    painter.setFont(font);
                    painter.drawText(3, top + metrics.ascent(), text);
                }
            }
        }
        moveQuietly(saved);
    }
    auto* data = new QMimeData;
    data->setText(document.toString(1));
    execDrag(data, image, action);
}

void Kel_ListView::execDrag(QMimeData* data, const QPixmap&, Qt::DropAction action)
{
    QWidget* bridge = getBridgeWidget();
    if (!bridge) {
        delete data;
        return;
    }
    // The composed picture stays unattached: the platform's drag cursor shows instead.
    auto* drag = new QDrag(bridge);
    drag->setMimeData(data);
    drag->exec(action);
}

// ---------------------------------------------------------------------------
// Painting

void Kel_ListView::drawContents(QPainter* painter, const QRect& rect)
{
    long first = -1;
    long last = -1;
    CellContaining(rect.top(), &first);
    CellContaining(rect.bottom(), &last);
    if (!mRowViewP || (first < 0 && last < 0))
        return;
    first = qMax(0L, first);
    // Below the list's height there is nothing to paint, however large the area.
    if (getCellHeight() > 0)
        last = qMin(last, long(qMax(0, qMax(getHeight(), mSize.height()) - 1) / getCellHeight()));
    if (!painter) {
        paintCell(painter, first, rect); // reports the null painter
        return;
    }
    const Kel_ValueViewBase::InheritedFontScope font(mFont);
    painter->save();
    painter->setFont(mFont);
    const long saved = getCurrentCell();
    for (long row = first; row <= last; ++row)
        paintCell(painter, row, rect);
    moveQuietly(saved);
    // The row the keys act on, while the list has the keyboard focus.
    QWidget* bridge = getBridgeWidget();
    if (bridge && bridge->hasFocus() && saved >= first && saved <= last && saved < mNumItems) {
        painter->setPen(QPen(QColor(Qt::black), 1, Qt::DotLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(QRect(rowOrigin(saved), QSize(getWidth(), getCellHeight())).adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

void Kel_ListView::paintCell(QPainter* painter, long row, const QRect& clip)
{
    if (!painter) {
        Ost_Assert::handleFailedAssert(
            "iPainterP && \"Kel_ListView::paintCell - Cannot draw because painter is a null object!\"", kAssertSource,
            __LINE__);
        return;
    }
    if (!mRowViewP)
        return;
    moveQuietly(row);
    painter->save();
    const QPoint origin = mRowViewP->getOrigin();
    painter->translate(origin);
    QColor color = mBackgroundColor;
    if (IsRowSelected(row))
        color = mSelectionBackgroundColor;
    else if (mLedgerShadingEnabled)
        color = GetLedgerShadeIndexColor(row);
    QRect cell = mRowViewP->getLocalDrawingRect();
    if (getWidth() > cell.width())
        cell.setWidth(getWidth());
    painter->fillRect(cell, color);
    if (mListListener.isConnected() && row >= 0 && row < mListListener->size()) {
        const QRect area = clip.intersected(mRowViewP->getRectInParent()).translated(-origin);
        mRowViewP->drawContents(painter, area);
    }
    painter->restore();
}

QColor Kel_ListView::GetLedgerShadeIndexColor(long row) const
{
    const bool odd = row / 2 != (row + 1) / 2;
    return odd ? mLedgerShadeHighlightColor : mLedgerShadeBackgroundColor;
}

// ---------------------------------------------------------------------------
// Tool tips and names

bool Kel_ListView::getToolTip(const QPoint& local, QRect* oTipRect, QString* oTipString)
{
    long row = -1;
    if (!mRowViewP || !CellContaining(local.y(), &row) || row < 0)
        return false;
    QuietRow shown(*this, row);
    if (!mRowViewP->getToolTip(QPoint(local.x(), local.y() - rowOrigin(row).y()), oTipRect, oTipString))
        return false;
    if (!oTipRect) {
        Ost_Assert::handleFailedAssert("oTipRect", kAssertSource, __LINE__);
        return true;
    }
    oTipRect->translate(mRowViewP->getOrigin());
    return true;
}

QString Kel_ListView::findUiName(const QPoint& local)
{
    long row = -1;
    if (!mRowViewP || !CellContaining(local.y(), &row) || row < 0)
        return getName();
    QuietRow shown(*this, row);
    return getName() + QLatin1Char('.') + mRowViewP->findUiName(QPoint(local.x(), local.y() - rowOrigin(row).y()));
}

bool Kel_ListView::findItem(const QString& name, QPoint* where)
{
    if (name.isEmpty() || !where || !mRowViewP)
        return false;
    // Names made by findUiName start with the list's own name.
    QString path = name;
    if (path.startsWith(getName() + QLatin1Char('.')))
        path = path.mid(getName().size() + 1);
    const int open = path.indexOf(QLatin1Char('('));
    const int close = open < 0 ? -1 : path.indexOf(QLatin1Char(')'), open + 1);
    if (close > open) {
        bool parsed = false;
        const long row = path.mid(open + 1, close - open - 1).toLong(&parsed, 10);
        if (parsed)
            setCurrentCell(row);
    }
    if (path.section(QLatin1Char('.'), 0, 0) != mRowViewP->getName())
        return false;
    QPoint point;
    const QString rest = path;
    path.remove(QRegularExpression(QStringLiteral("^[^.]+[.]")));
    // A plain row view answers for the rest; a container row view wants its own name first.
    if (!mRowViewP->findItem(path, &point) && !mRowViewP->findItem(rest, &point))
        return false;
    *where = point + mRowViewP->getOrigin();
    return true;
}
