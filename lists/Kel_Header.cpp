#include "Kel_Header.h"

#include "Kel_FontManager.h"
#include "Kel_ViewAccessibility.h"
#include "Kel_PopupMenu.h"
#include "Kel_WhatsThis.h"
#include "Kel_TransparentOverlay.h"
#include "Ost_Resource.h"
#include "Ost_Setting.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QKeyEvent>
#include <QMap>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <algorithm>

namespace {

// The list lays each row out as a 2-pixel inset, then per visible column
// the cell and a 5-pixel separator; the header draws its labels to match.
const int kInset = 2;
const int kSeparator = 5;
// A press closer than this to a divider grabs it.
const int kDividerGrab = 3;
// Dragging a divider this far above or below the header cancels the resize.
const int kResizeCancelBand = 80;
// Dragging a column this far beside the header, or above or below the
// overlay, cancels the move.
const int kDragCancelSide = 150;
const int kDragCancelVertical = 50;
const int kSortMarkWidth = 12;
// Ctrl+Shift+Left and Ctrl+Shift+Right change the chosen column's width by this much.
const long kKeyResizeStep = 10;
const unsigned short kOverlayAlpha = 200;

const QString kHideItem = QStringLiteral("HideColumn");
const QString kNewItem = QStringLiteral("NewColumn");
const QString kSelectItem = QStringLiteral("SelectColumn");

// Where an extra item belongs: the "actionN:" group it names, others last.
int extraGroup(const QString& identifier)
{
    if (identifier.startsWith(QLatin1String("action0:")))
        return 0;
    if (identifier.startsWith(QLatin1String("action1:")))
        return 1;
    return 2;
}

// Readers read the labels' names and sort states again. Every label is
// named rather than the one that changed: a header has few columns, and a
// sort change touches two of them anyway.
void reportItemChanges(Kel_Header* header, QAccessible::Event type)
{
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    for (int position = 0; position < header->visibleColumnCount(); ++position) {
        QAccessibleEvent event(header, type);
        event.setChild(position);
        Kel_ViewAccessibility::send(&event);
    }
}

} // namespace

const char* const Kel_Header::kFontKey = "FontSettings.Kel_Header.Font";

Kel_Header::Kel_Header(QWidget* parent, const char* name) : QWidget(parent)
{
    setObjectName(QString::fromLatin1(name));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Reached by Tab; a click sorts or drags without taking the focus from
    // what the user was typing into.
    setFocusPolicy(Qt::TabFocus);
    Kel_ViewAccessibility::install();
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Header");

    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{
             &mColumns, &mVisibleContainer, &mVisibleColumns, &mColumnBeingDragged})
        property->onNotify([this] { columnsChanged(); });
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mWidth, &mMinWidth})
        property->onNotify([this] { widthsChanged(); });
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mLabel, &mIdentifier})
        property->onNotify([this] {
            update();
            reportItemChanges(this, QAccessible::NameChanged);
        });
    for (Kel_BoundPropertyBase* property :
         std::initializer_list<Kel_BoundPropertyBase*>{&mIsSorted, &mIsSortedAscending})
        property->onNotify([this] {
            repaint();
            reportItemChanges(this, QAccessible::DescriptionChanged);
        });
}

Kel_Header::~Kel_Header()
{
    delete mDrag.overlay.data();
    delete mMenuP.data();
}

void Kel_Header::setColumnBaseConnectionName(const QString& base)
{
    if (base == mBaseName)
        return;
    mBaseName = base;
    const auto name = [&base](const char* suffix) {
        return base.isEmpty() ? QString() : base + QLatin1String(suffix);
    };
    mColumnBeingDragged.setSpec(name(".columnBeingDragged"));
    mVisibleContainer.setSpec(name(".sortedVisibleColumns.arrayMetaData"));
    mVisibleColumns.setSpec(name(".sortedVisibleColumns"));
    mHiddenContainer.setSpec(name(".hiddenColumns.arrayMetaData"));
    mHiddenColumns.setSpec(name(".hiddenColumns"));
    mColumns.setSpec(base);
    mIdentifier.setSpec(name(".identifier"));
    mWidth.setSpec(name(".width"));
    mMinWidth.setSpec(name(".minWidth"));
    mLabel.setSpec(name(".label"));
    mCanHide.setSpec(name(".canHide"));
    mVisibleFlag.setSpec(name(".visible"));
    mHideColumn.setSpec(name(".hideColumn"));
    mIsSorted.setSpec(name(".isSorted"));
    mIsSortedAscending.setSpec(name(".isSortedAscending"));
    mAddNewColumn.setSpec(name(".Actions.addNewColumn"));
    mShowColumn.setSpec(name(".showColumn"));
    mSortByColumn.setSpec(name(".sortByColumn"));
}

