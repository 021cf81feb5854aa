#include "Kel_WidgetList.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_ViewAccessibility.h"
#include "Mv_Utils.h"
#include "Mvt_ArrayContainer_Notifications.h"
#include "Mvt_SimpleValue_Notifications.h"
#include "Ost_Assert.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QPointer>
#include <QRegularExpression>
#include <algorithm>

namespace {

QRect globalRectOf(const QWidget* widget)
{
    return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
}

} // namespace

Kel_WidgetList::Kel_WidgetList(QWidget* parent, const char* name, const NewRowCB& newRowCB)
    : QWidget(parent), mNewRowCB(newRowCB), mLayoutP(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    setObjectName(QString::fromLatin1(name));
    mLayoutP->setContentsMargins(0, 0, 0, 0);
    // Rows keep their own height at the top; the stretch after the last one takes the rest.
    mLayoutP->addStretch(1);
    mList.onMessage([this](const Mv_MessageInterface& message) { handleListMessage(message); });
    // Its rows are told to screen readers in row order.
    Kel_ViewAccessibility::install();
}

void Kel_WidgetList::rowsReordered()
{
    if (!Kel_ViewAccessibility::reportsEvents())
        return;
    QAccessibleEvent event(this, QAccessible::ObjectReorder);
    Kel_ViewAccessibility::send(&event);
}

Kel_WidgetList::~Kel_WidgetList()
{
    // The rows go before their index models, so that no row hears its index leave.
    for (RowData& row : mRowData)
        delete row.widget;
}

QWidget* Kel_WidgetList::newRow()
{
    QWidget* widget = mNewRowCB ? mNewRowCB() : nullptr;
    return widget ? widget : new QWidget();
}

Mv_ConnectionDict* Kel_WidgetList::dictionary() const
{
    return mEnvironment ? mEnvironment->getDictionary() : nullptr;
}

void Kel_WidgetList::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    const QPointer<Kel_WidgetList> self(this);
    mEnvironment = environment ? environment : Mv_ConnectionEnvironment::blankEnvironment();
    ++mConnectRound;
    // $Row must resolve where the rows' names do.
    for (RowData& row : mRowData) {
        if (!row.index->isPublished() || row.index->dictionary() != dictionary())
            row.index->Publish(dictionary());
    }
    // Rows that the array's notification makes now are connected as they come.
    if (!mList.connect(mEnvironment))
        return;
    for (size_t i = 0; i < mRowData.size(); ++i) {
        if (mRowData[i].connectedRound == mConnectRound)
            continue;
        connectRow(mRowData[i]);
        if (!self)
            return;
    }
}

void Kel_WidgetList::connectRow(RowData& row)
{
    if (!mEnvironment)
        return;
    auto rowEnvironment = Mv_ConnectionEnvironment::create(mEnvironment);
    rowEnvironment->set(QStringLiteral("Row"), row.index->GetConnectionName());
    row.connectedRound = mConnectRound;
    Kel_ConnectionUtils::recursiveConnect(row.widget, rowEnvironment);
}

long Kel_WidgetList::rowToIndex(QWidget* row) const
{
    const auto found = std::find_if(mRowData.begin(), mRowData.end(),
                                    [row](const RowData& data) { return data.widget == row; });
    return found == mRowData.end() ? -1 : long(found - mRowData.begin());
}

QWidget* Kel_WidgetList::indexToRow(long index) const
{
    if (index < 0 || index >= rowSize()) {
        Ost_Assert::handleFailedAssert("iIndex >= 0 && indx < mRowData.size()", __FILE__, __LINE__);
        return nullptr;
    }
    return mRowData[size_t(index)].widget;
}

QString Kel_WidgetList::rowConnectionName(long index) const
{
    return index >= 0 && index < rowSize() ? mRowData[size_t(index)].index->GetConnectionName() : QString();
}

void Kel_WidgetList::insertRow(long index)
{
    const QPointer<Kel_WidgetList> self(this);
    QPointer<QWidget> widget(newRow());
    if (!self) {
        delete widget.data();
        return;
    }
    if (!widget)
        widget = new QWidget();

    const QString listName = objectName().isEmpty() ? QStringLiteral("Kel_WidgetList") : objectName();
    auto model = std::make_unique<IndexModel>(0L, Mv_Utils::Mv_UniqueConnString(listName + QStringLiteral("::Row%1")));

    // The rows from the last down to index move down one, so that no two
    // rows ever share a position.
    index = std::max(0L, std::min(index, rowSize()));
    for (long r = rowSize() - 1; r >= index && self; --r) {
        if (r < rowSize())
            mRowData[size_t(r)].index->setValue(r + 1);
    }
    if (!self) {
        delete widget.data();
        return;
    }
    index = std::min(index, rowSize());
    model->setValue(index);
    model->Publish(dictionary());
    mRowData.insert(mRowData.begin() + index, RowData{widget.data(), std::move(model), 0});
    // Into the layout before connecting, so that rows that a notification
    // inserts meanwhile find the layout in row order.
    mLayoutP->insertWidget(int(index), widget.data());

    const long at = rowToIndex(widget.data());
    if (at >= 0)
        connectRow(mRowData[size_t(at)]);
    if (self && widget && rowToIndex(widget.data()) >= 0)
        widget->show();
    if (self)
        rowsReordered();
}

