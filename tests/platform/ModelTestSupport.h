#ifndef MODELTESTSUPPORT_H
#define MODELTESTSUPPORT_H

#include "Mv_ConnectionDict.h"
#include "Mv_ListenerBase.h"
#include "Mv_MessageInterface.h"
#include "Mvt_Root_Notifications.h"
#include "TestSupport.h"

#include <QStringList>
#include <functional>
#include <utility>
#include <gtest/gtest.h>

// Records what a listener's owner hears: the type names of the messages
// and the connected flag of each connected-changed notification.
class Recorder
{
public:
    explicit Recorder(Mv_ListenerBase& listener)
    {
        listener.setReceiveMessageCB([this](const Mv_MessageInterface& m) { record(m); });
    }

    void record(const Mv_MessageInterface& m)
    {
        if (const auto* c = m.as<Mvt_Root_Notifications::MsgConnectedChanged>())
            heard.append(c->isConnected() ? QStringLiteral("connected") : QStringLiteral("disconnected"));
        else
            heard.append(QString::fromLatin1(m.typeName()).section(QStringLiteral("::"), -1));
        if (onMessage)
            onMessage(m);
    }

    QStringList takeHeard() { return std::exchange(heard, {}); }

    QStringList heard;
    std::function<void(const Mv_MessageInterface&)> onMessage;
};

// Each test works in its own dictionary so that names never collide.
class DictTest : public ::testing::Test
{
protected:
    Mv_ConnectionEnvironment::Ptr env() const { return Mv_ConnectionEnvironment::create({}, &dict); }
    mutable Mv_ConnectionDict dict;
};

#endif
