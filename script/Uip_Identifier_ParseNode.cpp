#include "Uip_Identifier_ParseNode.h"

#include "Kel_SubscriptionIdentifierSubstitution.h"
#include "Mv_ListenerBase.h"
#include "Mve_DirectAccess.h"
#include "Mvt_SimpleValue_BaseAPI.h"

Uip_Identifier_ParseNode::Uip_Identifier_ParseNode(const QString& text)
    : mText(text), mListenerP(new Mv_ListenerBase())
{
}

Uip_Identifier_ParseNode::~Uip_Identifier_ParseNode() = default;

bool Uip_Identifier_ParseNode::ConnectAndTypeCheck(boost::shared_ptr<const Mv_ConnectionEnvironment> environment,
                                                   QWidget* owner)
{
    mListenerP->SetConnectionName(Kel_SubscriptionIdentifierSubstitution(mText, owner));
    return mListenerP->connect(environment);
}

// A plain value model is read and written directly; every other model gets
// the variant requests, and may answer them as it likes.

bool Uip_Identifier_ParseNode::Evaluate(Mv_Variant* result)
{
    if (Mve_DirectAccess::getVariant(mListenerP->directModel(), result))
        return true;
    Mv_Variant discarded;
    return mListenerP->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(result ? result : &discarded), true);
}

bool Uip_Identifier_ParseNode::Assign(Mv_Variant value)
{
    const int status = Mve_DirectAccess::setVariant(mListenerP->directModel(), value);
    if (status != Mvt_SimpleValue_BaseAPI::kSetNotAnswered)
        return status != Mvt_SimpleValue_BaseAPI::kSetRefused;
    return mListenerP->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgSetVariant(value), true);
}

bool Uip_Identifier_ParseNode::EvaluateFunctionRef(Mv_ListenerBase** listener)
{
    if (!listener)
        return false;
    *listener = mListenerP.get();
    return true;
}

bool Uip_Identifier_ParseNode::isConnected()
{
    return mListenerP->isConnectedToModel();
}

QString Uip_Identifier_ParseNode::toTreeString(const QString& prefix) const
{
    return prefix + QLatin1String("Identifier ") + mText + QLatin1Char('\n');
}