void Kel_Header::setColumnSelectionConnectionSpec(const QByteArray& spec)
{
    mColumnSelection.setSpec(QString::fromUtf8(spec));
}

void Kel_Header::setLeftMargin(long margin)
{
    if (margin == mLeftMargin)
        return;
    mLeftMargin = margin;
    invalidateDividers();
    update();
}

void Kel_Header::setOffset(int offset, bool repaintNow)
{
    if (offset != mOffset) {
        mOffset = offset;
        invalidateDividers();
    }
    if (repaintNow)
        repaint();
    else
        update();
}

void Kel_Header::addContextMenuItem(const QString& text, const QString& identifier)
{
    addContextMenuItem(text, identifier, QString());
}

void Kel_Header::addContextMenuItem(const QString& text, const QString& identifier, const QString& submenu)
{
    mExtraItems.append({text, identifier, submenu});
}

void Kel_Header::clearContextMenuItems()
{
    mExtraItems.clear();
}

void Kel_Header::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!Kel_BoundPropertyBase::connectAll(
            environment, {&mColumnBeingDragged, &mVisibleContainer, &mVisibleColumns, &mHiddenContainer,
                          &mHiddenColumns, &mColumns, &mIdentifier, &mWidth, &mMinWidth, &mLabel, &mCanHide,
                          &mVisibleFlag, &mHideColumn, &mIsSorted, &mIsSortedAscending, &mAddNewColumn,
                          &mShowColumn, &mSortByColumn, &mColumnSelection}))
        return;
    columnsChanged();
}

// --- model --------------------------------------------------------------

void Kel_Header::columnsChanged()
{
    invalidateDividers();
    update();
    // A reader's list of labels is stale.
    if (Kel_ViewAccessibility::reportsEvents()) {
        QAccessibleEvent event(this, QAccessible::ObjectReorder);
        Kel_ViewAccessibility::send(&event);
    }
}

void Kel_Header::widthsChanged()
{
    invalidateDividers();
    // While the user drags a divider the labels follow the pointer at once.
    if (mDivider.active)
        repaint();
    else
        update();
}

void Kel_Header::invalidateDividers()
{
    mDividersValid = false;
    mDividers.clear();
}

long Kel_Header::visibleCount() const
{
    return mVisibleContainer.isConnected() ? mVisibleContainer->size() : mVisibleColumns->size();
}

long Kel_Header::columnAt(int position) const
{
    if (position < 0 || position >= visibleCount())
        return -1;
    return mVisibleColumns->element<long>(position, -1);
}

long Kel_Header::shownWidth(long column) const
{
    return std::max({0L, mWidth->element<long>(column, 0), mMinWidth->element<long>(column, 0)});
}

QString Kel_Header::columnIdentifier(long column) const
{
    return column < 0 ? QString() : mIdentifier->element<QString>(column);
}

QString Kel_Header::labelText(long column) const
{
    const QString label = mLabel->element<QString>(column);
    return label.isEmpty() ? mIdentifier->element<QString>(column) : label;
}

void Kel_Header::validateDividerList()
{
    if (mDividersValid || !mVisibleColumns.isConnected() || !mWidth.isConnected())
        return;
    mDividers.clear();
    int x = int(mLeftMargin) - mOffset;
    const long count = visibleCount();
    for (long p = 0; p < count; ++p) {
        const int w = int(shownWidth(columnAt(int(p))));
        mDividers.append(x + w + kInset);
        x += w + kSeparator;
    }
    mDividersValid = true;
}

QVector<int> Kel_Header::dividerPositions()
{
    validateDividerList();
    return mDividers;
}

int Kel_Header::columnLeft(int position)
{
    validateDividerList();
    if (position <= 0 || mDividers.isEmpty())
        return int(mLeftMargin) - mOffset;
    position = std::min(position, int(mDividers.size()));
    return mDividers[position - 1] + kSeparator - kInset;
}

