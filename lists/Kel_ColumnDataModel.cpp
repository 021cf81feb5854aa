#include "Kel_ColumnDataModel.h"

#include "Mv_Announcement.h"
#include "Mve_Action.h"
#include "Mve_ActionArray.h"
#include "Mve_Array.h"
#include "Mve_ContainerMirror.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <algorithm>
#include <initializer_list>

namespace {

const char* const kIdentifier = "identifier";
const char* const kLabel = "label";
const char* const kWidth = "width";
const char* const kMinWidth = "minWidth";
const char* const kViewType = "viewType";
const char* const kReadOnly = "readOnly";
const char* const kEnvironmentVars = "connectionEnvironmentVars";
const char* const kCanHide = "canHide";
const char* const kVisible = "visible";
const char* const kIsSorted = "isSorted";
const char* const kIsSortedAscending = "isSortedAscending";

// The column records. A column's index is its identity (the visible and
// hidden arrays hold indices), so listeners cannot reorder the rows.
class ColumnRecords : public Mve_RecordArray
{
protected:
    bool handleMoveElements(long, long) override { return false; }
};

// An array of column indices that listeners read and reorder but never
// write: a written index could show a column twice or lose one.
class ColumnIndexArray : public Mve_Array<long>
{
public:
    // Answers a listener's move request.
    std::function<bool(long, long)> moveRequested;

protected:
    bool handleMoveElements(long from, long to) override { return moveRequested && moveRequested(from, to); }
    bool handleElementMessage(long index, const Mv_MessageInterface& request) override
    {
        if (index < 0 || index >= size())
            return false;
        return Mvt_SimpleValue<long>::handleValueRequest(
            request,
            [this, index](long& v) {
                v = at(index);
                return true;
            },
            [](const long&) { return int(Mvt_SimpleValue_BaseAPI::kSetRefused); });
    }
};

// Changes several arrays silently, so that none tells its listeners before
// all of them agree; the caller notifies afterwards.
template <class Change, class... Arrays>
void quietly(Change&& change, Arrays*... arrays)
{
    (arrays->setNotifying(false), ...);
    change();
    (arrays->setNotifying(true), ...);
}

// Runs notifications in turn, stopping when a listener destroyed the models
// (guarded through one of them, which all share a lifetime).
void notifyInTurn(Mv_ModelBase* guarded, std::initializer_list<std::function<void()>> notifications)
{
    Mv_ModelBase::Guard guard(guarded);
    for (const auto& notify : notifications) {
        if (!guard.alive())
            return;
        notify();
    }
}

long indexIn(const std::vector<long>& values, long value)
{
    const auto it = std::find(values.begin(), values.end(), value);
    return it == values.end() ? -1 : long(it - values.begin());
}

} // namespace

class Kel_ColumnDataModel::Models
{
public:
    Models()
    {
        identifier = records.addField<QString>(kIdentifier);
        label = records.addField<QString>(kLabel);
        width = records.addField<long>(kWidth, 100);
        minWidth = records.addField<long>(kMinWidth, 20);
        viewType = records.addField<long>(kViewType, 0);
        readOnly = records.addField<bool>(kReadOnly, false);
        environmentVars = records.addField<QString>(kEnvironmentVars);
        canHide = records.addField<bool>(kCanHide, true);
        visibleFlag = records.addField<bool>(kVisible, false);
        isSorted = records.addField<bool>(kIsSorted, false);
        isSortedAscending = records.addField<bool>(kIsSortedAscending, true);
        // What the model keeps consistent is not for listeners to write.
        identifier->setReadOnly(true);
        visibleFlag->setReadOnly(true);
        isSorted->setReadOnly(true);
        isSortedAscending->setReadOnly(true);
    }

    // Every published model with its name's suffix after the base name.
    std::vector<std::pair<Mv_ModelBase*, QString>> named()
    {
        return {{&records, QString()},
                {&visible, QStringLiteral(".sortedVisibleColumns")},
                {&hidden, QStringLiteral(".hiddenColumns")},
                {&visibleMeta, QStringLiteral(".sortedVisibleColumns.arrayMetaData")},
                {&hiddenMeta, QStringLiteral(".hiddenColumns.arrayMetaData")},
                {&hide, QStringLiteral(".hideColumn")},
                {&sortBy, QStringLiteral(".sortByColumn")},
                {&show, QStringLiteral(".showColumn")},
                {&dragged, QStringLiteral(".columnBeingDragged")},
                {&add, QStringLiteral(".Actions.addNewColumn")}};
    }

