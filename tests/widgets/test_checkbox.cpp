// Kel_CheckBox: the bound-widget pattern, driven with real input.
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_FontManager.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A shown window holding one check box, connected on demand.
class CheckBoxTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        window.reset(new QWidget);
        auto* layout = new QVBoxLayout(window.get());
        box = new Kel_CheckBox(window.get(), "muteBox");
        box->setText(QStringLiteral("Mute"));
        layout->addWidget(box);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    void connectAll(boost::shared_ptr<const Mv_ConnectionEnvironment> env = Mv_ConnectionEnvironment::blankEnvironment())
    {
        Kel_ConnectionUtils::recursiveConnect(window.get(), env);
    }

    // Clicks the indicator, where a user would.
    void click()
    {
        QStyleOptionButton option;
        option.initFrom(box);
        option.text = box->text();
        const QRect indicator = box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, indicator.center());
    }

    std::unique_ptr<QWidget> window;
    Kel_CheckBox* box = nullptr;
};

} // namespace

TEST_F(CheckBoxTest, UnboundBoxIsVisibleUncheckedAndCannotBeOperated)
{
    connectAll();
    EXPECT_TRUE(box->isVisible());
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(box->isEnabled());
    click();
    EXPECT_FALSE(box->isChecked());
}

TEST_F(CheckBoxTest, CheckedModelDrivesTheBoxAndTakesTheUsersChanges)
{
    Mve_SimpleValue<bool> muted(true, "CheckBox.Muted");
    muted.Publish();
    box->setCheckedStateConnectionSpec("CheckBox.Muted");
    connectAll();
    EXPECT_TRUE(box->isVisible());
    EXPECT_TRUE(box->isEnabled());
    EXPECT_TRUE(box->isChecked());

    muted.setValue(false);
    EXPECT_FALSE(box->isChecked());

    click();
    EXPECT_TRUE(muted.getValue());
    EXPECT_TRUE(box->isChecked());

    box->setFocus();
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_FALSE(muted.getValue());
    EXPECT_FALSE(box->isChecked());
}

TEST_F(CheckBoxTest, RefusedChangesSnapBack)
{
    Mve_SimpleValue<bool> locked(true, "CheckBox.Locked");
    locked.setReadOnly(true);
    locked.Publish();
    box->setCheckedStateConnectionSpec("CheckBox.Locked");
    connectAll();
    ASSERT_TRUE(box->isChecked());
    ASSERT_TRUE(box->isEnabled());

    click();
    EXPECT_TRUE(box->isChecked());
    EXPECT_TRUE(locked.getValue());
    click();
    EXPECT_TRUE(box->isChecked());

    // A validator that rejects the value is refused the same way.
    locked.setReadOnly(false);
    locked.setValue(false);
    locked.setValidator([](const bool& v) { return !v; });
    ASSERT_FALSE(box->isChecked());
    click();
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(locked.getValue());
}

TEST_F(CheckBoxTest, ModelPublishedLaterConnectsAndLeavesAgain)
{
    box->setCheckedStateConnectionSpec("CheckBox.Late");
    connectAll();
    EXPECT_FALSE(box->isEnabled());
    EXPECT_FALSE(box->isChecked());

    auto late = std::make_unique<Mve_SimpleValue<bool>>(true, "CheckBox.Late");
    late->Publish();
    EXPECT_TRUE(box->isEnabled());
    EXPECT_TRUE(box->isChecked());

    late.reset();
    EXPECT_FALSE(box->isEnabled());
    EXPECT_FALSE(box->isChecked());
    EXPECT_TRUE(box->isVisible());
    click(); // nothing to send to
    EXPECT_FALSE(box->isChecked());
}

TEST_F(CheckBoxTest, VisibleAndEnabledStateModels)
{
    Mve_SimpleValue<bool> muted(true, "CheckBox.VisMuted");
    Mve_SimpleValue<bool> shown(false, "CheckBox.Shown");
    Mve_SimpleValue<bool> enabled(false, "CheckBox.Enabled");
    for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&muted, &shown, &enabled})
        m->Publish();
    box->setCheckedStateConnectionSpec("CheckBox.VisMuted");
    box->setVisibleStateConnectionSpec("CheckBox.Shown");
    box->setEnabledStateConnectionSpec("CheckBox.Enabled");
    connectAll();
    EXPECT_FALSE(box->isVisible());
    EXPECT_TRUE(box->isChecked());
    EXPECT_FALSE(box->isEnabled());

    shown.setValue(true);
    EXPECT_TRUE(box->isVisible());
    enabled.setValue(true);
    EXPECT_TRUE(box->isEnabled());

    // Without its visible-state model the box is visible again.
    shown.setValue(false);
    EXPECT_FALSE(box->isVisible());
    shown.UnPublish();
    EXPECT_TRUE(box->isVisible());

    // An enabled-state model alone does not make an unbound box operable.
    muted.UnPublish();
    EXPECT_FALSE(box->isEnabled());
}

