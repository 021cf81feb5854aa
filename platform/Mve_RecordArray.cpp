#include "Mve_RecordArray.h"

#include <QStringList>

Mve_RecordArray::Mve_RecordArray(const QString& name)
    : Mvt_ArrayContainer(name)
{
}

Mve_RecordArray::~Mve_RecordArray()
{
    UnPublish();
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

void Mve_RecordArray::setFieldsNotifying(bool on)
{
    for (auto& f : mFields)
        f.second->setNotifying(on);
}

void Mve_RecordArray::insertRows(long row, long count)
{
    if (count < 1)
        return;
    row = std::max(0L, std::min(row, mRows));
    setFieldsNotifying(false);
    for (auto& f : mFields)
        f.second->insertDefaults(row, count);
    setFieldsNotifying(true);
    mRows += count;
    notifyElementsReplaced(row, row, count);
    for (auto& f : mFields)
        f.second->model().notifyElementsReplaced(row, row, count);
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
    setFieldsNotifying(false);
    for (auto& f : mFields)
        f.second->remove(row, end - row);
    setFieldsNotifying(true);
    mRows -= end - row;
    notifyElementsReplaced(row, end, 0);
    for (auto& f : mFields)
        f.second->model().notifyElementsReplaced(row, end, 0);
}

void Mve_RecordArray::moveRow(long from, long to)
{
    if (from < 0 || from >= mRows || to < 0 || to >= mRows || from == to)
        return;
    setFieldsNotifying(false);
    for (auto& f : mFields)
        f.second->move(from, to);
    setFieldsNotifying(true);
    notifyElementsMoved(from, to);
    for (auto& f : mFields)
        f.second->model().notifyElementsMoved(from, to);
}

void Mve_RecordArray::clearRows()
{
    removeRows(0, mRows);
}

bool Mve_RecordArray::Publish(Mv_ConnectionDict* dict)
{
    if (!Mvt_ArrayContainer::Publish(dict))
        return false;
    for (auto& f : mFields) {
        f.second->model().SetConnectionName(fieldName(f.first));
        f.second->model().Publish(dictionary());
    }
    return true;
}

void Mve_RecordArray::UnPublish()
{
    for (auto& f : mFields)
        f.second->model().UnPublish();
    Mvt_ArrayContainer::UnPublish();
}