    void resizeActions(long size)
    {
        hide.setSize(size);
        sortBy.setSize(size);
        show.setSize(size);
    }

    ColumnRecords records;
    Mve_Array<QString>* identifier;
    Mve_Array<QString>* label;
    Mve_Array<long>* width;
    Mve_Array<long>* minWidth;
    Mve_Array<long>* viewType;
    Mve_Array<bool>* readOnly;
    Mve_Array<QString>* environmentVars;
    Mve_Array<bool>* canHide;
    Mve_Array<bool>* visibleFlag;
    Mve_Array<bool>* isSorted;
    Mve_Array<bool>* isSortedAscending;
    ColumnIndexArray visible;
    ColumnIndexArray hidden;
    Mve_ContainerMirror visibleMeta;
    Mve_ContainerMirror hiddenMeta;
    Mve_ActionArray<void()> hide;
    Mve_ActionArray<void()> sortBy;
    Mve_ActionArray<void(long)> show;
    Mve_SimpleValue<long> dragged{-1};
    Mve_Action<void(long)> add;
};

Kel_ColumnDataModel::Kel_ColumnDataModel(const QString& baseName)
    : mBaseName(baseName), mModelsP(new Models)
{
    Models& m = *mModelsP;
    m.visible.moveRequested = [this](long from, long to) { return moveVisibleColumn(from, to); };
    m.hidden.moveRequested = [this](long from, long to) { return mModelsP->hidden.move(from, to); };
    m.hide.setFunction([this](long column) { hideColumn(column); });
    m.hide.setEnabledFunction(
        [this](long column) { return visiblePosition(column) >= 0 && mModelsP->canHide->at(column); });
    m.sortBy.setFunction([this](long column) { sortByColumn(column); });
    m.sortBy.setEnabledFunction([this](long) { return bool(mSort); });
    m.show.setFunction([this](long column, long position) { showColumn(column, position); });
    m.show.setEnabledFunction([this](long column) { return indexIn(mModelsP->hidden.values(), column) >= 0; });
}

Kel_ColumnDataModel::~Kel_ColumnDataModel()
{
    unpublish();
}

void Kel_ColumnDataModel::setBaseName(const QString& baseName)
{
    if (baseName == mBaseName)
        return;
    Mv_ConnectionDict* dict = isPublished() ? mModelsP->records.dictionary() : nullptr;
    unpublish();
    mBaseName = baseName;
    if (dict)
        publish(dict);
}

bool Kel_ColumnDataModel::publish(Mv_ConnectionDict* dict)
{
    if (mBaseName.isEmpty())
        return false;
    Models& m = *mModelsP;
    m.visibleMeta.setSourceName(mBaseName + QStringLiteral(".sortedVisibleColumns"));
    m.hiddenMeta.setSourceName(mBaseName + QStringLiteral(".hiddenColumns"));
    Mv_Announcement announcement;
    bool all = true;
    for (const auto& model : m.named()) {
        if (model.first->GetConnectionName() != mBaseName + model.second) {
            model.first->unpublishQuietly(announcement);
            model.first->SetConnectionName(mBaseName + model.second);
        }
        all = model.first->publishQuietly(dict, announcement) && all;
    }
    if (!all) {
        for (const auto& model : m.named())
            model.first->unpublishQuietly(announcement);
    }
    announcement.run();
    return all;
}

void Kel_ColumnDataModel::unpublish()
{
    Mv_Announcement announcement;
    for (const auto& model : mModelsP->named())
        model.first->unpublishQuietly(announcement);
    announcement.run();
}

bool Kel_ColumnDataModel::isPublished() const
{
    return mModelsP->records.isPublished();
}

long Kel_ColumnDataModel::addColumn(const Column& c, long position)
{
    Models& m = *mModelsP;
    const long index = m.records.rowCount();
    m.records.beginUpdate();
    m.records.appendRow();
    m.identifier->setAt(index, c.identifier);
    m.label->setAt(index, c.label);
    m.width->setAt(index, c.width);
    m.minWidth->setAt(index, c.minWidth);
    m.viewType->setAt(index, c.viewType);
    m.readOnly->setAt(index, c.readOnly);
    m.environmentVars->setAt(index, c.connectionEnvironmentVars);
    m.canHide->setAt(index, c.canHide);
    m.visibleFlag->setAt(index, c.visible);
    m.records.endUpdate();
    // The column is fully described before any list builds a cell for it.
    Mv_ModelBase::Guard guard(&m.visible);
    m.resizeActions(index + 1);
    if (!guard.alive())
        return index;
    if (c.visible) {
        if (position < 0 || position > m.visible.size())
            position = m.visible.size();
        m.visible.insert(position, index);
    } else {
        m.hidden.append(index);
    }
    return index;
}

