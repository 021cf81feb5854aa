// Teardown and publication from inside notifications: listeners that react
// to what they hear by destroying or publishing models and dictionaries. The
// stress test plays such reactions at random; these are the orders it is
// least likely to meet.
#include "ModelTestSupport.h"

#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <memory>

namespace {

typedef Mvt_SimpleValue<long>::Listener LongListener;
typedef Mvt_SimpleValue<QString>::Listener StringListener;
typedef Mve_SimpleValue<long> LongModel;

typedef DictTest Lifecycle;

// A record array "Clips" with fields "v" and "w" and two rows.
std::unique_ptr<Mve_RecordArray> makeClips()
{
    auto clips = std::make_unique<Mve_RecordArray>("Clips");
    clips->addField<long>("v");
    clips->addField<long>("w");
    clips->appendRow();
    clips->appendRow();
    return clips;
}

TEST(LifecycleRecords, ARecordArrayMayBeDestroyedWithItsDictionaryByAListenerWhileItNotifies)
{
    enum Op { Insert, Remove, Move, Publish, UnPublish };
    const char* const opNames[] = {"insertRows", "removeRows", "moveRow", "Publish", "UnPublish"};
    for (int op = Insert; op <= UnPublish; ++op) {
        for (const char* heardOn : {"Clips", "Clips.v", "Clips.w"}) {
            for (const bool destroyDictionary : {false, true}) {
                SCOPED_TRACE(QStringLiteral("%1, listener on %2, %3 destroyed")
                                 .arg(opNames[op], heardOn, destroyDictionary ? "dictionary" : "record array")
                                 .toStdString());
                auto dict = std::make_unique<Mv_ConnectionDict>();
                auto clips = makeClips();
                if (op != Publish)
                    clips->Publish(dict.get());
                Mv_ListenerBase listener(heardOn, Mv_ConnectionEnvironment::create({}, dict.get()));
                Mv_ListenerBase bystander("Clips.w", Mv_ConnectionEnvironment::create({}, dict.get()));
                listener.setReceiveMessageCB([&](const Mv_MessageInterface&) {
                    if (destroyDictionary)
                        dict.reset();
                    else
                        clips.reset();
                });
                switch (op) {
                case Insert: clips->insertRows(1, 2); break;
                case Remove: clips->removeRows(0, 1); break;
                case Move: clips->moveRow(0, 1); break;
                case Publish: clips->Publish(dict.get()); break;
                case UnPublish: clips->UnPublish(); break;
                }
                EXPECT_FALSE(listener.isConnectedToModel());
                EXPECT_FALSE(bystander.isConnectedToModel());
                if (destroyDictionary) {
                    ASSERT_TRUE(clips);
                    EXPECT_FALSE(clips->isPublished());
                    EXPECT_FALSE(clips->field<long>("v")->isPublished());
                } else {
                    EXPECT_FALSE(clips);
                    EXPECT_EQ(dict->publishedNames(), QStringList());
                }
            }
        }
    }
}

TEST_F(Lifecycle, ListenersHearWhenTheirModelIsReplacedUnderTheSameName)
{
    // The first listener replaces the model whenever it leaves, and destroys
    // it when told of a value change.
    auto model = std::make_unique<LongModel>(1, "M");
    model->Publish(&dict);
    LongListener first("M", env()), second("M", env());
    long replacementValue = 7;
    first.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>()) {
            model.reset();
        } else if (!first.isConnectedToModel()) {
            model = std::make_unique<LongModel>(replacementValue, "M");
            model->Publish(&dict);
        }
    });
    long seenBySecond = -1;
    QStringList heardBySecond;
    second.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        seenBySecond = second.value(-1);
        if (const auto* c = m.as<Mvt_Root_Notifications::MsgConnectedChanged>())
            heardBySecond.append(c->isConnected() ? "connected" : "disconnected");
    });
    model.reset();
    EXPECT_EQ(heardBySecond, QStringList{"connected"}); // the new model, announced
    EXPECT_EQ(seenBySecond, 7);

    // The value change the second listener was about to hear is replaced by
    // the announcement of the new model.
    heardBySecond.clear();
    replacementValue = 9;
    model->setValue(8);
    EXPECT_EQ(heardBySecond, QStringList{"connected"});
    EXPECT_EQ(seenBySecond, 9);
}

TEST_F(Lifecycle, AnElementListenerHearsItsIndexModelArriveEvenWhenAnotherListenerPublishesTheArrayFirst)
{
    auto rowEnv = env();
    rowEnv->set("Row", "Row");
    Mve_Array<QString> array({"a", "b"}, "A");
    Mv_ListenerBase publisher("Row", env());
    publisher.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        const auto* c = m.as<Mvt_Root_Notifications::MsgConnectedChanged>();
        if (c && c->isConnected())
            array.Publish(&dict);
    });
    StringListener cell("A[$Row]", rowEnv);
    QString shown = "unset";
    cell.setReceiveMessageCB([&](const Mv_MessageInterface&) { shown = cell.value("none"); });
    Mve_Index<long> row(1, "Row");
    row.Publish(&dict);
    EXPECT_TRUE(cell.isConnectedToModel());
    EXPECT_EQ(shown, "b");
    row.setValue(0);
    EXPECT_EQ(shown, "a");
}

} // namespace