int Kel_Header::dividerIndexForPos(int x)
{
    validateDividerList();
    for (int p = 0; p < mDividers.size(); ++p) {
        if (std::abs(mDividers[p] - x) < kDividerGrab)
            return p;
    }
    return -1;
}

int Kel_Header::columnIndexForPos(const QPoint& point)
{
    validateDividerList();
    const int x = point.x();
    if (mDividers.isEmpty() || x < columnLeft(0))
        return -1;
    for (int p = 0; p < mDividers.size(); ++p) {
        if (x < mDividers[p] + kSeparator - kInset)
            return p;
    }
    return -1;
}

int Kel_Header::centerOfColumn(int position)
{
    validateDividerList();
    if (position < 0 || position >= mDividers.size())
        return -1;
    const int cellLeft = columnLeft(position) + kInset;
    return (cellLeft + mDividers[position]) / 2;
}

bool Kel_Header::findPoi(const QString& dottedName, QRect* globalRect)
{
    QRect found;
    if (dottedName.isEmpty() || dottedName == objectName()) {
        found = rect();
    } else {
        validateDividerList();
        for (int p = 0; p < mDividers.size() && found.isNull(); ++p) {
            const long column = columnAt(p);
            if (dottedName != mIdentifier->element<QString>(column) && dottedName != labelText(column))
                continue;
            const int left = columnLeft(p) + kInset;
            found = QRect(left, 0, mDividers[p] - left, height()).intersected(rect());
            if (found.isNull())
                return false; // scrolled out of sight
        }
        if (found.isNull())
            return false;
    }
    if (globalRect)
        *globalRect = QRect(mapToGlobal(found.topLeft()), found.size());
    return true;
}

QFont Kel_Header::labelFont() const
{
    const QString key = QString::fromLatin1(kFontKey);
    return Kel_FontManager::hasFont(key) ? Kel_FontManager::getFont(key) : font();
}

QSize Kel_Header::sizeHint() const
{
    return QSize(200, QFontMetrics(labelFont()).height() + 8);
}

QSize Kel_Header::minimumSizeHint() const
{
    return QSize(0, sizeHint().height());
}

// --- painting -----------------------------------------------------------

void Kel_Header::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QPalette& pal = palette();
    painter.fillRect(rect(), pal.button());
    painter.setPen(pal.color(QPalette::Mid));
    painter.drawLine(0, height() - 1, width(), height() - 1);

    validateDividerList();
    painter.setFont(labelFont());
    const QFontMetrics metrics(painter.font());
    for (int p = 0; p < mDividers.size(); ++p) {
        const int left = columnLeft(p) + kInset;
        const QRect cell(left, 0, mDividers[p] - left, height() - 1);
        if (cell.right() < 0 || cell.left() > width())
            continue;
        if (mDrag.active && p == mDrag.position) {
            // The dragged label travels with the overlay; its slot shows where it will land.
            painter.fillRect(cell, pal.color(QPalette::Mid));
        } else {
            const long column = columnAt(p);
            QRect textRect = cell.adjusted(4, 0, -4, 0);
            if (mIsSorted->element<bool>(column, false)) {
                textRect.setRight(textRect.right() - kSortMarkWidth);
                const bool ascending = mIsSortedAscending->element<bool>(column, true);
                const QPointF c(cell.right() - kSortMarkWidth / 2.0 - 2, cell.center().y() + 0.5);
                QPainterPath mark;
                if (ascending) {
                    mark.moveTo(c.x() - 4, c.y() + 2);
                    mark.lineTo(c.x() + 4, c.y() + 2);
                    mark.lineTo(c.x(), c.y() - 3);
                } else {
                    mark.moveTo(c.x() - 4, c.y() - 2);
                    mark.lineTo(c.x() + 4, c.y() - 2);
                    mark.lineTo(c.x(), c.y() + 3);
                }
                mark.closeSubpath();
                painter.save();
                painter.setRenderHint(QPainter::Antialiasing);
                painter.fillPath(mark, pal.color(QPalette::ButtonText));
                painter.restore();
            }
            painter.setPen(pal.color(QPalette::ButtonText));
            painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                             metrics.elidedText(labelText(column), Qt::ElideRight, std::max(0, textRect.width())));
        }
        if (p == keyboardColumn() && hasFocus()) {
            // The column the keys act on.
            painter.save();
            painter.setPen(QPen(pal.color(QPalette::Highlight), 1, Qt::DotLine));
            painter.drawRect(cell.adjusted(1, 1, -2, -2));
            painter.restore();
        }
        const int rule = mDividers[p] + kSeparator / 2;
        const bool dragged = mDivider.active && mDivider.index == p;
        painter.setPen(QPen(dragged ? pal.color(QPalette::Highlight) : pal.color(QPalette::Mid), dragged ? 2 : 1));
        painter.drawLine(rule, 3, rule, height() - 4);
    }
}

