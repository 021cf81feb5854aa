#ifndef UIP_PARSENODE_H
#define UIP_PARSENODE_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <QString>
#include <boost/shared_ptr.hpp>

class Mv_ListenerBase;
class Mv_Variant;
class QWidget;

// A node of a parsed action script. The owner of a script connects the tree
// to its models once per environment, asks isConnected() for its enabled
// state and calls Evaluate() on each activation. Failures are false
// results, never exceptions. Each node owns its children.
class KELCORE_EXPORT Uip_ParseNode
{
public:
    virtual ~Uip_ParseNode();

    // Connects the node's identifiers to their models in environment, on
    // behalf of owner (used for "$Window" names; may be null). True when
    // every model was found now.
    virtual bool ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment, QWidget* owner);
    // Runs the node; its value, if any, goes to *result (null: discarded).
    virtual bool Evaluate(Mv_Variant* result);
    // Stores value in the model the node names; false for nodes that
    // cannot be assigned to.
    virtual bool Assign(Mv_Variant value);
    // The listener through which the node can be called; false for nodes
    // that cannot be called.
    virtual bool EvaluateFunctionRef(Mv_ListenerBase** listener);
    // Whether the node can run now: its models are present and its action
    // is enabled.
    virtual bool isConnected();

    // A readable dump of the subtree, one node per line, each line starting
    // with prefix; children extend the prefix by three blanks.
    virtual QString toTreeString(const QString& prefix) const = 0;

protected:
    Uip_ParseNode() = default;
    Uip_ParseNode(const Uip_ParseNode&) = default;
    Uip_ParseNode& operator=(const Uip_ParseNode&) = default;
};

#endif
