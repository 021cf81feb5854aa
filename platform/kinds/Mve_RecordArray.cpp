#include "Mve_RecordArray.h"

#include "Mv_Announcement.h"

#include <QStringList>

Mve_RecordArray::Mve_RecordArray(const QString& name)
    : Mvt_ArrayContainer(name)
{
}

Mve_RecordArray::~Mve_RecordArray()
{
    Mv_Announcement announcement;
    unpublishQuietly(announcement);
    announcement.run();
}

QStringList Mve_RecordArray::fieldNames() const
{
    QStringList names;
    for (const auto& f : mFields)
        names.append(f.first);
    return names;
}

int Mve_RecordArray::fieldIndex(const QString& field) const
{
    for (size_t i = 0; i < mFields.size(); ++i) {
        if (mFields[i].first == field)
            return int(i);
    }
    return -1;
}

QString Mve_RecordArray::fieldName(const QString& field) const
{
    return GetConnectionName() + QLatin1Char('.') + field;
}

void Mve_RecordArray::silenceFields()
{
    for (auto& f : mFields)
        f.second->silence();
}

void Mve_RecordArray::restoreFields()
{
    for (auto& f : mFields)
        f.second->restore();
}

void Mve_RecordArray::notifyRowsReplaced(long first, long removedEnd, long insertedCount)
{
    if (mUpdateDepth == 0)
        notifyAll([=](Mvt_ArrayContainer& c) { c.notifyElementsReplaced(first, removedEnd, insertedCount); });
}

void Mve_RecordArray::beginUpdate()
{
    if (mUpdateDepth++ == 0) {
        mRowsBeforeUpdate = mRows;
        silenceFields();
    }
}

void Mve_RecordArray::endUpdate()
{
    if (mUpdateDepth == 0 || --mUpdateDepth > 0)
        return;
    restoreFields();
    notifyRowsReplaced(0, mRowsBeforeUpdate, mRows);
}

void Mve_RecordArray::insertRows(long row, long count)
{
    if (count < 1)
        return;
    row = std::max(0L, std::min(row, mRows));
    silenceFields();
    for (auto& f : mFields)
        f.second->insertDefaults(row, count);
    restoreFields();
    mRows += count;
    notifyRowsReplaced(row, row, count);
}

long Mve_RecordArray::appendRow()
{
    insertRows(mRows, 1);
    return mRows - 1;
}

void Mve_RecordArray::removeRows(long row, long count)
{
    if (row < 0 || row >= mRows || count < 1)
        return;
    const long end = std::min(mRows, row + count);
    silenceFields();
    for (auto& f : mFields)
        f.second->remove(row, end - row);
    restoreFields();
    mRows -= end - row;
    notifyRowsReplaced(row, end, 0);
}

bool Mve_RecordArray::moveRow(long from, long to)
{
    if (from < 0 || from >= mRows || to < 0 || to >= mRows || from == to)
        return false;
    silenceFields();
    for (auto& f : mFields)
        f.second->move(from, to);
    restoreFields();
    if (mUpdateDepth == 0)
        notifyAll([=](Mvt_ArrayContainer& c) { c.notifyElementsMoved(from, to); });
    return true;
}

void Mve_RecordArray::setReadOnly(bool readOnly)
{
    mReadOnly = readOnly;
    for (auto& f : mFields)
        f.second->setReadOnly(readOnly);
}

void Mve_RecordArray::clearRows()
{
    removeRows(0, mRows);
}

// The record first, then each field; by index, since a listener may add
// fields meanwhile.
template <class Notify>
void Mve_RecordArray::notifyAll(Notify&& notify)
{
    Guard guard(this);
    notify(*this);
    for (size_t i = 0; guard.alive() && i < mFields.size(); ++i)
        notify(mFields[i].second->model());
}

bool Mve_RecordArray::publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement)
{
    if (!Mvt_ArrayContainer::publishQuietly(dict, announcement)) {
        // It may have left another dictionary on the way: the fields follow.
        unpublishQuietly(announcement);
        return false;
    }
    for (auto& f : mFields) {
        Mv_ModelBase& field = f.second->model();
        const QString name = fieldName(f.first);
        if (field.isPublished() && field.dictionary() == dictionary() && field.GetConnectionName() == name)
            continue;
        field.unpublishQuietly(announcement);
        field.SetConnectionName(name);
        field.publishQuietly(dictionary(), announcement);
    }
    return true;
}

void Mve_RecordArray::unpublishQuietly(Mv_Announcement& announcement)
{
    Mvt_ArrayContainer::unpublishQuietly(announcement);
    for (auto& f : mFields)
        f.second->model().unpublishQuietly(announcement);
}