QPixmap Kel_Header::columnPicture(int position)
{
    validateDividerList();
    const int w = std::max(1, mDrag.width);
    QPixmap picture(w, std::max(1, height()));
    const QPalette& pal = palette();
    picture.fill(pal.color(QPalette::Light));
    QPainter painter(&picture);
    painter.setPen(pal.color(QPalette::Dark));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.setFont(labelFont());
    painter.setPen(pal.color(QPalette::ButtonText));
    const QRect textRect = picture.rect().adjusted(4, 0, -4, 0);
    painter.drawText(textRect, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(labelText(columnAt(position)), Qt::ElideRight,
                                                      std::max(0, textRect.width())));
    return picture;
}

// --- mouse --------------------------------------------------------------

void Kel_Header::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int divider = dividerIndexForPos(event->pos().x());
    const long column = columnAt(divider);
    if (divider >= 0 && column >= 0 && mWidth.isConnected()) {
        mDivider.active = true;
        mDivider.index = divider;
        mDivider.pressX = event->pos().x();
        mDivider.startWidth = mWidth->element<long>(column, 0);
        setCursor(Qt::SplitHCursor);
        repaint();
        return;
    }
    mLabelPressed = true;
    mLabelPressAt = event->pos();
}

void Kel_Header::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->pos();
    if (mDivider.active) {
        dragDividerTo(at.x(), at.y());
    } else if (mDrag.active) {
        trackColumnDrag(at);
    } else if (mLabelPressed) {
        if ((at - mLabelPressAt).manhattanLength() <= QApplication::startDragDistance())
            return;
        mLabelPressed = false;
        const int position = columnIndexForPos(mLabelPressAt);
        if (position >= 0 && mVisibleContainer.isConnected()) {
            startColumnDrag(position, mLabelPressAt);
            if (mDrag.active)
                trackColumnDrag(at);
        }
    } else {
        updateHoverCursor(at.x());
    }
}

void Kel_Header::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint at = event->pos();
    const bool labelClick = mLabelPressed;
    mLabelPressed = false;
    if (mDivider.active) {
        dragDividerTo(at.x(), at.y());
        mDivider = DividerDrag();
        repaint();
        updateHoverCursor(at.x());
        return;
    }
    if (mDrag.active) {
        trackColumnDrag(at);
        stopColumnDrag();
        return;
    }
    if (event->button() == Qt::LeftButton) {
        if (labelClick)
            sortByPosition(columnIndexForPos(at));
    } else if (event->button() == Qt::RightButton) {
        openContextMenu(mapToGlobal(at), columnIndexForPos(at));
    }
}

void Kel_Header::leaveEvent(QEvent* event)
{
    if (!mDivider.active)
        unsetCursor();
    QWidget::leaveEvent(event);
}

void Kel_Header::updateHoverCursor(int x)
{
    if (dividerIndexForPos(x) >= 0)
        setCursor(Qt::SplitHCursor);
    else
        unsetCursor();
}

void Kel_Header::dragDividerTo(int x, int y)
{
    const long column = columnAt(mDivider.index);
    if (column < 0 || !mWidth.isConnected())
        return;
    const long minimum = mMinWidth->element<long>(column, 0);
    const long start = std::max(mDivider.startWidth, minimum);
    long width = start + (x - mDivider.pressX);
    // Far above or below the header the resize is taken back.
    if (y < -kResizeCancelBand || y > height() + kResizeCancelBand)
        width = start;
    width = std::max(width, minimum);
    if (width != mWidth->element<long>(column, 0))
        mWidth->setElement<long>(column, width);
}

