// The column model the header tests share.
#ifndef HEADERTESTSUPPORT_H
#define HEADERTESTSUPPORT_H

#include "Kel_ColumnDataModel.h"

#include <memory>
#include <vector>

namespace headertest {

// Columns "Name" (100, min 40), "Duration" (80, min 30), "Kind" (60, min 20)
// shown in that order and "Colour" hidden, under base; each sort is recorded
// in sorts as the column, or -1 - column for descending.
inline std::unique_ptr<Kel_ColumnDataModel> makeColumns(const QString& base, std::vector<long>* sorts)
{
    std::unique_ptr<Kel_ColumnDataModel> model(new Kel_ColumnDataModel(base));
    model->addColumn(QStringLiteral("name"), QStringLiteral("Name"), 100, 40);
    model->addColumn(QStringLiteral("duration"), QStringLiteral("Duration"), 80, 30);
    model->addColumn(QStringLiteral("kind"), QStringLiteral("Kind"), 60, 20);
    Kel_ColumnDataModel::Column colour;
    colour.identifier = QStringLiteral("colour");
    colour.label = QStringLiteral("Colour");
    colour.visible = false;
    model->addColumn(colour);
    model->setSortFunction([sorts](long column, bool ascending) {
        sorts->push_back(ascending ? column : -1 - column);
        return true;
    });
    return model;
}

} // namespace headertest

#endif
