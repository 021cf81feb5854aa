#ifndef MV_MESSAGEDISPATCHER_H
#define MV_MESSAGEDISPATCHER_H

#include "Mv_MessageInterface.h"

#include <functional>
#include <utility>
#include <vector>

// Routes the messages that a listener (or a model's receive callback)
// receives to member functions of its owner, by message type, with a
// default route for every other message. One dispatcher serves every
// instance of an owner class, so it is usually a function-local static:
//
//   static const Mv_MessageDispatcher<Kel_CheckBox> dispatcher(&Kel_CheckBox::updateAppearance);
//   listener->setReceiveMessageCB([this](const Mv_MessageInterface& m) { dispatcher.dispatch(this, m); });
template <class Owner>
class Mv_MessageDispatcher
{
public:
    typedef void (Owner::*DefaultRoute)();

    explicit Mv_MessageDispatcher(DefaultRoute defaultRoute = nullptr) : mDefault(defaultRoute) {}

    // Sends messages of type Msg to handler.
    template <class Msg>
    Mv_MessageDispatcher& addRoute(void (Owner::*handler)(const Msg&))
    {
        mRoutes.emplace_back(Msg::messageType(), [handler](Owner* owner, const Mv_MessageInterface& m) {
            (owner->*handler)(static_cast<const Msg&>(m));
            return true;
        });
        return *this;
    }
    // Sends messages of type Msg to handler, whose answer is dispatch's.
    template <class Msg>
    Mv_MessageDispatcher& addRoute(bool (Owner::*handler)(const Msg&))
    {
        mRoutes.emplace_back(Msg::messageType(), [handler](Owner* owner, const Mv_MessageInterface& m) {
            return (owner->*handler)(static_cast<const Msg&>(m));
        });
        return *this;
    }
    // Sends messages of type Msg to a handler that takes no argument.
    template <class Msg>
    Mv_MessageDispatcher& addSimpleRoute(void (Owner::*handler)())
    {
        mRoutes.emplace_back(Msg::messageType(), [handler](Owner* owner, const Mv_MessageInterface&) {
            (owner->*handler)();
            return true;
        });
        return *this;
    }

    void setDefaultRoute(DefaultRoute route) { mDefault = route; }

    // Calls the route of the message's type, or the default route. Answers
    // the route's result (true for routes without one), false when nothing
    // took the message.
    bool dispatch(Owner* owner, const Mv_MessageInterface& message) const
    {
        for (const auto& route : mRoutes) {
            if (route.first == message.type())
                return route.second(owner, message);
        }
        if (!mDefault)
            return false;
        (owner->*mDefault)();
        return true;
    }

private:
    typedef std::function<bool(Owner*, const Mv_MessageInterface&)> Route;
    std::vector<std::pair<const Mv_MessageType*, Route>> mRoutes;
    DefaultRoute mDefault;
};

#endif