long Kel_ColumnDataModel::addColumn(const QString& identifier, const QString& label, long width, long minWidth,
                                    long viewType, bool readOnly)
{
    Column c;
    c.identifier = identifier;
    c.label = label;
    c.width = width;
    c.minWidth = minWidth;
    c.viewType = viewType;
    c.readOnly = readOnly;
    return addColumn(c);
}

bool Kel_ColumnDataModel::removeColumn(long column)
{
    Models& m = *mModelsP;
    if (column < 0 || column >= columnCount())
        return false;
    const long oldVisible = m.visible.size();
    const long oldHidden = m.hidden.size();
    // Later columns move down one index, wherever they are shown.
    auto renumbered = [column](const std::vector<long>& values) {
        std::vector<long> result;
        for (long v : values) {
            if (v != column)
                result.push_back(v > column ? v - 1 : v);
        }
        return result;
    };
    quietly(
        [&] {
            m.visible.setValues(renumbered(m.visible.values()));
            m.hidden.setValues(renumbered(m.hidden.values()));
        },
        &m.visible, &m.hidden);
    notifyInTurn(&m.visible, {[&] { m.records.removeRows(column, 1); },
                              [&] { m.resizeActions(m.records.rowCount()); },
                              [&] { m.visible.notifyElementsReplaced(0, oldVisible, m.visible.size()); },
                              [&] { m.hidden.notifyElementsReplaced(0, oldHidden, m.hidden.size()); }});
    return true;
}

void Kel_ColumnDataModel::clearColumns()
{
    Models& m = *mModelsP;
    const long oldVisible = m.visible.size();
    const long oldHidden = m.hidden.size();
    quietly(
        [&] {
            m.visible.clear();
            m.hidden.clear();
        },
        &m.visible, &m.hidden);
    notifyInTurn(&m.visible, {[&] { m.records.clearRows(); },
                              [&] { m.resizeActions(0); },
                              [&] { m.visible.notifyElementsReplaced(0, oldVisible, 0); },
                              [&] { m.hidden.notifyElementsReplaced(0, oldHidden, 0); }});
}

long Kel_ColumnDataModel::columnCount() const
{
    return mModelsP->records.rowCount();
}

long Kel_ColumnDataModel::columnIndex(const QString& identifier) const
{
    const auto& ids = mModelsP->identifier->values();
    const auto it = std::find(ids.begin(), ids.end(), identifier);
    return it == ids.end() ? -1 : long(it - ids.begin());
}

Kel_ColumnDataModel::Column Kel_ColumnDataModel::column(long index) const
{
    const Models& m = *mModelsP;
    Column c;
    if (index < 0 || index >= columnCount())
        return c;
    c.identifier = m.identifier->at(index);
    c.label = m.label->at(index);
    c.width = m.width->at(index);
    c.minWidth = m.minWidth->at(index);
    c.viewType = m.viewType->at(index);
    c.readOnly = m.readOnly->at(index);
    c.connectionEnvironmentVars = m.environmentVars->at(index);
    c.canHide = m.canHide->at(index);
    c.visible = m.visibleFlag->at(index);
    return c;
}

template <class T>
bool Kel_ColumnDataModel::setField(long column, const char* field, const T& value)
{
    return mModelsP->records.setValue<T>(column, QLatin1String(field), value);
}

bool Kel_ColumnDataModel::setLabel(long column, const QString& label)
{
    return setField(column, kLabel, label);
}

bool Kel_ColumnDataModel::setWidth(long column, long width)
{
    return setField(column, kWidth, width);
}

bool Kel_ColumnDataModel::setMinWidth(long column, long minWidth)
{
    return setField(column, kMinWidth, minWidth);
}

bool Kel_ColumnDataModel::setViewType(long column, long viewType)
{
    return setField(column, kViewType, viewType);
}

bool Kel_ColumnDataModel::setReadOnly(long column, bool readOnly)
{
    return setField(column, kReadOnly, readOnly);
}

bool Kel_ColumnDataModel::setCanHide(long column, bool canHide)
{
    return setField(column, kCanHide, canHide);
}

bool Kel_ColumnDataModel::setConnectionEnvironmentVars(long column, const QString& assignments)
{
    return setField(column, kEnvironmentVars, assignments);
}

