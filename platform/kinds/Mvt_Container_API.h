#ifndef MVT_CONTAINER_API_H
#define MVT_CONTAINER_API_H

#include "Mvt_Action_API.h"
#include "Mvt_ArrayContainer.h"
#include "Mvt_Array_API.h"
#include "Mvt_SimpleValue_API.h"

#include <type_traits>

// The kind of containers whose elements are models of kind Element
// (Mvt_SimpleValue<T>, Mvt_Action<F>) addressed by an Index. Element
// requests arrive wrapped in Mvt_Array_API::MsgElement; the container
// answers them itself, from storage (Mve_Array) or from a function
// (Mve_ComputedContainer). Only long indexes are supported.
template <class Index, class Element>
class Mvt_Container_API : public Mvt_ArrayContainer
{
    static_assert(std::is_same<Index, long>::value, "containers are indexed by long");

public:
    typedef Element ElementKind;
    class Listener;

    explicit Mvt_Container_API(const QString& name = QString()) : Mvt_ArrayContainer(name) {}

    bool ReceiveMessage(const Mv_MessageInterface& message) override
    {
        if (const auto* e = message.as<Mvt_Array_API::MsgElement>())
            return handleElementMessage(e->index(), e->inner());
        return Mvt_ArrayContainer::ReceiveMessage(message);
    }

protected:
    // Answers one request addressed to element index; false for an index
    // out of range or a request the element does not understand.
    virtual bool handleElementMessage(long index, const Mv_MessageInterface& request) = 0;
};

// A listener to a container, with helpers that address one element.
template <class Index, class Element>
class Mvt_Container_API<Index, Element>::Listener : public Mvt_ArrayContainer::Listener
{
public:
    using Mvt_ArrayContainer::Listener::Listener;

    // Sends any element request to element index.
    bool sendToElement(long index, const Mv_MessageInterface& request, bool mayModify) const
    {
        return SendMessageToModel(Mvt_Array_API::MsgElement(index, request), mayModify);
    }
    // Reads a value element; false (value untouched) when it cannot.
    template <class T> bool getElement(long index, T& value) const
    {
        return sendToElement(index, typename Mvt_SimpleValue_API<T>::MsgGet(&value), false);
    }
    // A value element, or def.
    template <class T> T element(long index, const T& def = T()) const
    {
        T v = def;
        return getElement(index, v) ? v : def;
    }
    // Writes a value element; answers the set status.
    template <class T> int setElement(long index, const T& value) const
    {
        int status = Mvt_SimpleValue_BaseAPI::kSetNotAnswered;
        sendToElement(index, typename Mvt_SimpleValue_API<T>::MsgSet(value, &status), true);
        return status;
    }
    // Runs an action element.
    bool triggerElement(long index, const Mvt_Action_API::ArgumentList& args = Mvt_Action_API::ArgumentList(),
                        Mv_Variant* result = nullptr) const
    {
        Mv_Variant local;
        return sendToElement(index, Mvt_Action_API::MsgAction(args, result ? result : &local), true);
    }
    // Whether an action element can run now.
    bool isElementEnabled(long index) const
    {
        bool enabled = false;
        return sendToElement(index, Mvt_Action_API::MsgIsEnabled(&enabled), false) && enabled;
    }
};

#endif
