#include "Kel_ListWithColumnsWidget.h"

#include "Kel_ListWithColumns.h"
#include "Kel_TextView.h"

#include <memory>

Kel_ListWithColumnsWidget::Kel_ListWithColumnsWidget(QWidget* parent, const char* name)
    : Kel_ListViewWidget(parent, name, new Kel_ListWithColumns)
{
}

Kel_ListWithColumnsWidget::~Kel_ListWithColumnsWidget() = default;

Kel_ListWithColumns* Kel_ListWithColumnsWidget::columnsView() const
{
    return dynamic_cast<Kel_ListWithColumns*>(getChild());
}

void Kel_ListWithColumnsWidget::setColumnDataModel(const QByteArray& name)
{
    if (Kel_ListWithColumns* list = columnsView())
        list->SetColumnDataModel(QString::fromUtf8(name));
}

QByteArray Kel_ListWithColumnsWidget::getColumnDataModel() const
{
    const Kel_ListWithColumns* list = columnsView();
    return list ? list->GetColumnDataModel().toUtf8() : QByteArray();
}

void Kel_ListWithColumnsWidget::setRowHeight(int height)
{
    if (Kel_ListWithColumns* list = columnsView())
        list->SetRowHeight(qMax(1, height));
}

int Kel_ListWithColumnsWidget::getRowHeight() const
{
    const Kel_ListWithColumns* list = columnsView();
    return list ? int(list->GetRowHeight()) : 0;
}

void Kel_ListWithColumnsWidget::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (Kel_ListWithColumns* list = columnsView()) {
        Kel_ListWithColumns::ViewTypeMap map = list->GetViewTypeMap();
        if (!map.count(0)) {
            auto text = std::make_shared<Kel_TextView>();
            text->SetNameConnection(list->GetListConnectionName() + QStringLiteral(".$Field[$Row]"));
            map[0] = text;
            list->SetViewTypeMap(map);
        }
    }
    Kel_ListViewWidget::makeConnections(environment);
}
