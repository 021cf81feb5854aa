#ifndef MVT_SIMPLEVALUE_API_H
#define MVT_SIMPLEVALUE_API_H

#include "Mv_MessageInterface.h"
#include "Mvt_SimpleValue_BaseAPI.h"

// Typed requests of a value model holding a T.
template <class T>
struct Mvt_SimpleValue_API
{
    // Overwrites *result with the model's value; an unconnected listener
    // leaves the caller's default in place.
    class MsgGet : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType* messageType()
        {
            static const Mv_MessageType* const type = Mv_MessageType::forTemplate<T>("Mvt_SimpleValue_API::MsgGet");
            return type;
        }
        explicit MsgGet(T* result) : Mv_MessageInterface(messageType()), mResultP(result) {}
        T* result() const { return mResultP; }

    private:
        T* mResultP;
    };

    // Asks the model to take a value; the model writes a
    // Mvt_SimpleValue_BaseAPI::SetStatus into *status (3 = refused).
    class MsgSet : public Mv_MessageInterface
    {
    public:
        static const Mv_MessageType* messageType()
        {
            static const Mv_MessageType* const type = Mv_MessageType::forTemplate<T>("Mvt_SimpleValue_API::MsgSet");
            return type;
        }
        MsgSet(const T& value, int* status) : Mv_MessageInterface(messageType()), mValue(value), mStatusP(status) {}
        bool isModifying() const override { return true; }
        const T& value() const { return mValue; }
        int* status() const { return mStatusP; }
        void setStatus(int s) const
        {
            if (mStatusP)
                *mStatusP = s;
        }

    private:
        T mValue;
        int* mStatusP;
    };
};

#endif