// --- keyboard -----------------------------------------------------------

QString Kel_Header::columnLabel(int position) const
{
    const long column = columnAt(position);
    return column < 0 ? QString() : labelText(column);
}

bool Kel_Header::isSortedBy(int position, bool* ascending) const
{
    const long column = columnAt(position);
    const bool sorted = column >= 0 && mIsSorted->element<bool>(column, false);
    if (ascending)
        *ascending = sorted && mIsSortedAscending->element<bool>(column, true);
    return sorted;
}

QRect Kel_Header::labelRect(int position)
{
    validateDividerList();
    if (position < 0 || position >= mDividers.size())
        return QRect();
    const int left = columnLeft(position) + kInset;
    return QRect(left, 0, mDividers[position] - left, height());
}

void Kel_Header::sortByPosition(int position)
{
    const long column = columnAt(position);
    if (column < 0 || !mSortByColumn.isConnected())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    mSortByColumn->triggerElement(column);
    QApplication::restoreOverrideCursor();
}

void Kel_Header::showContextMenu(int position)
{
    const QRect label = labelRect(position);
    const QPoint at = label.isNull() ? QPoint(0, height()) : label.bottomLeft() + QPoint(0, 1);
    openContextMenu(mapToGlobal(at), columnAt(position) >= 0 ? position : -1);
}

int Kel_Header::keyboardColumn() const
{
    const int count = int(visibleCount());
    return count > 0 ? qBound(0, mKeyPosition, count - 1) : -1;
}

void Kel_Header::setKeyboardColumn(int position)
{
    const int count = int(visibleCount());
    const int chosen = count > 0 ? qBound(0, position, count - 1) : 0;
    if (chosen == mKeyPosition)
        return;
    mKeyPosition = chosen;
    update();
    reportKeyboardFocus();
}

void Kel_Header::reportKeyboardFocus()
{
    const int position = keyboardColumn();
    if (!hasFocus() || position < 0 || !Kel_ViewAccessibility::reportsEvents())
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(position);
    Kel_ViewAccessibility::send(&event);
}

void Kel_Header::moveKeyboardColumn(int step)
{
    const int from = keyboardColumn();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= visibleCount() || !mVisibleContainer.isConnected())
        return;
    // The request a drag of the label makes; the model may refuse it.
    const QPointer<Kel_Header> self(this);
    if (!mVisibleContainer->requestMove(from, to) || !self)
        return;
    setKeyboardColumn(to);
}

void Kel_Header::resizeKeyboardColumn(long delta)
{
    const long column = columnAt(keyboardColumn());
    if (column < 0 || !mWidth.isConnected())
        return;
    const long minimum = mMinWidth->element<long>(column, 0);
    const long width = std::max(shownWidth(column) + delta, minimum);
    if (width != mWidth->element<long>(column, 0))
        mWidth->setElement<long>(column, width);
}

