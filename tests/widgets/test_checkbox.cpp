// Kel_CheckBox: the bound-widget pattern, driven with real input.
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_FontManager.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace {

// A shown window holding one check box.
class CheckBoxTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        box = new Kel_CheckBox(&window, "muteBox");
        box->setText(QStringLiteral("Mute"));
        (new QVBoxLayout(&window))->addWidget(box);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void connect(const QString& deck = QString())
    {
        Kel_ConnectionUtils::recursiveConnect(&window, environmentWith(QStringLiteral("Deck"), deck));
    }
    // Clicks the indicator, where a user would.
    void click() { QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(6, box->height() / 2)); }
    QWidget window;
    Kel_CheckBox* box = nullptr;
};

} // namespace

TEST_F(CheckBoxTest, CheckedModelDrivesTheBoxAndTakesTheUsersChanges)
{
    Mve_SimpleValue<bool> deckA(false, "DeckA.Muted");
    Mve_SimpleValue<bool> deckB(false, "DeckB.Muted");
    deckA.Publish();
    deckB.Publish();
    box->setProperty("checkedStateConnection", QByteArray("$Deck.Muted"));
    connect(QStringLiteral("DeckA"));
    EXPECT_TRUE(box->isEnabled());
    deckA.setValue(true);
    EXPECT_TRUE(box->isChecked());
    click();
    EXPECT_FALSE(deckA.getValue() || box->isChecked());

    // Connected again in another environment, the box follows the other model only.
    connect(QStringLiteral("DeckB"));
    deckA.setValue(true);
    EXPECT_FALSE(box->isChecked());
    click();
    EXPECT_TRUE(deckB.getValue());
}

TEST_F(CheckBoxTest, RefusedChangesSnapBack)
{
    Mve_SimpleValue<bool> locked(true, "CheckBox.Locked");
    locked.setReadOnly(true);
    locked.Publish();
    box->setCheckedStateConnectionSpec("CheckBox.Locked");
    connect();
    ASSERT_TRUE(box->isChecked() && box->isEnabled());
    click();
    EXPECT_TRUE(box->isChecked());

    // A validator that rejects the value is refused the same way.
    locked.setReadOnly(false);
    locked.setValue(false);
    locked.setValidator([](const bool& v) { return !v; });
    click();
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(locked.getValue());
}

TEST_F(CheckBoxTest, UnboundBoxIsInertUntilItsModelIsPublished)
{
    connect();
    EXPECT_TRUE(box->isVisible());
    EXPECT_FALSE(box->isEnabled());
    click();
    EXPECT_FALSE(box->isChecked());

    box->setCheckedStateConnectionSpec("CheckBox.Late");
    connect();
    EXPECT_FALSE(box->isEnabled());
    auto late = std::make_unique<Mve_SimpleValue<bool>>(true, "CheckBox.Late");
    late->Publish();
    EXPECT_TRUE(box->isEnabled() && box->isChecked());
    late.reset();
    EXPECT_FALSE(box->isEnabled() || box->isChecked());
}

TEST_F(CheckBoxTest, VisibleEnabledAndFontModels)
{
    Mve_SimpleValue<bool> muted(true, "CheckBox.VisMuted");
    Mve_SimpleValue<bool> shown(false, "CheckBox.Shown");
    Mve_SimpleValue<bool> enabled(false, "CheckBox.Enabled");
    publishAll({&muted, &shown, &enabled});
    box->setCheckedStateConnectionSpec("CheckBox.VisMuted");
    box->setVisibleStateConnectionSpec("CheckBox.Shown");
    box->setEnabledStateConnectionSpec("CheckBox.Enabled");
    connect();
    EXPECT_FALSE(box->isVisible() || box->isEnabled());
    shown.setValue(true);
    enabled.setValue(true);
    EXPECT_TRUE(box->isVisible() && box->isEnabled());

    // Without its visible-state model the box is visible; without its
    // checked-state model it is disabled whatever the enabled state says.
    shown.setValue(false);
    shown.UnPublish();
    EXPECT_TRUE(box->isVisible());
    muted.UnPublish();
    EXPECT_FALSE(box->isEnabled());

    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_CheckBoxTest.Font"), QFont(QStringLiteral("Courier"), 31));
    box->setProperty("fontConnection", QByteArray("FontSettings.Kel_CheckBoxTest.Font"));
    EXPECT_EQ(box->font().pointSize(), 31);
}

TEST(CheckBoxLifetime, DeletedBoxLeavesNoListenerOnItsModel)
{
    Mve_SimpleValue<bool> model(false, "CheckBox.Lifetime");
    model.Publish();
    auto box = std::make_unique<Kel_CheckBox>();
    box->setCheckedStateConnectionSpec("CheckBox.Lifetime");
    box->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    box.reset();
    EXPECT_EQ(model.listenerCount(), 0);
}

// Models published and withdrawn, values set, specifications named and
// cleared and the box reconnected in any order: the box always shows what
// a full re-read of the three models gives.
TEST_F(CheckBoxTest, RandomModelChangesAlwaysShowTheFullReRead)
{
    Mve_SimpleValue<bool> shown(true, "CheckBox.Random.Shown");
    Mve_SimpleValue<bool> enabled(true, "CheckBox.Random.Enabled");
    Mve_SimpleValue<bool> checked(false, "CheckBox.Random.Checked");
    Mve_SimpleValue<bool>* models[] = {&shown, &enabled, &checked};
    const QByteArray names[] = {"CheckBox.Random.Shown", "CheckBox.Random.Enabled"};
    bool published[] = {false, false, false};
    bool named[] = {false, false}; // as of the last connection
    bool nextNamed[] = {false, false};
    box->setCheckedStateConnectionSpec("CheckBox.Random.Checked");
    connect();

    std::mt19937 random(26);
    for (int step = 0; step < 400; ++step) {
        const int which = int(random() % 3);
        switch (random() % 5) {
        case 0: // publish or withdraw
            published[which] = !published[which];
            if (published[which])
                models[which]->Publish();
            else
                models[which]->UnPublish();
            break;
        case 1:
        case 2:
            models[which]->setValue(!models[which]->getValue());
            break;
        case 3: // name or clear the visible or enabled specification
            if (which < 2) {
                nextNamed[which] = !nextNamed[which];
                const QByteArray spec = nextNamed[which] ? names[which] : QByteArray();
                if (which == 0)
                    box->setVisibleStateConnectionSpec(spec);
                else
                    box->setEnabledStateConnectionSpec(spec);
            }
            break;
        default:
            connect();
            named[0] = nextNamed[0];
            named[1] = nextNamed[1];
            break;
        }
        const bool hidden = named[0] && published[0] && !shown.getValue();
        const bool shownChecked = published[2] && checked.getValue();
        const bool operable = published[2] && (!(named[1] && published[1]) || enabled.getValue());
        ASSERT_EQ(box->isHidden(), hidden) << "step " << step;
        ASSERT_EQ(box->isChecked(), shownChecked) << "step " << step;
        ASSERT_EQ(box->isEnabled(), operable) << "step " << step;
        if (operable && !hidden && step % 7 == 0) { // the user ticks it: the model takes it
            click();
            ASSERT_EQ(checked.getValue(), !shownChecked) << "step " << step;
            ASSERT_EQ(box->isChecked(), !shownChecked) << "step " << step;
        }
    }
    for (int i = 0; i < 3; ++i) {
        if (published[i])
            models[i]->UnPublish();
    }
}
