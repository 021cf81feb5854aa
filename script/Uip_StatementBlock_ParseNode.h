#ifndef UIP_STATEMENTBLOCK_PARSENODE_H
#define UIP_STATEMENTBLOCK_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

#include <memory>
#include <vector>

// The root of a parsed script: its statements, run in order until one
// fails. An empty block connects, runs and is enabled.
class KELCORE_EXPORT Uip_StatementBlock_ParseNode : public Uip_ParseNode
{
public:
    Uip_StatementBlock_ParseNode();
    ~Uip_StatementBlock_ParseNode() override;

    // Adds a statement at the end (a null one is ignored).
    void append(std::unique_ptr<Uip_ParseNode> statement);

    bool ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment, QWidget* owner) override;
    bool Evaluate(Mv_Variant* result) override;
    bool isConnected() override;
    QString toTreeString(const QString& prefix) const override;

    int count() const { return int(mStatements.size()); }
    Uip_ParseNode* statement(int index) const { return mStatements.at(size_t(index)).get(); }

private:
    std::vector<std::unique_ptr<Uip_ParseNode>> mStatements;
};

#endif
