// Publishing, late binding, unpublishing, renaming and refused sets. Destruction
// in every order, from outside and from inside notifications, is played at
// random by the stress test.
#include "ModelTestSupport.h"

#include "Mve_SimpleValue.h"

#include <memory>
#include <vector>

namespace {

typedef Mvt_SimpleValue<long>::Listener LongListener;
typedef Mve_SimpleValue<long> LongModel;

typedef DictTest Binding;

TEST_F(Binding, ListenerConnectedBeforePublishAttachesLateAndDetachesOnUnpublish)
{
    LongListener listener;
    Recorder rec(listener);
    listener.SetConnectionName("Volume");
    EXPECT_FALSE(listener.connect(env()));
    EXPECT_EQ(rec.takeHeard(), QStringList{"disconnected"}); // connect always tells the outcome
    EXPECT_EQ(listener.value(-7), -7);

    LongModel model(42, "Volume");
    ASSERT_TRUE(model.Publish(&dict));
    EXPECT_EQ(rec.takeHeard(), QStringList{"connected"});
    EXPECT_EQ(listener.value(-7), 42);

    model.setValue(43);
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    model.setValue(43); // unchanged: no notification
    EXPECT_TRUE(rec.takeHeard().isEmpty());

    model.UnPublish();
    EXPECT_FALSE(listener.isConnectedToModel());
    EXPECT_EQ(rec.takeHeard(), QStringList{"disconnected"});
    EXPECT_EQ(listener.value(-7), -7);

    ASSERT_TRUE(model.Publish(&dict)); // and it comes back
    EXPECT_EQ(rec.takeHeard(), QStringList{"connected"});
}

TEST_F(Binding, NamesAreExclusiveAndListenersFollowRenamesAndReconnects)
{
    LongModel first(1, "Name"), second(2, "Name");
    EXPECT_TRUE(first.Publish(&dict));
    {
        // A name taken twice is the application's mistake: a warning, not a trace.
        DebugMessageCollector collector;
        EXPECT_FALSE(second.Publish(&dict));
        ASSERT_EQ(collector.records().size(), 1);
        EXPECT_EQ(collector.records()[0].type, QtWarningMsg);
        EXPECT_EQ(collector.records()[0].category, "kel.platform");
        EXPECT_EQ(collector.records()[0].text, "Mv_ModelBase::Publish - the name Name is already published");
    }
    EXPECT_EQ(dict.lookup("Name"), &first);
    LongModel unnamed;
    EXPECT_FALSE(unnamed.Publish(&dict));

    LongListener onOld("Name", env()), onNew("Other", env());
    first.SetConnectionName("Other");
    EXPECT_FALSE(onOld.isConnectedToModel());
    EXPECT_EQ(onNew.value(), 1);
    EXPECT_TRUE(second.Publish(&dict)); // the name is free now
    EXPECT_EQ(onOld.value(), 2);

    // Reconnecting elsewhere leaves the previous model.
    Recorder rec(onOld);
    onOld.SetConnectionName("Other");
    EXPECT_TRUE(onOld.connect(env()));
    EXPECT_EQ(onOld.value(), 1);
    EXPECT_EQ(second.listenerCount(), 0);
    rec.takeHeard();
    second.setValue(10);
    EXPECT_TRUE(rec.takeHeard().isEmpty());
    onOld.ClearConnection();
    EXPECT_EQ(rec.takeHeard(), QStringList{"disconnected"});
    EXPECT_FALSE(onOld.connect(env())); // an empty name stays unconnected
}

TEST_F(Binding, DestroyingAModelWithAThousandListenersDetachesEveryOne)
{
    auto model = std::make_unique<LongModel>(1, "Shared");
    model->Publish(&dict);
    std::vector<std::unique_ptr<LongListener>> listeners;
    int disconnected = 0;
    for (int i = 0; i < 1000; ++i) {
        listeners.push_back(std::make_unique<LongListener>("Shared", env()));
        listeners.back()->setReceiveMessageCB([&disconnected](const Mv_MessageInterface& m) {
            if (const auto* c = m.as<Mvt_Root_Notifications::MsgConnectedChanged>())
                disconnected += c->isConnected() ? 0 : 1;
        });
    }
    EXPECT_EQ(model->listenerCount(), 1000);
    model.reset();
    EXPECT_EQ(disconnected, 1000);
    EXPECT_EQ(dict.listenerCount("Shared"), 1000); // they keep waiting for the name
}

TEST_F(Binding, RefusedSetsReportStatusThreeAndChangeNothing)
{
    LongModel model(5, "Locked");
    model.Publish(&dict);
    LongListener listener("Locked", env());
    Recorder rec(listener);
    rec.takeHeard();
    model.setReadOnly(true);
    EXPECT_EQ(listener.set(9), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(model.getValue(), 5);
    EXPECT_TRUE(rec.takeHeard().isEmpty());

    model.setReadOnly(false);
    model.setValidator([](const long& v) { return v >= 0; });
    EXPECT_EQ(listener.set(-1), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(listener.set(5), Mvt_SimpleValue_BaseAPI::kSetUnchanged);
    EXPECT_EQ(listener.set(6), Mvt_SimpleValue_BaseAPI::kSetChanged);
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});

    // A new validator replaces the old one; an empty one accepts everything.
    model.setValidator([](const long& v) { return v < 0; });
    EXPECT_EQ(listener.set(7), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(listener.set(-2), Mvt_SimpleValue_BaseAPI::kSetChanged);
    model.setValidator(LongModel::Validator());
    EXPECT_EQ(listener.set(8), Mvt_SimpleValue_BaseAPI::kSetChanged);
}

TEST_F(Binding, OwnersCanAnswerRequestsThroughTheReceiveCallback)
{
    // A model that does not store its value: the owner answers for it.
    QString text = "owned";
    Mvt_SimpleValue<QString> model("Text");
    model.setReceiveMessageCB([&text](const Mv_MessageInterface& m) {
        if (const auto* g = m.as<Mvt_SimpleValue_API<QString>::MsgGet>()) {
            *g->result() = text;
            return true;
        }
        if (const auto* s = m.as<Mvt_SimpleValue_API<QString>::MsgSet>()) {
            text = s->value();
            return true;
        }
        return false;
    });
    model.Publish(&dict);
    Mvt_SimpleValue<QString>::Listener listener("Text", env());
    // Variant requests reach the owner as typed ones.
    Mv_Variant v;
    EXPECT_TRUE(listener.SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&v), false));
    EXPECT_EQ(v.value<QString>(), "owned");
    EXPECT_TRUE(listener.SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgSetVariant(Mv_Variant(12)), true));
    EXPECT_EQ(text, "12");

    // Without a callback the model refuses: requests fail, nothing is read.
    model.setReceiveMessageCB(Mv_ModelBase::ReceiveMessageCB());
    EXPECT_FALSE(model.hasReceiveMessageCB());
    QString read = "untouched";
    EXPECT_FALSE(listener.get(read));
    EXPECT_EQ(read, "untouched");
    EXPECT_EQ(listener.set("x"), Mvt_SimpleValue_BaseAPI::kSetRefused);
    EXPECT_EQ(text, "12");
}

} // namespace
