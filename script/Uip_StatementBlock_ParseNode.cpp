#include "Uip_StatementBlock_ParseNode.h"

Uip_StatementBlock_ParseNode::Uip_StatementBlock_ParseNode() = default;

Uip_StatementBlock_ParseNode::~Uip_StatementBlock_ParseNode() = default;

void Uip_StatementBlock_ParseNode::append(std::unique_ptr<Uip_ParseNode> statement)
{
    if (statement)
        mStatements.push_back(std::move(statement));
}

bool Uip_StatementBlock_ParseNode::ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                                       QWidget* owner)
{
    // Every statement is connected, even after one failed, so that late
    // models still reach the statements that name them.
    bool all = true;
    for (const auto& statement : mStatements)
        all = statement->ConnectAndTypeCheck(environment, owner) && all;
    return all;
}

bool Uip_StatementBlock_ParseNode::Evaluate(Mv_Variant* result)
{
    for (const auto& statement : mStatements) {
        if (!statement->Evaluate(result))
            return false;
    }
    return true;
}

bool Uip_StatementBlock_ParseNode::isConnected()
{
    for (const auto& statement : mStatements) {
        if (!statement->isConnected())
            return false;
    }
    return true;
}

QString Uip_StatementBlock_ParseNode::toTreeString(const QString& prefix) const
{
    const QString inner = prefix + QLatin1String("   ");
    QString tree = prefix + QLatin1String("StatementBlock\n");
    for (const auto& statement : mStatements)
        tree += statement->toTreeString(inner);
    return tree;
}
