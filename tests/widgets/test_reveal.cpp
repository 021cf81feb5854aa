// Reveal groups (button, header, body), the scroll view and the action
// dialog: the widgets that hold other widgets or close over them.
#include "Kel_ActionDialog.h"
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_RevealBody.h"
#include "Kel_RevealButton.h"
#include "Kel_RevealHeader.h"
#include "Kel_ScrollView.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// A shown window with a reveal header, the body it opens and closes (holding
// a bound check box) and a bool model "Reveal.Open".
class RevealTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        open.Publish();
        muted.Publish();
        auto* layout = new QVBoxLayout(&window);
        header = new Kel_RevealHeader(&window, "header");
        header->setText(QStringLiteral("Audio"));
        body = new Kel_RevealBody(&window, "body");
        inner = new Kel_CheckBox(body, "inner");
        inner->setCheckedStateConnectionSpec("Reveal.Muted");
        (new QVBoxLayout(body))->addWidget(inner);
        layout->addWidget(header);
        layout->addWidget(body);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }

    Mve_SimpleValue<bool> open{false, "Reveal.Open"};
    Mve_SimpleValue<bool> muted{true, "Reveal.Muted"};
    QWidget window;
    Kel_RevealHeader* header = nullptr;
    Kel_RevealBody* body = nullptr;
    Kel_CheckBox* inner = nullptr;
};

} // namespace

TEST_F(RevealTest, HeaderAndBodyFollowTheRevealModel)
{
    header->setRevealStateConnection("Reveal.Open");
    body->setRevealStateConnection("Reveal.Open");
    connect();
    EXPECT_FALSE(body->isVisible());
    EXPECT_FALSE(header->button()->isRevealed());
    EXPECT_EQ(header->button()->arrowType(), Qt::RightArrow);
    // The body connected what it holds, though hidden.
    EXPECT_TRUE(inner->isChecked() && inner->isEnabled());

    QTest::mouseClick(header->button(), Qt::LeftButton);
    EXPECT_TRUE(open.getValue());
    EXPECT_TRUE(body->isVisible() && inner->isVisible());
    EXPECT_EQ(header->button()->arrowType(), Qt::DownArrow);

    // A click on the header's text works the button too.
    QTest::mouseClick(header->label(), Qt::LeftButton);
    EXPECT_FALSE(open.getValue());
    EXPECT_FALSE(body->isVisible());
    open.setValue(true);
    EXPECT_TRUE(body->isVisible() && header->button()->isRevealed());
}

TEST_F(RevealTest, RefusedRevealIsTakenBack)
{
    header->setRevealStateConnection("Reveal.Open");
    body->setRevealStateConnection("Reveal.Open");
    connect();
    open.setReadOnly(true);
    QTest::mouseClick(header->button(), Qt::LeftButton);
    EXPECT_FALSE(open.getValue());
    EXPECT_FALSE(header->button()->isRevealed());
    EXPECT_EQ(header->button()->arrowType(), Qt::RightArrow);
    EXPECT_FALSE(body->isVisible());
}

TEST_F(RevealTest, WithoutAModelTheBodyShowsAndTheButtonIsInert)
{
    header->setTextConnectionSpec("Reveal.Title");
    body->setRevealStateConnection("Reveal.NotPublished");
    connect();
    EXPECT_TRUE(body->isVisible());
    EXPECT_TRUE(body->isRevealed());
    EXPECT_FALSE(header->button()->isEnabled());
    EXPECT_TRUE(header->button()->isRevealed());
    QTest::mouseClick(header->label(), Qt::LeftButton);
    EXPECT_TRUE(header->button()->isRevealed());
    // The text model is missing: the header's label is empty until it comes.
    EXPECT_TRUE(header->label()->text().isEmpty());
    Mve_SimpleValue<QString> title(QStringLiteral("Video"), "Reveal.Title");
    title.Publish();
    EXPECT_EQ(header->text(), QStringLiteral("Video"));
}

TEST(ScrollView, ScrollsAndConnectsTheWidgetItHolds)
{
    Mve_SimpleValue<bool> muted(true, "Scroll.Muted");
    muted.Publish();
    QWidget window;
    auto* scroll = new Kel_ScrollView(&window, "scroll");
    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    Kel_CheckBox* first = nullptr;
    for (int i = 0; i < 40; ++i) {
        auto* box = new Kel_CheckBox(contents, "box");
        box->setText(QStringLiteral("Track %1").arg(i));
        box->setCheckedStateConnectionSpec("Scroll.Muted");
        layout->addWidget(box);
        first = first ? first : box;
    }
    scroll->setWidget(contents);
    (new QVBoxLayout(&window))->addWidget(scroll);
    window.resize(200, 120);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(first->isChecked() && first->isEnabled());
    EXPECT_TRUE(scroll->widgetResizable());
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    QTest::keyClick(scroll->verticalScrollBar(), Qt::Key_PageDown);
    EXPECT_GT(scroll->verticalScrollBar()->value(), 0);
}

namespace {

// A dialog with OK and Cancel whose scripts call Dialog.Apply() and Dialog.Discard().
class ActionDialogTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        discard.Publish();
        dialog.setActionScript("Dialog.Apply()");
        dialog.setRejectScript("Dialog.Discard()");
        buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
        (new QVBoxLayout(&dialog))->addWidget(buttons);
        dialog.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&dialog, Mv_ConnectionEnvironment::blankEnvironment()); }
    QPushButton* ok() const { return buttons->button(QDialogButtonBox::Ok); }

    int applied = 0;
    int discarded = 0;
    Mve_Action<void()> apply{[this] { ++applied; }, "Dialog.Apply"};
    Mve_Action<void()> discard{[this] { ++discarded; }, "Dialog.Discard"};
    Kel_ActionDialog dialog{nullptr, "dialog"};
    QDialogButtonBox* buttons = nullptr;
};

} // namespace

TEST_F(ActionDialogTest, OkRunsTheScriptAndCloses)
{
    apply.Publish();
    connect();
    EXPECT_TRUE(ok()->isEnabled());
    QTest::mouseClick(ok(), Qt::LeftButton);
    EXPECT_EQ(applied, 1);
    EXPECT_EQ(dialog.result(), int(QDialog::Accepted));
    EXPECT_FALSE(dialog.isVisible());

    // Cancel runs the other script; a second connection does not run them twice.
    dialog.show();
    connect();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    EXPECT_EQ(discarded, 1);
    EXPECT_EQ(applied, 1);
    EXPECT_EQ(dialog.result(), int(QDialog::Rejected));
}

TEST_F(ActionDialogTest, CannotBeAcceptedWhileItsScriptCannotRun)
{
    connect();
    EXPECT_FALSE(ok()->isEnabled());
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(applied, 0);

    apply.Publish();
    EXPECT_TRUE(ok()->isEnabled());
    apply.setEnabled(false);
    EXPECT_FALSE(ok()->isEnabled());
    apply.setEnabled(true);
    QTest::mouseClick(ok(), Qt::LeftButton);
    EXPECT_EQ(applied, 1);
    EXPECT_FALSE(dialog.isVisible());
}
