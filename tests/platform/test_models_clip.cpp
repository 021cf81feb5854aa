// The clip model kind: a listener reads the mob id and marks, hears which
// of them changed, and reads nothing from a clip that is not there.
#include "ModelTestSupport.h"

#include "Mve_Clip.h"
#include "Mvt_Root_Notifications.h"
#include "Mvt_SimpleValue.h"

#include <QStringList>
#include <gtest/gtest.h>

TEST(ClipModel, ListenersReadTheValuesAndHearWhichOneChanged)
{
    Mvt_ClipInterface::Listener clip(QStringLiteral("Sequence"), Mv_ConnectionEnvironment::blankEnvironment());
    QStringList heard;
    clip.setReceiveMessageCB([&heard](const Mv_MessageInterface& message) { heard << message.typeName(); });

    Mv_Timecode mark(1, 0, 0, 0);
    EXPECT_FALSE(clip.getMarkIn(mark)); // not published: untouched
    EXPECT_EQ(mark, Mv_Timecode(1, 0, 0, 0));
    EXPECT_EQ(clip.mobID(), QString());

    Mve_Clip sequence(QStringLiteral("Sequence"));
    sequence.setMobID(QStringLiteral("060a2b34"));
    sequence.setMarkIn(Mv_Timecode(0, 0, 10, 0));
    sequence.Publish();
    heard.clear();

    EXPECT_EQ(clip.mobID(), QStringLiteral("060a2b34"));
    EXPECT_TRUE(clip.getMarkIn(mark));
    EXPECT_EQ(mark, Mv_Timecode(0, 0, 10, 0));
    EXPECT_TRUE(clip.getMarkOut(mark));
    EXPECT_EQ(mark, Mv_Timecode());

    EXPECT_TRUE(sequence.setMarkOut(Mv_Timecode(0, 1, 0, 0)));
    EXPECT_FALSE(sequence.setMarkOut(Mv_Timecode(0, 1, 0, 0))); // unchanged: nobody hears of it
    EXPECT_TRUE(sequence.setMarkIn(Mv_Timecode(0, 0, 5, 0)));
    EXPECT_TRUE(sequence.setMobID(QStringLiteral("060a2b35")));
    EXPECT_EQ(heard, (QStringList{"Mvt_ClipInterface_Notifications::MsgMarkOutChanged",
                                  "Mvt_ClipInterface_Notifications::MsgMarkInChanged",
                                  "Mvt_ClipInterface_Notifications::MsgMobIDChanged"}));

    // A value listener of the same name is not answered by a clip.
    Mvt_SimpleValue<QString>::Listener text(QStringLiteral("Sequence"), Mv_ConnectionEnvironment::blankEnvironment());
    QString value = QStringLiteral("none");
    EXPECT_FALSE(text.get(value));
    EXPECT_EQ(value, QStringLiteral("none"));
}
