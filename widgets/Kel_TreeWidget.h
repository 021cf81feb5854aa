#ifndef KEL_TREEWIDGET_H
#define KEL_TREEWIDGET_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_IPointOfInterestFinder.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <QSet>
#include <QString>
#include <QTreeWidget>

// A tree of named nodes described by a record array, with the current node
// bound to a long model.
//
// The tree data model (setTreeDMConn, "Bins") is a record array with a row
// per node and two fields: "name" (QString, the node's caption: Bins.name)
// and "parent" (long, the row of the node's parent: Bins.parent); a parent
// outside the rows (-1) makes a top-level node, and nodes keep their rows'
// order among their siblings. Parents that loop back to a node make each
// node of the loop a top-level node. The current node (setBaseNameConn) is
// a long model holding the row of the selected node, -1 for none: choosing
// a node sends its row, and a refused change selects the model's node
// again. A root display name (setRootDisplayNameConn), when its string model
// holds a non-empty text, adds a root node of that caption above the
// top-level nodes; choosing it sends -1. SetConnectionEnv gives variables
// ("Tree=Bins;Node=Bins.current") defined for this widget's own connections,
// so that one form can name its models through them.
//
// Unconnected, the tree is empty; without a current-node model the user can
// still browse it. Nodes start expanded; the ones the user collapses stay
// collapsed (by row) when the tree is rebuilt.
class KELCORE_EXPORT Kel_TreeWidget : public QTreeWidget, public Kel_WidgetConnectInterface, public Kel_IPointOfInterestFinder
{
    Q_OBJECT
    Q_PROPERTY(QString connectionEnv READ getConnectionEnv WRITE SetConnectionEnv)
    Q_PROPERTY(QByteArray baseNameConnection READ getBaseNameConn WRITE setBaseNameConn)
    Q_PROPERTY(QByteArray rootDisplayNameConnection READ getRootDisplayNameConn WRITE setRootDisplayNameConn)
    Q_PROPERTY(QByteArray treeDMConnection READ getTreeDMConn WRITE setTreeDMConn)

public:
    // Item data role holding a node's row (-1 for the root node).
    static constexpr int kRowRole = Qt::UserRole + 1;

    explicit Kel_TreeWidget(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_TreeWidget() override;

    // Variables ("Name=Value" parts separated by ";") for this widget's connections.
    void SetConnectionEnv(const QString& variables) { mEnvironmentText = variables; }
    QString getConnectionEnv() const { return mEnvironmentText; }
    // The long model of the current node's row.
    void setBaseNameConn(const QByteArray& spec);
    QByteArray getBaseNameConn() const { return mCurrent.spec().toUtf8(); }
    // The string model of the root node's caption.
    void setRootDisplayNameConn(const QByteArray& spec);
    QByteArray getRootDisplayNameConn() const { return mRootName.spec().toUtf8(); }
    // The record array of the nodes (fields "name" and "parent").
    void setTreeDMConn(const QByteArray& spec);
    QByteArray getTreeDMConn() const { return mTreeSpec.toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Builds the tree again from the models and selects the current node.
    void updateAppearance();
    // The item of a node's row (-1: the root node), or null.
    QTreeWidgetItem* itemForRow(long row) const;

    // The widget (its object name, or an empty name), or a node named by the
    // captions from the top ("binTree.Footage.Day 1"). A node inside a
    // collapsed one answers the rectangle of the nearest shown ancestor,
    // where the user would click to reach it.
    bool findPoi(const QString& dottedName, QRect* globalRect) override;

protected slots:
    // Sends the node the user chose to the current-node model.
    void userChangedCurrentItem(QTreeWidgetItem* current);

private:
    void rebuild();
    void selectModelsNode();

    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> NameArrayProperty;
    typedef Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<long>>::Listener> ParentArrayProperty;

    QString mEnvironmentText;
    QString mTreeSpec;
    // The two fields of the tree data model; connected always, so that a
    // tree without its model still ends its connection empty.
    NameArrayProperty mNames{this, NameArrayProperty::kConnectAlways};
    ParentArrayProperty mParents{this};
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mCurrent{this};
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mRootName{this};
    QSet<long> mCollapsedRows; // -1 stands for the root node
    bool mApplyingModelState = false;
};

#endif
