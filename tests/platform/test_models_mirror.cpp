// A container shown under a second name: size, notifications and moves
// reach the source, whenever either of the two is published.
#include "ModelTestSupport.h"
#include "Mve_Array.h"
#include "Mve_ContainerMirror.h"

#include <memory>

namespace {

class MirrorTest : public DictTest
{
protected:
    void SetUp() override
    {
        source.setValues({10, 11, 12});
        source.SetConnectionName(QStringLiteral("Src"));
        mirror.setSourceName(QStringLiteral("Src"));
        mirror.SetConnectionName(QStringLiteral("Src.meta"));
        listener.SetConnectionName(QStringLiteral("Src.meta"));
    }

    Mve_Array<long> source;
    Mve_ContainerMirror mirror;
    Mvt_ArrayContainer::Listener listener;
};

TEST_F(MirrorTest, FollowsTheSourceWhicheverIsPublishedFirst)
{
    Recorder heard(listener);
    long toldSize = -1;
    heard.onMessage = [&](const Mv_MessageInterface& m) {
        if (const auto* r = m.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>())
            toldSize = r->newSize();
    };
    ASSERT_TRUE(mirror.Publish(&dict));
    listener.connect(env());
    EXPECT_EQ(listener.size(), 0) << "no source yet";
    heard.takeHeard();

    ASSERT_TRUE(source.Publish(&dict));
    EXPECT_EQ(listener.size(), 3);
    EXPECT_EQ(toldSize, 3) << "the source's arrival is a replacement of everything";

    source.UnPublish();
    EXPECT_EQ(listener.size(), 0);
    EXPECT_EQ(toldSize, 0);

    // Published again in the other order, then renamed away.
    mirror.UnPublish();
    ASSERT_TRUE(source.Publish(&dict));
    ASSERT_TRUE(mirror.Publish(&dict));
    EXPECT_EQ(listener.size(), 3);
    mirror.setSourceName(QStringLiteral("Elsewhere"));
    EXPECT_EQ(listener.size(), 0);
    EXPECT_EQ(toldSize, 0);
}

TEST_F(MirrorTest, PassesNotificationsAndMovesThrough)
{
    ASSERT_TRUE(source.Publish(&dict));
    ASSERT_TRUE(mirror.Publish(&dict));
    Recorder heard(listener);
    listener.connect(env());
    heard.takeHeard();

    source.append(13);
    source.setAt(0, 20);
    EXPECT_EQ(heard.takeHeard(), QStringList({"MsgElementsReplaced", "MsgElementValueChanged"}));

    Mvt_ArrayContainer::Listener onSource;
    Recorder sourceHeard(onSource);
    onSource.SetConnectionName(QStringLiteral("Src"));
    onSource.connect(env());
    sourceHeard.takeHeard();

    EXPECT_TRUE(listener.requestMove(0, 3));
    EXPECT_EQ(source.values(), std::vector<long>({11, 12, 13, 20}));
    EXPECT_EQ(heard.takeHeard(), QStringList({"MsgElementsMoved"}));
    EXPECT_EQ(sourceHeard.takeHeard(), QStringList({"MsgElementsMoved"}));

    EXPECT_FALSE(listener.requestMove(0, 4)) << "out of range";
    source.setReadOnly(true);
    EXPECT_FALSE(listener.requestMove(0, 1)) << "the source decides";
    EXPECT_EQ(source.values(), std::vector<long>({11, 12, 13, 20}));
    EXPECT_TRUE(heard.takeHeard().isEmpty());
}

TEST_F(MirrorTest, AListenerMayDestroyTheMirrorWhileItForwards)
{
    ASSERT_TRUE(source.Publish(&dict));
    auto owned = std::make_unique<Mve_ContainerMirror>(QStringLiteral("Src"), QStringLiteral("Owned"));
    ASSERT_TRUE(owned->Publish(&dict));
    Mvt_ArrayContainer::Listener first, second;
    Recorder firstHeard(first), secondHeard(second);
    firstHeard.onMessage = [&](const Mv_MessageInterface& m) {
        if (m.is<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>())
            owned.reset();
    };
    for (auto* l : {&first, &second}) {
        l->SetConnectionName(QStringLiteral("Owned"));
        l->connect(env());
    }
    source.append(1);
    EXPECT_FALSE(owned);
    EXPECT_FALSE(second.isConnectedToModel());
    source.append(2); // the dead mirror's source listener is gone too
    EXPECT_EQ(source.size(), 5);
}

} // namespace
