// The Edit menu acting on the focused commander.
#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <tuple>

namespace {

// Answers from a table ({enabled, text}; a command not in it is unknown) and
// records what it is told.
class FakeCommander : public Dak_EditMenuCommander
{
public:
    bool findCommandStatus(unsigned int command, bool& enabled, QString& text) override
    {
        ++mStatusCalls;
        const auto found = mStatus.find(command);
        if (found == mStatus.end())
            return false;
        std::tie(enabled, text) = found->second;
        return true;
    }
    void obeyCommand(unsigned int command) override { mObeyed.append(command); }

    std::map<unsigned int, std::pair<bool, QString>> mStatus;
    QVector<unsigned int> mObeyed;
    int mStatusCalls = 0;
};

class EditMenuTest : public ::testing::Test
{
protected:
    void SetUp() override { mMenu.focusInEvent(&mCommander); }
    void TearDown() override { mMenu.menu()->hide(); }
    // Shows the menu the way a user gets it and waits until it is up.
    bool popUp()
    {
        mMenu.menu()->popup(QPoint(20, 20));
        return QTest::qWaitForWindowExposed(mMenu.menu());
    }
    QAction* act(unsigned int command) const { return mMenu.action(command); }

    Dak_EditMenu& mMenu = Dak_EditMenu::instance();
    FakeCommander mCommander;
};

} // namespace

TEST_F(EditMenuTest, ItemsFollowTheCommanderStatus)
{
    mCommander.mStatus[Dak_EditMenuCommander::kUndo] = {true, QStringLiteral("&Undo Typing")};
    mCommander.mStatus[Dak_EditMenuCommander::kPaste] = {false, QString()};
    mMenu.updateActions();
    EXPECT_TRUE(act(Dak_EditMenuCommander::kUndo)->isEnabled());
    EXPECT_EQ(act(Dak_EditMenuCommander::kUndo)->text(), QStringLiteral("&Undo Typing"));
    EXPECT_FALSE(act(Dak_EditMenuCommander::kPaste)->isEnabled());
    EXPECT_FALSE(act(Dak_EditMenuCommander::kRedo)->isEnabled());

    // Showing the menu asks again; the special text lasts one showing only.
    mCommander.mStatus[Dak_EditMenuCommander::kUndo] = {false, QString()};
    mCommander.mStatus[Dak_EditMenuCommander::kPaste] = {true, QString()};
    const int callsBefore = mCommander.mStatusCalls;
    ASSERT_TRUE(popUp());
    EXPECT_EQ(mCommander.mStatusCalls - callsBefore, int(Dak_EditMenuCommander::kCommandCount));
    EXPECT_FALSE(act(Dak_EditMenuCommander::kUndo)->isEnabled());
    EXPECT_EQ(act(Dak_EditMenuCommander::kUndo)->text(), QStringLiteral("&Undo"));
    EXPECT_TRUE(act(Dak_EditMenuCommander::kPaste)->isEnabled());
}

TEST_F(EditMenuTest, ChoosingAnItemObeysOnTheCurrentCommander)
{
    mCommander.mStatus[Dak_EditMenuCommander::kCopy] = {true, QString()};
    mCommander.mStatus[Dak_EditMenuCommander::kSelectAll] = {true, QString()};
    ASSERT_TRUE(popUp());
    QMenu* menu = mMenu.menu();
    // A disabled item does nothing.
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(act(Dak_EditMenuCommander::kPaste)).center());
    EXPECT_TRUE(mCommander.mObeyed.isEmpty());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(act(Dak_EditMenuCommander::kCopy)).center());
    EXPECT_FALSE(menu->isVisible());
    // Keyboard: Select All by its mnemonic.
    ASSERT_TRUE(popUp());
    QTest::keyClick(menu, Qt::Key_A);
    EXPECT_EQ(mCommander.mObeyed,
              QVector<unsigned int>({Dak_EditMenuCommander::kCopy, Dak_EditMenuCommander::kSelectAll}));
}

TEST_F(EditMenuTest, FocusOutSwallowedOnlyForOwnMenu)
{
    FakeCommander other;
    EXPECT_FALSE(mMenu.isFocusOutEvent(&mCommander, true)); // menu not up
    ASSERT_TRUE(popUp());
    EXPECT_TRUE(mMenu.isFocusOutEvent(&mCommander, true));
    EXPECT_FALSE(mMenu.isFocusOutEvent(&mCommander, false));
    EXPECT_FALSE(mMenu.isFocusOutEvent(&other, true));
    mMenu.menu()->hide();

    QMenu foreign;
    foreign.addAction(QStringLiteral("Something"));
    foreign.popup(QPoint(40, 40));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&foreign));
    EXPECT_FALSE(mMenu.isFocusOutEvent(&mCommander, true));
    // A focus loss does not change which commander the menu acts on.
    EXPECT_EQ(mMenu.currentCommander(), &mCommander);
}

TEST_F(EditMenuTest, DestroyedCommanderIsForgotten)
{
    { FakeCommander passerby; } // not current: changes nothing
    EXPECT_EQ(mMenu.currentCommander(), &mCommander);

    auto doomed = std::make_unique<FakeCommander>();
    doomed->mStatus[Dak_EditMenuCommander::kCopy] = {true, QString()};
    mMenu.focusInEvent(doomed.get());
    mMenu.updateActions();
    ASSERT_TRUE(act(Dak_EditMenuCommander::kCopy)->isEnabled());
    doomed.reset();
    EXPECT_EQ(mMenu.currentCommander(), nullptr);
    EXPECT_FALSE(act(Dak_EditMenuCommander::kCopy)->isEnabled());
    act(Dak_EditMenuCommander::kCopy)->trigger(); // must reach nobody
    mMenu.updateActions();
}

TEST_F(EditMenuTest, InAMenuBarItsKeysStayWithTheFocusedWidget)
{
    mCommander.mStatus[Dak_EditMenuCommander::kSelectAll] = {true, QString()};
    mMenu.updateActions();
    QWidget window;
    auto* bar = new QMenuBar(&window);
    bar->addMenu(mMenu.menu());
    auto* button = new QPushButton(QStringLiteral("not a text field"), &window);
    button->move(0, 40);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    button->setFocus();
    QTest::keyClick(button, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(button, Qt::Key_Delete);
    EXPECT_TRUE(mCommander.mObeyed.isEmpty());
    bar->removeAction(mMenu.menu()->menuAction());
}
