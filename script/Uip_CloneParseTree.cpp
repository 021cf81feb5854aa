#include "Uip_CloneParseTree.h"

#include "Uip_Assign_ParseNode.h"
#include "Uip_BooleanLiteral_ParseNode.h"
#include "Uip_FunctionCall_ParseNode.h"
#include "Uip_Identifier_ParseNode.h"
#include "Uip_StatementBlock_ParseNode.h"
#include "Uip_StringLiteral_ParseNode.h"

#include <memory>
#include <typeinfo>

namespace {

// Exact types only: a kind derived from one of these may carry more than
// its base's constructor takes, so it is not copied as its base.
template <class Node> const Node* exactly(const Uip_ParseNode* node)
{
    return typeid(*node) == typeid(Node) ? static_cast<const Node*>(node) : nullptr;
}

// Null in *failed when a node (or one below it) cannot be copied.
std::unique_ptr<Uip_ParseNode> copyOf(const Uip_ParseNode* node, bool* failed)
{
    if (!node || *failed)
        return nullptr;
    if (const auto* block = exactly<Uip_StatementBlock_ParseNode>(node)) {
        std::unique_ptr<Uip_StatementBlock_ParseNode> copy(new Uip_StatementBlock_ParseNode());
        for (int i = 0; i < block->count(); ++i)
            copy->append(copyOf(block->statement(i), failed));
        return copy;
    }
    if (const auto* call = exactly<Uip_FunctionCall_ParseNode>(node)) {
        std::unique_ptr<Uip_ParseNode> callee = copyOf(call->callee(), failed);
        std::unique_ptr<Uip_ParseNode> argument = copyOf(call->argument(), failed);
        return std::unique_ptr<Uip_ParseNode>(new Uip_FunctionCall_ParseNode(std::move(callee), std::move(argument)));
    }
    if (const auto* assign = exactly<Uip_Assign_ParseNode>(node)) {
        std::unique_ptr<Uip_ParseNode> left = copyOf(assign->left(), failed);
        std::unique_ptr<Uip_ParseNode> right = copyOf(assign->right(), failed);
        return std::unique_ptr<Uip_ParseNode>(new Uip_Assign_ParseNode(std::move(left), std::move(right)));
    }
    if (const auto* identifier = exactly<Uip_Identifier_ParseNode>(node))
        return std::unique_ptr<Uip_ParseNode>(new Uip_Identifier_ParseNode(identifier->text()));
    if (const auto* text = exactly<Uip_StringLiteral_ParseNode>(node))
        return std::unique_ptr<Uip_ParseNode>(new Uip_StringLiteral_ParseNode(text->text()));
    if (const auto* flag = exactly<Uip_BooleanLiteral_ParseNode>(node))
        return std::unique_ptr<Uip_ParseNode>(new Uip_BooleanLiteral_ParseNode(flag->value()));
    *failed = true;
    return nullptr;
}

} // namespace

Uip_ParseNode* Uip_CloneParseTree(const Uip_ParseNode* tree)
{
    bool failed = false;
    std::unique_ptr<Uip_ParseNode> copy = copyOf(tree, &failed);
    return failed ? nullptr : copy.release();
}
