// Kel_KeyEdit: key combinations as portable text, bound to a listened or a published string model.
#include "Kel_KeyEdit.h"
#include "Mv_ConnectionDict.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QKeyEvent>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A string model that counts the sets it is sent.
struct CountingString : Mve_SimpleValue<QString>
{
    using Mve_SimpleValue<QString>::Mve_SimpleValue;
    int handleSet(const QString& value) override
    {
        ++sets;
        return Mve_SimpleValue<QString>::handleSet(value);
    }
    int sets = 0;
};

class KeyEditTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        edit.show();
        edit.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&edit));
    }
    Kel_KeyEdit edit{nullptr, QStringLiteral("shortcut")};
};

} // namespace

TEST_F(KeyEditTest, ShowsTheCombinationPressedAndIgnoresModifiersAlone)
{
    EXPECT_EQ(edit.objectName(), QStringLiteral("shortcut"));
    QTest::keyPress(&edit, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(edit.text(), QString()) << "a modifier alone is not a combination";
    QTest::keyPress(&edit, Qt::Key_Shift, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(edit.text(), QString());
    QTest::keyClick(&edit, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(edit.text(), QStringLiteral("Ctrl+Shift+K"));
    QTest::keyRelease(&edit, Qt::Key_Shift, Qt::ControlModifier);
    QTest::keyRelease(&edit, Qt::Key_Control, Qt::NoModifier);

    // Each key replaces the text whole.
    QTest::keyClick(&edit, Qt::Key_F5, Qt::AltModifier);
    EXPECT_EQ(edit.text(), QStringLiteral("Alt+F5"));
    QTest::keyClick(&edit, Qt::Key_Left, Qt::MetaModifier);
    EXPECT_EQ(edit.text(), QStringLiteral("Meta+Left"));
    // The keypad is not a modifier of its own: keypad keys read like the main keyboard's.
    QTest::keyClick(&edit, Qt::Key_5, Qt::KeypadModifier);
    EXPECT_EQ(edit.text(), QStringLiteral("5"));
    QTest::keyClick(&edit, Qt::Key_Space);
    EXPECT_EQ(edit.text(), QStringLiteral("Space"));
}

TEST_F(KeyEditTest, APublishedFieldIsReadAndSetThroughItsModel)
{
    edit.SetTextConnection("  publish   KeyEditTest.Key  ");
    Mvt_SimpleValue<QString>::Listener reader;
    int notifications = 0;
    reader.setReceiveMessageCB([&](const Mv_MessageInterface&) { ++notifications; });
    reader.SetConnectionName(QStringLiteral("KeyEditTest.Key"));
    reader.connect(Mv_ConnectionEnvironment::blankEnvironment());
    ASSERT_TRUE(reader.isConnectedToModel());

    QTest::keyClick(&edit, Qt::Key_F7, Qt::ControlModifier);
    EXPECT_EQ(reader.value(), QStringLiteral("Ctrl+F7"));
    EXPECT_GE(notifications, 1);

    reader.set(QStringLiteral("Shift+F2"));
    EXPECT_EQ(edit.text(), QStringLiteral("Shift+F2"));
    EXPECT_EQ(reader.set(QStringLiteral("Shift+F2")), int(Mvt_SimpleValue_BaseAPI::kSetUnchanged));

    // A new specification withdraws the name; so does the field going away.
    edit.SetTextConnection("publish KeyEditTest.Other");
    EXPECT_FALSE(Mv_ConnectionDict::Singleton()->isPublished(QStringLiteral("KeyEditTest.Key")));
    EXPECT_FALSE(reader.isConnectedToModel());
    {
        Kel_KeyEdit second(nullptr, QStringLiteral("second"), QStringLiteral("publish KeyEditTest.Second"));
        EXPECT_TRUE(Mv_ConnectionDict::Singleton()->isPublished(QStringLiteral("KeyEditTest.Second")));
    }
    EXPECT_FALSE(Mv_ConnectionDict::Singleton()->isPublished(QStringLiteral("KeyEditTest.Second")));
}

TEST_F(KeyEditTest, AListenedModelIsSetOnceWithoutEcho)
{
    CountingString key(QStringLiteral("F1"), "KeyEditTest.Listened");
    publishAll({&key});
    edit.SetTextConnection("KeyEditTest.Listened");
    edit.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(edit.text(), QStringLiteral("F1"));
    EXPECT_EQ(edit.getInitialText(), QStringLiteral("F1"));

    key.sets = 0;
    QTest::keyClick(&edit, Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(key.getValue(), QStringLiteral("Ctrl+B"));
    EXPECT_EQ(key.sets, 1);

    key.setValue(QStringLiteral("F9"));
    EXPECT_EQ(edit.text(), QStringLiteral("F9"));
    EXPECT_EQ(edit.getInitialText(), QStringLiteral("F1")) << "only the first value is kept";

    // The same specification again keeps the connection.
    edit.SetTextConnection("KeyEditTest.Listened");
    key.setValue(QStringLiteral("F10"));
    EXPECT_EQ(edit.text(), QStringLiteral("F10"));

    // A refused write puts the model's value back into the field.
    key.setReadOnly(true);
    QTest::keyClick(&edit, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(key.getValue(), QStringLiteral("F10"));
    EXPECT_EQ(edit.text(), QStringLiteral("F10"));

    edit.ClearConnection();
    key.setValue(QStringLiteral("F11"));
    EXPECT_EQ(edit.text(), QStringLiteral("F10"));
}

TEST_F(KeyEditTest, MissingModelsAndEmptyNamesLeaveTheFieldUnbound)
{
    DebugMessageCollector quiet;
    edit.SetTextConnection("KeyEditTest.Missing");
    edit.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    QTest::keyClick(&edit, Qt::Key_F3);
    EXPECT_EQ(edit.text(), QStringLiteral("F3"));
    edit.SetTextConnection("publish");
    edit.SetTextConnection("publish   ");
    QTest::keyClick(&edit, Qt::Key_F4);
    EXPECT_EQ(edit.text(), QStringLiteral("F4"));
    EXPECT_EQ(edit.GetTextConnection(), QByteArray("publish   "));
}