void Kel_Header::keyPressEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers =
        event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool ctrl = modifiers == Qt::ControlModifier;
    const bool ctrlShift = modifiers == (Qt::ControlModifier | Qt::ShiftModifier);
    const int step = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
    if (step != 0 && modifiers == Qt::NoModifier) {
        setKeyboardColumn(keyboardColumn() + step);
    } else if (step != 0 && ctrl) {
        moveKeyboardColumn(step);
    } else if (step != 0 && ctrlShift) {
        resizeKeyboardColumn(step * kKeyResizeStep);
    } else if ((event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
               modifiers == Qt::NoModifier) {
        sortByPosition(keyboardColumn());
    } else if ((event->key() == Qt::Key_Menu && modifiers == Qt::NoModifier) ||
               (event->key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier)) {
        showContextMenu(keyboardColumn());
    } else {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void Kel_Header::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
    reportKeyboardFocus();
}

void Kel_Header::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void Kel_Header::contextMenuEvent(QContextMenuEvent* event)
{
    // The right button opens the menu on release; the menu key arrives here
    // when the platform turns it into a context-menu event.
    if (event->reason() == QContextMenuEvent::Keyboard && !mMenuP)
        showContextMenu(keyboardColumn());
    event->accept();
}

// --- column drag --------------------------------------------------------

void Kel_Header::startColumnDrag(int position, const QPoint& pressAt)
{
    const long column = columnAt(position);
    if (column < 0)
        return;
    mDrag = ColumnDrag();
    mDrag.active = true;
    mDrag.grabOffset = pressAt.x() - columnLeft(position);
    mDrag.width = int(shownWidth(column));
    mDrag.column = column;
    mDrag.startPosition = position;
    mDrag.position = position;

    const QPointer<Kel_Header> self(this);
    Kel_TransparentOverlay* overlay = mCreateOverlay ? mCreateOverlay(this) : new Kel_TransparentOverlay(this);
    if (!self) {
        delete overlay;
        return;
    }
    mDrag.overlay = overlay;
    if (overlay) {
        overlay->setPixmap(columnPicture(position));
        overlay->resize(overlay->sizeHint());
        overlay->setAlpha(kOverlayAlpha, true);
        placeOverlay(pressAt.x() - mDrag.grabOffset);
        overlay->show();
    }
    if (mColumnBeingDragged.set(long(position)) == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    repaint();
}

void Kel_Header::placeOverlay(int left)
{
    if (mDrag.overlay)
        mDrag.overlay->move(mapToGlobal(QPoint(left, 0)));
}

bool Kel_Header::isInCancelBand(const QPoint& at) const
{
    const int overlayHeight = mDrag.overlay ? mDrag.overlay->height() : height();
    return at.x() < -kDragCancelSide || at.x() > width() + kDragCancelSide || at.y() < -kDragCancelVertical ||
           at.y() > overlayHeight + kDragCancelVertical;
}

bool Kel_Header::moveDraggedColumnTo(int target)
{
    if (target == mDrag.position)
        return true;
    const QPointer<Kel_Header> self(this);
    if (!mVisibleContainer->requestMove(mDrag.position, target) || !self)
        return false;
    mDrag.position = target;
    if (mColumnBeingDragged.set(long(target)) == Kel_BoundPropertyBase::kOwnerDeleted)
        return false;
    repaint();
    return true;
}

void Kel_Header::trackColumnDrag(const QPoint& at)
{
    if (!mDrag.active)
        return;
    // Columns hidden, shown or moved by someone else under the drag: where
    // the dragged column is, and where it started, are no longer known.
    if (columnAt(mDrag.position) != mDrag.column) {
        stopColumnDrag();
        return;
    }
    const int left = at.x() - mDrag.grabOffset;
    placeOverlay(left);

    if (isInCancelBand(at)) {
        if (!mDrag.cancelled) {
            mDrag.cancelled = true;
            if (mDrag.overlay)
                mDrag.overlay->hide();
            moveDraggedColumnTo(mDrag.startPosition);
        }
        return;
    }
    if (mDrag.cancelled) {
        mDrag.cancelled = false;
        if (mDrag.overlay)
            mDrag.overlay->show();
    }

    const int right = left + mDrag.width;
    const int a = columnIndexForPos(QPoint(left, 0));
    const int b = columnIndexForPos(QPoint(right, 0));
    const int n = int(visibleCount());
    const int c = mDrag.position;
    int target = c;
    if (a >= 0 && a < n - 1 && a <= c && b <= c)
        target = left >= centerOfColumn(a) ? a + 1 : a; // moving left
    else if (b < 0 || b >= n || a < c || b < c)
        target = c;
    else
        target = right <= centerOfColumn(b) ? b - 1 : b; // moving right
    if (target != c)
        moveDraggedColumnTo(target);
}

void Kel_Header::stopColumnDrag()
{
    if (!mDrag.active)
        return;
    if (mDrag.overlay) {
        mDrag.overlay->hide();
        mDrag.overlay->deleteLater();
    }
    mDrag = ColumnDrag();
    if (mColumnBeingDragged.set(-1L) == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    repaint();
}

// --- context menu -------------------------------------------------------

void Kel_Header::openContextMenu(const QPoint& globalAt, int position)
{
    delete mMenuP.data();
    auto* menu = new Kel_PopupMenu(this, "HeaderContextMenu");
    const Mvt_SimpleValue<QProxyStyle*>::Listener styleOverride(QStringLiteral("PellaTool.StyleOverride"),
                                                               Mv_ConnectionEnvironment::blankEnvironment());
    QProxyStyle* style = nullptr;
    if (styleOverride.get(style) && style)
        menu->setStyle(style);

    mMenuP = menu;
    mMenuPosition = position;
    fillContextMenu(menu, position);
    connect(menu, &QMenu::triggered, this, &Kel_Header::contextMenuItemTriggered);
    connect(menu, &QMenu::aboutToHide, menu, [menu] { menu->deleteLater(); });
    menu->popup(globalAt);
}

void Kel_Header::fillContextMenu(Kel_PopupMenu* menu, int position)
{
    const long clicked = columnAt(position);
    QAction* hide = menu->insertItem(tr("Hide this Column", "context menu item"), kHideItem);
    hide->setEnabled(clicked >= 0 && mHideColumn.isConnected() && mCanHide->element<bool>(clicked, false));

    const long hiddenCount = mHiddenContainer.isConnected() ? mHiddenContainer->size() : mHiddenColumns->size();
    if (hiddenCount > 0 && mHiddenColumns.isConnected()) {
        menu->addSeparator();
        for (long h = 0; h < hiddenCount; ++h) {
            const long column = mHiddenColumns->element<long>(h, -1);
            if (column < 0)
                continue;
            QAction* show = menu->insertItem(
                tr("Show %1", "Hide/Show column menu. %1 will be replaced with name of column to be shown")
                    .arg(labelText(column)),
                QString::number(column));
            show->setEnabled(mShowColumn.isConnected());
        }
    }

    const bool canAdd = mAddNewColumn.isConnected() && hasCreatePropertyPrivs();
    if (canAdd || mColumnSelection.isConnected())
        menu->addSeparator();
    if (canAdd)
        menu->insertItem(tr("New Column", "context menu item"), kNewItem);
    if (mColumnSelection.isConnected())
        menu->insertItem(tr("Select Working Set of Columns", "context menu item"), kSelectItem);

    QMap<QString, QMenu*> submenus;
    for (int group = 0; group < 3; ++group) {
        bool separated = false;
        for (const ExtraItem& item : mExtraItems) {
            if (extraGroup(item.identifier) != group)
                continue;
            if (!separated) {
                menu->addSeparator();
                separated = true;
            }
            if (item.submenu.isEmpty()) {
                menu->insertItem(item.text, item.identifier);
                continue;
            }
            QMenu*& sub = submenus[item.submenu];
            if (!sub)
                sub = menu->addMenu(item.submenu);
            QAction* action = sub->addAction(item.text);
            action->setData(item.identifier);
        }
    }
}

void Kel_Header::contextMenuItemTriggered(QAction* action)
{
    if (!action)
        return;
    const QString identifier = action->data().toString();
    const int position = mMenuPosition;
    const long column = columnAt(position);
    const long append = visibleCount();
    const long at = position >= 0 && column >= 0 ? position : append;

    if (identifier == kHideItem) {
        if (column >= 0)
            mHideColumn->triggerElement(column);
        return;
    }
    if (identifier == kNewItem) {
        mAddNewColumn->call(at);
        return;
    }
    if (identifier == kSelectItem) {
        mColumnSelection->call();
        return;
    }
    for (const ExtraItem& item : mExtraItems) {
        if (item.identifier == identifier) {
            handleExtraItemsAction(identifier, int(column));
            return;
        }
    }
    bool isNumber = false;
    const long hidden = identifier.toLong(&isNumber);
    if (isNumber && hidden >= 0)
        mShowColumn->triggerElement(hidden, Mvt_Action_API::ArgumentList{Mv_Variant::wrap(at)});
}

void Kel_Header::handleExtraItemsAction(const QString& identifier, int column)
{
    emit contextMenuItemChosen(identifier, column);
}

bool Kel_Header::hasCreatePropertyPrivs() const
{
    QFile file(Ost_Resource::getResourcePath() + QStringLiteral("Settings.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return true;
    Ost_Setting settings;
    settings.SetStartRoot(QStringLiteral("Windows"));
    if (!settings.SetXML(QString::fromUtf8(file.readAll()), false))
        return true;
    QString value;
    return !settings.GetParam(QStringLiteral("Privileges.CreateProperty"), value) ||
           value.trimmed().compare(QLatin1String("false"), Qt::CaseInsensitive) != 0;
}
