#ifndef UIP_FUNCTIONCALL_PARSENODE_H
#define UIP_FUNCTIONCALL_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

#include <memory>

// A call of an action model, with no argument or one: Play(), Select(Row).
// The argument's value is passed as the single element of the action's
// argument list; the call can run while the action reports itself enabled.
class KELCORE_EXPORT Uip_FunctionCall_ParseNode : public Uip_ParseNode
{
public:
    // argument may be null (a call without argument).
    Uip_FunctionCall_ParseNode(std::unique_ptr<Uip_ParseNode> callee, std::unique_ptr<Uip_ParseNode> argument);
    ~Uip_FunctionCall_ParseNode() override;

    bool ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment, QWidget* owner) override;
    bool Evaluate(Mv_Variant* result) override;
    bool isConnected() override;
    QString toTreeString(const QString& prefix) const override;

    Uip_ParseNode* callee() const { return mCalleeP.get(); }
    Uip_ParseNode* argument() const { return mArgumentP.get(); }

private:
    std::unique_ptr<Uip_ParseNode> mCalleeP;
    std::unique_ptr<Uip_ParseNode> mArgumentP;
};

#endif
