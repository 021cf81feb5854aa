#ifndef UIP_ASSIGN_PARSENODE_H
#define UIP_ASSIGN_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

#include <memory>

// An assignment "left = right": evaluating it evaluates the right side and
// assigns the value to the left side, which must name a value model.
// "a = b = c" is a = (b = c); an assignment has no value of its own, so the
// outer assignment is handed an empty value.
class KELCORE_EXPORT Uip_Assign_ParseNode : public Uip_ParseNode
{
public:
    Uip_Assign_ParseNode(std::unique_ptr<Uip_ParseNode> left, std::unique_ptr<Uip_ParseNode> right);
    ~Uip_Assign_ParseNode() override;

    bool ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment, QWidget* owner) override;
    bool Evaluate(Mv_Variant* result) override;
    bool isConnected() override;
    QString toTreeString(const QString& prefix) const override;

    Uip_ParseNode* left() const { return mLeftP.get(); }
    Uip_ParseNode* right() const { return mRightP.get(); }

private:
    std::unique_ptr<Uip_ParseNode> mLeftP;
    std::unique_ptr<Uip_ParseNode> mRightP;
    // The right side when it is an assignment the chain walks go into,
    // found once here rather than on every evaluation.
    Uip_Assign_ParseNode* mChainedP;
    // Both sides are identifiers: a value may pass between their models
    // without a variant when both are plain (see Mve_DirectAccess).
    bool mBetweenIdentifiers;
};

#endif
