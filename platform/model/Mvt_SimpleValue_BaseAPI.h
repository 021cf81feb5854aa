#ifndef MVT_SIMPLEVALUE_BASEAPI_H
#define MVT_SIMPLEVALUE_BASEAPI_H

#include "kelplatform_export.h"

#include "Mv_MessageInterface.h"
#include "Mv_Variant.h"

// Requests that every value model answers whatever its value type: reading
// and writing the value as an Mv_Variant. Also the status codes of sets.
struct KELPLATFORM_EXPORT Mvt_SimpleValue_BaseAPI
{
    // Status written by a model into a set message's status variable (which
    // the sender initialises to kSetNotAnswered).
    enum SetStatus {
        kSetNotAnswered = 0, // no model took the message
        kSetChanged = 1,     // accepted, the value changed
        kSetUnchanged = 2,   // accepted, the value was already that
        kSetRefused = 3      // refused (read-only model, value out of range, wrong type)
    };

    // Fills *result with the model's value.
    class MsgGetVariant : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgGetVariant(Mv_Variant* result) : Mv_MessageInterface(&kType), mResultP(result) {}
        Mv_Variant* result() const { return mResultP; }

    private:
        Mv_Variant* mResultP;
    };

    // Sets the model's value from a variant, converted to the model's type.
    // The send answers false when the value is refused or does not convert.
    class MsgSetVariant : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType kType;
        static const Mv_MessageType* messageType() { return &kType; }
        explicit MsgSetVariant(const Mv_Variant& value, int* status = nullptr)
            : Mv_MessageInterface(&kType), mValue(value), mStatusP(status) {}
        bool isModifying() const override { return true; }
        const Mv_Variant& value() const { return mValue; }
        int* status() const { return mStatusP; }

    private:
        Mv_Variant mValue;
        int* mStatusP;
    };
};

#endif