void Kel_WidgetList::deleteRows(long startIndex, long endIndex)
{
    if (startIndex < 0) {
        OST_ASSERT(startIndex >= 0);
        return;
    }
    endIndex = std::min(endIndex, rowSize() - 1);
    if (startIndex > endIndex) {
        OST_ASSERT(startIndex <= endIndex);
        return;
    }
    const QPointer<Kel_WidgetList> self(this);
    std::vector<RowData> removed(std::make_move_iterator(mRowData.begin() + startIndex),
                                 std::make_move_iterator(mRowData.begin() + endIndex + 1));
    mRowData.erase(mRowData.begin() + startIndex, mRowData.begin() + endIndex + 1);
    for (RowData& row : removed) {
        mLayoutP->removeWidget(row.widget);
        row.widget->hide();
        row.widget->deleteLater();
    }
    removed.clear(); // the index models leave the dictionary
    for (long r = startIndex; self && r < rowSize(); ++r)
        mRowData[size_t(r)].index->setValue(r);
    if (self)
        rowsReordered();
}

void Kel_WidgetList::moveRow(long from, long to)
{
    if (from < 0 || from >= rowSize() || to < 0 || to >= rowSize())
        return;
    const QPointer<Kel_WidgetList> self(this);
    RowData row = std::move(mRowData[size_t(from)]);
    mRowData.erase(mRowData.begin() + from);
    mLayoutP->removeWidget(row.widget);
    // While it is out the row holds a position that no row can have, so
    // that no two rows share one while the others are renumbered.
    row.index->setValue(rowSize() + 10);
    if (from < to) {
        for (long r = from; self && r < to && r < rowSize(); ++r)
            mRowData[size_t(r)].index->setValue(r);
    } else {
        for (long r = to; self && r < from && r < rowSize(); ++r)
            mRowData[size_t(r)].index->setValue(r + 1);
    }
    if (!self)
        return;
    to = std::min(to, rowSize());
    QWidget* widget = row.widget;
    IndexModel* index = row.index.get();
    mRowData.insert(mRowData.begin() + to, std::move(row));
    mLayoutP->insertWidget(int(to), widget);
    index->setValue(to);
    if (self)
        repaint();
    if (self)
        rowsReordered();
}

void Kel_WidgetList::setRowCount(long size)
{
    const QPointer<Kel_WidgetList> self(this);
    if (rowSize() > size)
        deleteRows(std::max(0L, size), rowSize() - 1);
    while (self && rowSize() < size)
        appendRow();
}

void Kel_WidgetList::handleListMessage(const Mv_MessageInterface& message)
{
    typedef Mvt_ArrayContainer_Notifications N;
    const QPointer<Kel_WidgetList> self(this);
    if (const auto* replaced = message.as<N::MsgElementsReplaced>()) {
        if (replaced->first() < replaced->removedEnd())
            deleteRows(replaced->first(), replaced->removedEnd() - 1);
        for (long i = 0; self && i < replaced->insertedCount(); ++i)
            insertRow(replaced->first() + i);
        // Rows that fell out of step with the array (a notification lost to
        // a nested change) are realigned at the end.
        if (self && rowSize() != replaced->newSize())
            setRowCount(replaced->newSize());
        return;
    }
    if (const auto* moved = message.as<N::MsgElementsMoved>()) {
        moveRow(moved->from(), moved->to());
        return;
    }
    if (message.is<N::MsgElementValueChanged>() || message.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
        return; // the rows listen to their elements themselves
    // Connected or disconnected: the rows follow the array's size, and go
    // when the array goes.
    setRowCount(mList.isConnected() ? mList->size() : 0);
}

bool Kel_WidgetList::findPoi(const QString& dottedName, QRect* globalRect)
{
    if (dottedName.isEmpty()) {
        Ost_Assert::handleFailedAssert("!isEmpty()", __FILE__, __LINE__);
        return false;
    }
    QWidget* found = nullptr;
    if (dottedName == objectName()) {
        found = this;
    } else {
        static const QRegularExpression rowName(QStringLiteral("^Row(.*)"));
        const QRegularExpressionMatch match = rowName.match(dottedName);
        if (!match.hasMatch())
            return false;
        const QString rest = match.captured(1);
        const int dot = rest.indexOf(QLatin1Char('.'));
        bool isNumber = false;
        const long index = rest.left(dot).toLong(&isNumber);
        if (!isNumber || index < 0 || index >= rowSize())
            return false;
        found = mRowData[size_t(index)].widget;
        if (dot >= 0) {
            const QString path = rest.mid(dot + 1);
            const QString head = path.section(QLatin1Char('.'), 0, 0);
            found = head.isEmpty() ? nullptr : found->findChild<QWidget*>(head);
            if (!found)
                return false;
            if (auto* finder = dynamic_cast<Kel_IPointOfInterestFinder*>(found))
                return finder->findPoi(path, globalRect);
            if (path != head)
                return false;
        }
    }
    if (globalRect)
        *globalRect = globalRectOf(found);
    return true;
}
