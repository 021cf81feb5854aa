#ifndef MVT_ACTION_API_H
#define MVT_ACTION_API_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"
#include "Mv_Variant.h"

#include <utility>
#include <vector>

// Requests of action models.
struct KELPLATFORM_EXPORT Mvt_Action_API
{
    typedef std::vector<Mv_Variant> ArgumentList;

    // Runs the action with the arguments (converted to its parameter types)
    // and stores its return value in *result (left empty for void actions).
    // The send answers false when the action is disabled, the arguments do
    // not fit, or the action reports failure.
    class MsgAction : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        MsgAction(const ArgumentList& arguments, Mv_Variant* result)
            : Mv_MessageInterface(&kType), mArguments(arguments), mResultP(result) {}
        MsgAction(ArgumentList&& arguments, Mv_Variant* result)
            : Mv_MessageInterface(&kType), mArguments(std::move(arguments)), mResultP(result) {}
        bool isModifying() const override { return true; }
        const ArgumentList& arguments() const { return mArguments; }
        Mv_Variant* result() const { return mResultP; }

    private:
        ArgumentList mArguments;
        Mv_Variant* mResultP;
    };

    // Writes into *enabled whether the action can run now.
    class MsgIsEnabled : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgIsEnabled(bool* enabled) : Mv_MessageInterface(&kType), mEnabledP(enabled) {}
        bool* enabled() const { return mEnabledP; }

    private:
        bool* mEnabledP;
    };
};

#endif
