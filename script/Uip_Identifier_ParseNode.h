#ifndef UIP_IDENTIFIER_PARSENODE_H
#define UIP_IDENTIFIER_PARSENODE_H

#include "kelcore_export.h"

#include "Uip_ParseNode.h"

#include <memory>

// An identifier of a script: the name of a model. It holds an untyped
// listener that ConnectAndTypeCheck() attaches to the model; evaluating
// reads the model's value, assigning sets it, and a call node calls the
// model through the listener.
class KELCORE_EXPORT Uip_Identifier_ParseNode : public Uip_ParseNode
{
public:
    explicit Uip_Identifier_ParseNode(const QString& text);
    ~Uip_Identifier_ParseNode() override;

    bool ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment, QWidget* owner) override;
    bool Evaluate(Mv_Variant* result) override;
    bool Assign(Mv_Variant value) override;
    bool EvaluateFunctionRef(Mv_ListenerBase** listener) override;
    bool isConnected() override;
    QString toTreeString(const QString& prefix) const override;

    // The identifier as written in the script.
    const QString& text() const { return mText; }
    Mv_ListenerBase* listener() const { return mListenerP.get(); }

private:
    QString mText;
    std::unique_ptr<Mv_ListenerBase> mListenerP;
};

#endif
