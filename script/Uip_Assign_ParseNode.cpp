#include "Uip_Assign_ParseNode.h"

#include "Mv_ListenerBase.h"
#include "Mv_Variant.h"
#include "Mve_DirectAccess.h"
#include "Mvt_SimpleValue_BaseAPI.h"
#include "Uip_Identifier_ParseNode.h"

#include <typeinfo>
#include <utility>
#include <vector>

// A chain a = b = c = ... nests to the right as deep as the script has "="
// signs. The operations below walk such chains in a loop instead of
// recursing, so that a long chain cannot exhaust the stack; they give the
// same results as the recursive definitions.

namespace {

// The right side when it is an assignment that these loops may walk into:
// exactly this class, since a subclass may have its own behaviour.
Uip_Assign_ParseNode* chainedAssignment(Uip_ParseNode* node)
{
    return node && typeid(*node) == typeid(Uip_Assign_ParseNode) ? static_cast<Uip_Assign_ParseNode*>(node) : nullptr;
}

// The node when it is exactly an identifier (a subclass may read or assign
// in its own way).
Uip_Identifier_ParseNode* plainIdentifier(Uip_ParseNode* node)
{
    return node && typeid(*node) == typeid(Uip_Identifier_ParseNode) ? static_cast<Uip_Identifier_ParseNode*>(node)
                                                                      : nullptr;
}

} // namespace

Uip_Assign_ParseNode::Uip_Assign_ParseNode(std::unique_ptr<Uip_ParseNode> left, std::unique_ptr<Uip_ParseNode> right)
    : mLeftP(std::move(left)), mRightP(std::move(right)), mChainedP(chainedAssignment(mRightP.get())),
      mBetweenIdentifiers(plainIdentifier(mLeftP.get()) && plainIdentifier(mRightP.get()))
{
}

Uip_Assign_ParseNode::~Uip_Assign_ParseNode()
{
    // Unlink the chain before deleting it, one link at a time.
    std::unique_ptr<Uip_ParseNode> next = std::move(mRightP);
    while (Uip_Assign_ParseNode* link = chainedAssignment(next.get())) {
        std::unique_ptr<Uip_ParseNode> rest = std::move(link->mRightP);
        next = std::move(rest);
    }
}

bool Uip_Assign_ParseNode::ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                               QWidget* owner)
{
    // The right side is connected only when the left side connected.
    Uip_Assign_ParseNode* node = this;
    for (;;) {
        if (!node->mLeftP || !node->mRightP)
            return false;
        if (!node->mLeftP->ConnectAndTypeCheck(environment, owner))
            return false;
        Uip_Assign_ParseNode* next = node->mChainedP;
        if (!next)
            return node->mRightP->ConnectAndTypeCheck(environment, owner);
        node = next;
    }
}

bool Uip_Assign_ParseNode::Evaluate(Mv_Variant*)
{
    // An assignment with a missing side fails before anything runs.
    if (!mLeftP || !mRightP)
        return false;
    if (!mChainedP) {
        // The usual "a = b", without a chain to collect.
        if (mBetweenIdentifiers) {
            const int status =
                Mve_DirectAccess::copyValue(static_cast<Uip_Identifier_ParseNode*>(mRightP.get())->listener()->directModel(),
                                            static_cast<Uip_Identifier_ParseNode*>(mLeftP.get())->listener()->directModel());
            if (status != Mvt_SimpleValue_BaseAPI::kSetNotAnswered)
                return status != Mvt_SimpleValue_BaseAPI::kSetRefused;
        }
        Mv_Variant value;
        return mRightP->Evaluate(&value) && mLeftP->Assign(std::move(value));
    }
    std::vector<Uip_Assign_ParseNode*> chain{this};
    for (;;) {
        Uip_Assign_ParseNode* node = chain.back();
        if (!node->mLeftP || !node->mRightP)
            return false;
        Uip_Assign_ParseNode* next = node->mChainedP;
        if (!next)
            break;
        chain.push_back(next);
    }

    // The innermost assignment evaluates its right side; every assignment
    // outside it receives the (empty) value of the assignment to its right.
    Uip_Assign_ParseNode* innermost = chain.back();
    Mv_Variant value;
    if (!innermost->mRightP->Evaluate(&value))
        return false;
    bool ok = innermost->mLeftP->Assign(std::move(value));
    for (auto it = chain.rbegin() + 1; it != chain.rend() && ok; ++it)
        ok = (*it)->mLeftP->Assign(Mv_Variant());
    return ok;
}

bool Uip_Assign_ParseNode::isConnected()
{
    Uip_Assign_ParseNode* node = this;
    for (;;) {
        if (node->mLeftP && !node->mLeftP->isConnected())
            return false;
        Uip_Assign_ParseNode* next = node->mChainedP;
        if (!next)
            return !node->mRightP || node->mRightP->isConnected();
        node = next;
    }
}

QString Uip_Assign_ParseNode::toTreeString(const QString& prefix) const
{
    QString tree;
    QString indent = prefix;
    const Uip_Assign_ParseNode* node = this;
    for (;;) {
        const QString inner = indent + QLatin1String("   ");
        tree += indent + QLatin1String("Assign\n");
        if (node->mLeftP)
            tree += node->mLeftP->toTreeString(inner);
        const Uip_Assign_ParseNode* next = node->mChainedP;
        if (!next) {
            if (node->mRightP)
                tree += node->mRightP->toTreeString(inner);
            return tree;
        }
        node = next;
        indent = inner;
    }
}
