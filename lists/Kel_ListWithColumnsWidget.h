#ifndef KEL_LISTWITHCOLUMNSWIDGET_H
#define KEL_LISTWITHCOLUMNSWIDGET_H

#include "kelcore_export.h"

#include "Kel_ListViewWidget.h"

class Kel_ListWithColumns;

// A columned list ready for forms: Kel_ListViewWidget's properties (but
// rowFields, which the column model replaces) plus the column model's base
// name. Cells of view type 0 are text unless code registers another
// prototype: each shows "<listConnection>.$Field[$Row]", so a column whose
// connection variables say "Field=name" shows the record array's name field.
class KELCORE_EXPORT Kel_ListWithColumnsWidget : public Kel_ListViewWidget
{
    Q_OBJECT
    Q_PROPERTY(QByteArray columnDataModel READ getColumnDataModel WRITE setColumnDataModel)
    Q_PROPERTY(int rowHeight READ getRowHeight WRITE setRowHeight)

public:
    explicit Kel_ListWithColumnsWidget(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ListWithColumnsWidget() override;

    // The hosted list (owned by the widget), or null when code replaced it.
    Kel_ListWithColumns* columnsView() const;

    void setColumnDataModel(const QByteArray& name);
    QByteArray getColumnDataModel() const;
    // The height of the rows' cells (Kel_ListWithColumns::SetRowHeight).
    void setRowHeight(int height);
    int getRowHeight() const;

    // Registers the text cell for view type 0 when code gave none, then connects.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
};

#endif
