#ifndef KEL_WIDGETLIST_H
#define KEL_WIDGETLIST_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_IPointOfInterestFinder.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mve_SimpleValue.h"
#include "Mvt_ArrayContainer.h"

#include <QByteArray>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QBoxLayout;

// A column of real widgets, one per element of an array model, made by the
// owner's new-row callback and kept in element order. Each row widget is
// connected in a child environment whose variable Row names a small index
// model of its own, holding the row's position: a row form names its
// element as "Effects.name[$Row]". Inserting, removing and moving elements
// inserts, removes and moves rows and renumbers the index models.
class KELCORE_EXPORT Kel_WidgetList : public QWidget, public Kel_WidgetConnectInterface, public Kel_IPointOfInterestFinder
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connectionSpec READ getConnectionSpec WRITE setConnectionSpec)

public:
    // Makes the widget of a new row; the list takes ownership.
    typedef std::function<QWidget*()> NewRowCB;

    explicit Kel_WidgetList(QWidget* parent = nullptr, const char* name = nullptr, const NewRowCB& newRowCB = NewRowCB());
    ~Kel_WidgetList() override;

    // The array model's connection specification; takes effect at the next makeConnections.
    void setConnectionSpec(const QByteArray& spec) { mList.setSpec(QString::fromUtf8(spec)); }
    QByteArray getConnectionSpec() const { return mList.spec().toUtf8(); }

    void setNewRowCB(const NewRowCB& newRowCB) { mNewRowCB = newRowCB; }
    // A new row widget from the callback; an empty QWidget when there is no
    // callback or it gives none, so that rows stay aligned with the elements.
    QWidget* newRow();

    // Connects the array listener in environment and every row in a child
    // of it; rows made later are connected in it too.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Position of the row whose widget this is, -1 when none.
    long rowToIndex(QWidget* row) const;
    // The row widget at index; null (and an assertion) outside the rows.
    QWidget* indexToRow(long index) const;
    long rowSize() const { return long(mRowData.size()); }
    // The connection name of the row's index model (what $Row stands for in
    // that row), empty outside the rows.
    QString rowConnectionName(long index) const;
    // The layout holding the rows, for margins and spacing.
    QBoxLayout* boxLayout() const { return mLayoutP; }

    // A new row at index (clamped to [0, rows]); the rows after it move down one.
    void insertRow(long index);
    void appendRow() { insertRow(rowSize()); }
    // Removes the rows startIndex to endIndex inclusive (endIndex clamped to
    // the last row). Their widgets are deleted on the next turn of the event
    // loop, so that a row may remove itself from one of its own handlers.
    void deleteRows(long startIndex, long endIndex);
    void deleteRow(long index) { deleteRows(index, index); }
    // Moves the row at from to position to, keeping its widget; ignored
    // unless both are positions of rows.
    void moveRow(long from, long to);

    // "Row3" is the rectangle of row 3; "Row3.mute" that of the widget named
    // mute inside it (which resolves the rest of the path itself when it is a
    // point-of-interest finder). The list's own object name is the whole list.
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

private:
    typedef Mve_SimpleValue<long, Mvt_SimpleValue<long>> IndexModel;
    struct RowData
    {
        QWidget* widget; // owned (a child of the list)
        std::unique_ptr<IndexModel> index;
        // The makeConnections round it was last connected in.
        unsigned connectedRound;
    };

    void handleListMessage(const Mv_MessageInterface& message);
    // Adds or removes rows at the end until there are size rows.
    void setRowCount(long size);
    // Connects a row in a child of the kept environment with Row set to its
    // index model; nothing before the first makeConnections.
    void connectRow(RowData& row);
    Mv_ConnectionDict* dictionary() const;
    // Tells accessibility clients that the rows changed.
    void rowsReordered();

    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mList{this};
    NewRowCB mNewRowCB;
    QBoxLayout* mLayoutP; // owned by the widget
    boost::shared_ptr<const Mv_ConnectionEnvironment> mEnvironment;
    unsigned mConnectRound = 0;
    std::vector<RowData> mRowData;
};

#endif