TEST_F(CheckBoxTest, ConnectingAgainFollowsTheNewEnvironment)
{
    Mve_SimpleValue<bool> deckA(true, "DeckA.Muted");
    Mve_SimpleValue<bool> deckB(false, "DeckB.Muted");
    deckA.Publish();
    deckB.Publish();
    box->setProperty("checkedStateConnection", QByteArray("$Deck.Muted"));
    EXPECT_EQ(box->getCheckedStateConnectionSpec(), QByteArray("$Deck.Muted"));

    auto envA = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    envA->set(QStringLiteral("Deck"), QStringLiteral("DeckA"));
    connectAll(envA);
    EXPECT_TRUE(box->isChecked());

    auto envB = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    envB->set(QStringLiteral("Deck"), QStringLiteral("DeckB"));
    connectAll(envB);
    EXPECT_FALSE(box->isChecked());
    deckA.setValue(false);
    deckA.setValue(true);
    EXPECT_FALSE(box->isChecked());
    click();
    EXPECT_TRUE(deckB.getValue());
    EXPECT_TRUE(deckA.getValue());
}

TEST_F(CheckBoxTest, FontComesFromTheFontManager)
{
    const QFont before = box->font();
    box->setFontConnectionSpec(QByteArray());
    EXPECT_EQ(box->font(), before);

    const QString unknown = QStringLiteral("FontSettings.Kel_CheckBoxTest.Unknown.Font");
    ASSERT_FALSE(Kel_FontManager::hasFont(unknown));
    box->setFontConnectionSpec(unknown.toUtf8());
    EXPECT_TRUE(Kel_FontManager::hasFont(unknown));
    EXPECT_EQ(box->font(), QFont());

    const QFont big(QStringLiteral("Courier"), 31, QFont::Bold);
    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_CheckBoxTest.Font"), big);
    box->setProperty("fontConnection", QByteArray("FontSettings.Kel_CheckBoxTest.Font"));
    EXPECT_EQ(box->getFontConnectionSpec(), QByteArray("FontSettings.Kel_CheckBoxTest.Font"));
    EXPECT_EQ(box->font().pointSize(), 31);
    EXPECT_EQ(box->font().weight(), int(QFont::Bold));
}

TEST_F(CheckBoxTest, NamesAndPointsOfInterest)
{
    EXPECT_EQ(box->objectName(), QStringLiteral("muteBox"));
    QRect rect;
    EXPECT_TRUE(box->findPoi(QStringLiteral("muteBox"), &rect));
    EXPECT_EQ(rect, QRect(box->mapToGlobal(QPoint(0, 0)), box->size()));
    EXPECT_FALSE(box->findPoi(QStringLiteral("otherBox"), &rect));
    EXPECT_TRUE(box->findPoi(QString(), nullptr));

    Kel_CheckBox orphan;
    EXPECT_TRUE(orphan.objectName().isEmpty());
    EXPECT_EQ(orphan.getCheckedStateConnectionSpec(), QByteArray());
}

TEST(CheckBoxLifetime, BoxAndModelMayGoInEitherOrder)
{
    auto model = std::make_unique<Mve_SimpleValue<bool>>(true, "CheckBox.Lifetime");
    model->Publish();
    auto box = std::make_unique<Kel_CheckBox>(nullptr, "lifetime");
    box->setCheckedStateConnectionSpec("CheckBox.Lifetime");
    box->setVisibleStateConnectionSpec("CheckBox.Lifetime");
    box->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(box->isChecked());
    box.reset();
    EXPECT_EQ(model->listenerCount(), 0);
    model->setValue(false);

    box = std::make_unique<Kel_CheckBox>(nullptr, "lifetime");
    box->setCheckedStateConnectionSpec("CheckBox.Lifetime");
    box->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    model.reset();
    EXPECT_FALSE(box->isEnabled());
}
