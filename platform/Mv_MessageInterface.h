#ifndef MV_MESSAGEINTERFACE_H
#define MV_MESSAGEINTERFACE_H

// Identity of one message class. Every message class owns exactly one static
// instance (its kType); messages are recognised by the address of that
// instance, which is cheaper than RTTI on the notification path.
class Mv_MessageType
{
public:
    explicit constexpr Mv_MessageType(const char* name) : mName(name) {}
    Mv_MessageType(const Mv_MessageType&) = delete;
    Mv_MessageType& operator=(const Mv_MessageType&) = delete;

    const char* name() const { return mName; }

private:
    const char* mName;
};

// Base of every message that travels between a listener and a model:
// requests (get, set, action) and notifications (value changed, connected
// changed, elements replaced). Messages live on the sender's stack and are
// answered synchronously.
class Mv_MessageInterface
{
public:
    virtual ~Mv_MessageInterface();

    const Mv_MessageType* type() const { return mTypeP; }
    const char* typeName() const { return mTypeP->name(); }

    // True for requests that may change a model (sets, actions). Listeners
    // refuse to send them on a read-only path.
    virtual bool isModifying() const { return false; }

    template <class M> bool is() const { return mTypeP == &M::kType; }
    template <class M> const M* as() const
    {
        return mTypeP == &M::kType ? static_cast<const M*>(this) : nullptr;
    }

protected:
    explicit Mv_MessageInterface(const Mv_MessageType* type) : mTypeP(type) {}
    Mv_MessageInterface(const Mv_MessageInterface&) = default;
    Mv_MessageInterface& operator=(const Mv_MessageInterface&) = default;

private:
    const Mv_MessageType* mTypeP;
};

#endif