std::vector<long> Kel_ColumnDataModel::visibleColumns() const
{
    return mModelsP->visible.values();
}

std::vector<long> Kel_ColumnDataModel::hiddenColumns() const
{
    return mModelsP->hidden.values();
}

long Kel_ColumnDataModel::visiblePosition(long column) const
{
    return indexIn(mModelsP->visible.values(), column);
}

bool Kel_ColumnDataModel::hideColumn(long column)
{
    Models& m = *mModelsP;
    const long position = visiblePosition(column);
    if (position < 0)
        return false;
    const long hiddenAt = m.hidden.size();
    quietly(
        [&] {
            m.visible.removeAt(position);
            m.hidden.append(column);
            m.visibleFlag->setAt(column, false);
        },
        &m.visible, &m.hidden, m.visibleFlag);
    notifyInTurn(&m.visible, {[&] { m.visible.notifyElementsReplaced(position, position + 1, 0); },
                              [&] { m.hidden.notifyElementsReplaced(hiddenAt, hiddenAt, 1); },
                              [&] { m.visibleFlag->notifyElementValueChanged(column); }});
    return true;
}

bool Kel_ColumnDataModel::showColumn(long column, long position)
{
    Models& m = *mModelsP;
    const long hiddenAt = indexIn(m.hidden.values(), column);
    if (hiddenAt < 0)
        return false;
    if (position < 0 || position > m.visible.size())
        position = m.visible.size();
    quietly(
        [&] {
            m.hidden.removeAt(hiddenAt);
            m.visible.insert(position, column);
            m.visibleFlag->setAt(column, true);
        },
        &m.visible, &m.hidden, m.visibleFlag);
    notifyInTurn(&m.visible, {[&] { m.visible.notifyElementsReplaced(position, position, 1); },
                              [&] { m.hidden.notifyElementsReplaced(hiddenAt, hiddenAt + 1, 0); },
                              [&] { m.visibleFlag->notifyElementValueChanged(column); }});
    return true;
}

bool Kel_ColumnDataModel::moveVisibleColumn(long from, long to)
{
    return mModelsP->visible.move(from, to);
}

bool Kel_ColumnDataModel::sortByColumn(long column)
{
    return sortByColumn(column, !(sortColumn() == column && isSortedAscending()));
}

bool Kel_ColumnDataModel::sortByColumn(long column, bool ascending)
{
    if (!mSort || column < 0 || column >= columnCount())
        return false;
    // The function may replace itself (or more) while it sorts.
    const SortFunction sort = mSort;
    if (!sort(column, ascending))
        return false;
    return setSortFlags(column, ascending);
}

bool Kel_ColumnDataModel::setSortFlags(long sorted, bool ascending)
{
    Models& m = *mModelsP;
    Mv_ModelBase::Guard guard(&m.records);
    for (long c = 0; guard.alive() && c < columnCount(); ++c) {
        if (c != sorted)
            m.isSorted->setAt(c, false);
    }
    if (!guard.alive() || sorted < 0 || sorted >= columnCount())
        return guard.alive();
    // Direction first, so that a listener hearing "sorted" reads the right one.
    m.isSortedAscending->setAt(sorted, ascending);
    if (guard.alive())
        m.isSorted->setAt(sorted, true);
    return true;
}

long Kel_ColumnDataModel::sortColumn() const
{
    const auto& flags = mModelsP->isSorted->values();
    const auto it = std::find(flags.begin(), flags.end(), true);
    return it == flags.end() ? -1 : long(it - flags.begin());
}

bool Kel_ColumnDataModel::isSortedAscending() const
{
    const long c = sortColumn();
    return c >= 0 && mModelsP->isSortedAscending->at(c);
}

void Kel_ColumnDataModel::clearSort()
{
    setSortFlags(-1, true);
}

void Kel_ColumnDataModel::setSortFunction(const SortFunction& sort)
{
    mSort = sort;
}

void Kel_ColumnDataModel::setAddColumnFunction(const AddColumnFunction& add)
{
    mAdd = add;
    Mve_Action<void(long)>& action = mModelsP->add;
    if (mAdd) {
        action.setFunction([this](long position) {
            const AddColumnFunction f = mAdd; // it may replace itself
            f(position);
        });
    } else {
        action.setFunction(Mve_Action<void(long)>::Function());
    }
    action.notifyEnabledChanged();
}

long Kel_ColumnDataModel::columnBeingDragged() const
{
    return mModelsP->dragged.getValue();
}

const Mve_RecordArray& Kel_ColumnDataModel::records() const
{
    return mModelsP->records;
}
