#ifndef MV_MESSAGEINTERFACE_H
#define MV_MESSAGEINTERFACE_H

#include "kelplatform_export.h"

#include <typeinfo>

// Identity of one message class; messages are recognised by its address,
// which is cheaper than RTTI on the notification path. Every message class
// answers it from a static messageType(): a plain class returns its static
// kType, defined once in the library that declares it; a class template
// takes it from forTemplate<T>(), because each shared library (a plug-in,
// the application) instantiates templates for itself, so the address of a
// static member of a template would differ from module to module.
class KELPLATFORM_EXPORT Mv_MessageType
{
public:
    explicit constexpr Mv_MessageType(const char* name) : mName(name) {}
    Mv_MessageType(const Mv_MessageType&) = delete;
    Mv_MessageType& operator=(const Mv_MessageType&) = delete;

    const char* name() const { return mName; }

    // The one identity, process-wide, of the message class template name
    // instantiated for T. Callers keep it in a function-local static.
    template <class T>
    static const Mv_MessageType* forTemplate(const char* name)
    {
        return intern(name, typeid(T));
    }

private:
    static const Mv_MessageType* intern(const char* name, const std::type_info& argument);

    const char* mName;
};

// Base of every message that travels between a listener and a model:
// requests (get, set, action) and notifications (value changed, connected
// changed, elements replaced). Messages live on the sender's stack and are
// answered synchronously.
class KELPLATFORM_EXPORT Mv_MessageInterface
{
public:
    virtual ~Mv_MessageInterface();

    const Mv_MessageType* type() const { return mTypeP; }
    const char* typeName() const { return mTypeP->name(); }

    // True for requests that may change a model (sets, actions). Listeners
    // refuse to send them on a read-only path.
    virtual bool isModifying() const { return false; }

    template <class M> bool is() const { return mTypeP == M::messageType(); }
    template <class M> const M* as() const
    {
        return mTypeP == M::messageType() ? static_cast<const M*>(this) : nullptr;
    }

protected:
    explicit Mv_MessageInterface(const Mv_MessageType* type) : mTypeP(type) {}
    Mv_MessageInterface(const Mv_MessageInterface&) = default;
    Mv_MessageInterface& operator=(const Mv_MessageInterface&) = default;

private:
    const Mv_MessageType* mTypeP;
};

#endif
