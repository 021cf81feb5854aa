#ifndef KEL_LISTVIEWWIDGET_H
#define KEL_LISTVIEWWIDGET_H

#include "kelcore_export.h"

#include "Kel_BridgeQScrollArea.h"

#include <QByteArray>
#include <QString>

class Kel_ListView;

// A list view ready for forms: a scroll-area bridge hosting one
// Kel_ListView whose settings are Qt properties. The row view is either set
// in code (listView()->SetRowView) or described by rowFields: a comma
// separated list of "field" or "field:width" entries, each shown as text
// bound to "<listConnection>.<field>[$Row]" (the fields of a record array).
class KELCORE_EXPORT Kel_ListViewWidget : public Kel_BridgeQScrollArea
{
    Q_OBJECT
    Q_PROPERTY(QByteArray listConnection READ getListConnectionSpec WRITE setListConnectionSpec)
    Q_PROPERTY(QByteArray selectionConnection READ getSelectionConnectionSpec WRITE setSelectionConnectionSpec)
    Q_PROPERTY(int selectionMode READ getSelectionMode WRITE setSelectionMode)
    Q_PROPERTY(QByteArray enterAction READ getEnterAction WRITE setEnterAction)
    Q_PROPERTY(QByteArray selectionAction READ getSelectionAction WRITE setSelectionAction)
    Q_PROPERTY(QString rowFields READ getRowFields WRITE setRowFields)
    Q_PROPERTY(int rowHeight READ getRowHeight WRITE setRowHeight)
    Q_PROPERTY(bool ledgerShading READ getLedgerShading WRITE setLedgerShading)

public:
    explicit Kel_ListViewWidget(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ListViewWidget() override;

    // The hosted list (owned by the widget).
    Kel_ListView* listView() const;

    void setListConnectionSpec(const QByteArray& spec);
    QByteArray getListConnectionSpec() const;
    // The name the selection is published under instead of the list's (see Kel_ListView).
    void setSelectionConnectionSpec(const QByteArray& spec);
    QByteArray getSelectionConnectionSpec() const;
    // A Kel_ListView::SelectionMode: 0 single, 1 multi, 2 extended, 3 none.
    void setSelectionMode(int mode);
    int getSelectionMode() const;
    void setEnterAction(const QByteArray& script);
    QByteArray getEnterAction() const;
    void setSelectionAction(const QByteArray& script);
    QByteArray getSelectionAction() const;
    // Builds the row view at the next makeConnections; empty keeps the one set in code.
    void setRowFields(const QString& fields) { mRowFields = fields; }
    QString getRowFields() const { return mRowFields; }
    void setRowHeight(int height);
    int getRowHeight() const;
    void setLedgerShading(bool on);
    bool getLedgerShading() const;

    // Builds the row view from rowFields (when given), then connects the list.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

protected:
    // Hosts list (owned) instead of a plain list view: for derived widgets.
    Kel_ListViewWidget(QWidget* parent, const char* name, Kel_ListView* list);

    // Keeps the list's port size, and so its row width, equal to the visible area.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildRowView();
    template <class Set> void writeList(Set&& set);
    template <class T, class Get> T readList(Get&& get, const T& fallback) const;

    QString mRowFields;
};

#endif
