// Kel_WidgetStack: a card per tab of a tab model, the current tab's card
// raised, the placard while there is none; and Kel_Placard.
#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_Placard.h"
#include "Kel_FontManager.h"
#include "Kel_WidgetStack.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProxyStyle>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// The tab models of the group "Insp", a stack over them in a shown window,
// and the forms of tests/data/lists. View types: "Clip" (ClipCard.ui, the
// comment field takes the focus), "Notes" (NotesCard.ui, its notes field is
// the focus proxy), "Caption" (the library class Kel_Label).
class WidgetStackTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previousResourcePath = Ost_Resource::getResourcePath();
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("lists/"));
        tabs.addField<long>("id");
        tabs.addField<QString>("env");
        tabs.addField<QString>("viewtype");
        tabs.addField<QString>("tabShortName");
        publishAll({&tabs, &current, &rowChanged, &clipA, &clipB});
        stack = new Kel_WidgetStack(&window, "inspector", QStringLiteral("Placard"));
        stack->addViewType(QStringLiteral("Clip"), QStringLiteral("ClipCard"), true, QStringLiteral("comment"));
        stack->addViewType(QStringLiteral("Notes"), QStringLiteral("NotesCard"), true, QString(), QStringLiteral("notes"));
        stack->addViewType(QStringLiteral("Caption"), QStringLiteral("Kel_Label"), false);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(new QLineEdit(&window)); // somewhere else the focus could go
        layout->addWidget(stack);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void TearDown() override { Ost_Resource::setResourcePath(previousResourcePath); }

    // One burst, so that a connected stack hears of the tab once it is complete.
    void addTab(long id, const char* viewType, const char* env = "", const char* shortName = "")
    {
        tabs.beginUpdate();
        const long row = tabs.appendRow();
        tabs.setValue<long>(row, "id", id);
        tabs.setValue<QString>(row, "env", QString::fromLatin1(env));
        tabs.setValue<QString>(row, "viewtype", QString::fromLatin1(viewType));
        tabs.setValue<QString>(row, "tabShortName", QString::fromLatin1(shortName));
        tabs.endUpdate();
    }
    void connect()
    {
        Kel_ConnectionUtils::recursiveConnect(&window, environmentWith(QStringLiteral("TabGroupBaseName"), QStringLiteral("Insp")));
    }
    QList<QWidget*> cards() const
    {
        QList<QWidget*> result;
        for (long i = 0; i < stack->entryCount(); ++i)
            result << stack->entryCard(i);
        return result;
    }
    static void deleteRemovedCards() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    Mve_RecordArray tabs{"Insp.TabData"};
    Mve_SimpleValue<long> current{-1, "Insp.TabData.currentUniqueID"};
    Mve_SimpleValue<long> rowChanged{-1, "Insp.TabData.rowChanged"};
    Mve_SimpleValue<QString> clipA{QStringLiteral("Clip A"), "ClipA.Name"};
    Mve_SimpleValue<QString> clipB{QStringLiteral("Clip B"), "ClipB.Name"};
    QWidget window;
    Kel_WidgetStack* stack = nullptr;
    QString previousResourcePath;
};

} // namespace

TEST_F(WidgetStackTest, BuildsACardPerTabByViewTypeAndRaisesTheCurrentOne)
{
    addTab(10, "Clip", "Clip=ClipA", "Bin.Main");
    addTab(20, "Caption");
    addTab(30, "NoSuchType");
    current.setValue(20);
    connect();

    ASSERT_EQ(stack->entryCount(), 3);
    EXPECT_EQ(stack->entryId(1), 20);
    // Dots separate the names of widget paths, so the short name Bin.Main becomes Bin*Main.
    EXPECT_EQ(stack->entryCard(0)->objectName(), QStringLiteral("Bin*Main Card View"));
    EXPECT_EQ(stack->entryCard(1)->objectName(), QStringLiteral("Card View"));
    EXPECT_EQ(stack->entryCard(1)->windowTitle(), QStringLiteral("Card View"));
    // A form card connected in the environment its tab gives.
    auto* clipName = stack->entryCard(0)->findChild<Kel_Label*>(QStringLiteral("clipName"));
    ASSERT_NE(clipName, nullptr);
    EXPECT_EQ(clipName->text(), QStringLiteral("Clip A"));
    // The form's initial focus child has the focus within its card.
    EXPECT_EQ(stack->entryCard(0)->focusWidget(), stack->entryCard(0)->findChild<QWidget*>(QStringLiteral("comment")));
    // A library class, and an empty card for a type nobody registered.
    EXPECT_NE(stack->entryCard(1)->findChild<Kel_Label*>(), nullptr);
    EXPECT_TRUE(stack->entryCard(2)->findChildren<QWidget*>().isEmpty());
    EXPECT_EQ(stack->currentWidget(), stack->entryCard(1));

    current.setValue(10);
    EXPECT_EQ(stack->currentWidget(), stack->entryCard(0));
}

TEST_F(WidgetStackTest, ThePlacardStandsInWhileNoTabIsCurrent)
{
    addTab(10, "Clip", "Clip=ClipA");
    current.setValue(99);
    connect();
    auto* placard = qobject_cast<Kel_Placard*>(stack->placard());
    ASSERT_NE(placard, nullptr);
    EXPECT_EQ(placard->topLine(), QStringLiteral("No tab"));
    EXPECT_EQ(stack->currentWidget(), placard);

    current.setValue(10);
    EXPECT_EQ(stack->currentWidget(), stack->entryCard(0));
    current.UnPublish();
    EXPECT_EQ(stack->currentWidget(), placard);
    current.Publish();
    EXPECT_EQ(stack->currentWidget(), stack->entryCard(0));

    // A refresh keeps the one placard.
    stack->refreshStack();
    EXPECT_EQ(stack->placard(), placard);
}

TEST_F(WidgetStackTest, SwitchingTabsMovesTheFocusFromTheOldCardToTheNewCardsProxy)
{
    addTab(10, "Clip", "Clip=ClipA");
    addTab(20, "Notes");
    current.setValue(10);
    connect();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QWidget* clipCard = stack->entryCard(0);
    QWidget* notesCard = stack->entryCard(1);
    auto* title = clipCard->findChild<QLineEdit*>(QStringLiteral("title"));
    QTest::mouseClick(title, Qt::LeftButton);
    ASSERT_TRUE(title->hasFocus());

    current.setValue(20);
    EXPECT_TRUE(clipCard->isHidden());
    EXPECT_EQ(stack->currentWidget(), notesCard);
    auto* notes = notesCard->findChild<QLineEdit*>(QStringLiteral("notes"));
    EXPECT_EQ(stack->focusProxy(), notes);
    EXPECT_TRUE(notes->hasFocus());

    // Back to a card without a proxy: the notes field is no longer the stack's.
    current.setValue(10);
    EXPECT_EQ(stack->currentWidget(), clipCard);
    EXPECT_EQ(stack->focusProxy(), nullptr);
}

TEST_F(WidgetStackTest, RemovingTheLastCardRaisesThePlacardOrHidesTheStack)
{
    addTab(10, "Clip", "Clip=ClipA");
    addTab(20, "Notes");
    current.setValue(20);
    connect();
    tabs.removeRows(1);
    EXPECT_EQ(stack->entryCount(), 1);
    EXPECT_EQ(stack->currentWidget(), stack->placard()); // the current tab has gone
    current.setValue(10);
    tabs.removeRows(0);
    EXPECT_EQ(stack->entryCount(), 0);
    EXPECT_EQ(stack->currentWidget(), stack->placard());
    EXPECT_FALSE(stack->isHidden());

    // Without a placard the stack hides, and shows again with its next card.
    Kel_WidgetStack bare(&window, "bare");
    bare.addViewType(QStringLiteral("Notes"), QStringLiteral("NotesCard"), true);
    bare.show();
    addTab(30, "Notes");
    Kel_ConnectionUtils::recursiveConnect(&bare, environmentWith(QStringLiteral("TabGroupBaseName"), QStringLiteral("Insp")));
    ASSERT_EQ(bare.entryCount(), 1);
    tabs.removeRows(0);
    EXPECT_TRUE(bare.isHidden());
    addTab(40, "Notes");
    EXPECT_FALSE(bare.isHidden());
    EXPECT_EQ(bare.entryId(0), 40);
}

TEST_F(WidgetStackTest, ARefreshRemovesEveryOtherCardBeforeAddingTheNewOnes)
{
    for (long id : {1, 2, 3, 4})
        addTab(id, "Notes");
    connect();
    const QList<QWidget*> before = cards();
    QList<QPointer<QWidget>> watched;
    for (QWidget* card : before)
        watched << card;

    stack->refreshStack();
    deleteRemovedCards();
    EXPECT_FALSE(watched[0]);
    EXPECT_TRUE(watched[1]);
    EXPECT_FALSE(watched[2]);
    EXPECT_TRUE(watched[3]);
    // Four new cards at the front, the two kept ones after them.
    ASSERT_EQ(stack->entryCount(), 6);
    EXPECT_EQ(stack->entryCard(4), before[1]);
    EXPECT_EQ(stack->entryCard(5), before[3]);
    EXPECT_EQ(stack->entryId(0), 1);
}

TEST_F(WidgetStackTest, ARowChangeRemakesThatCardFromTheTabsCurrentData)
{
    addTab(10, "Clip", "Clip=ClipA");
    addTab(20, "Notes");
    current.setValue(20);
    connect();
    const QPointer<QWidget> old = stack->entryCard(0);

    tabs.setValue<QString>(0, "env", QStringLiteral("Clip=ClipB"));
    rowChanged.setValue(0);
    QWidget* remade = stack->entryCard(0);
    EXPECT_NE(remade, old.data());
    EXPECT_EQ(stack->currentWidget(), remade);
    EXPECT_EQ(remade->findChild<Kel_Label*>(QStringLiteral("clipName"))->text(), QStringLiteral("Clip B"));
    deleteRemovedCards();
    EXPECT_FALSE(old);

    // Reconnecting keeps the card and takes the tab's environment again.
    tabs.setValue<QString>(0, "env", QStringLiteral("Clip=ClipA"));
    stack->reconnectWidget(0);
    EXPECT_EQ(stack->entryCard(0), remade);
    EXPECT_EQ(remade->findChild<Kel_Label*>(QStringLiteral("clipName"))->text(), QStringLiteral("Clip A"));

    // Rows outside the cards change nothing.
    rowChanged.setValue(5);
    EXPECT_EQ(stack->entryCard(0), remade);
}

TEST_F(WidgetStackTest, ReplacedTabsAreInsertedRemovedOrRemadeByTheirIds)
{
    addTab(10, "Notes");
    addTab(20, "Notes");
    connect();
    tabs.insertRows(1);
    tabs.setValue<long>(1, "id", 15); // told as a value change: the card was made with the id at insertion
    EXPECT_EQ(stack->entryCount(), 3);
    EXPECT_EQ(stack->entryId(2), 20);

    // The same number of tabs told as all replaced: same ids are remade, others only reported.
    const QList<QWidget*> before = cards();
    DebugMessageCollector messages;
    tabs.beginUpdate();
    tabs.setValue<long>(1, "id", 16);
    tabs.endUpdate();
    EXPECT_NE(stack->entryCard(0), before[0]);
    EXPECT_EQ(stack->entryCard(1), before[1]);
    EXPECT_NE(stack->entryCard(2), before[2]);
    EXPECT_TRUE(messages.contains(QStringLiteral("Kel_WidgetStack::tabsReplaced, the tab at 1 has another id")));

    tabs.removeRows(0, 2);
    ASSERT_EQ(stack->entryCount(), 1);
    EXPECT_EQ(stack->entryId(0), 20);

    // A tab list that goes takes every card along; coming back, it brings them again.
    tabs.UnPublish();
    EXPECT_EQ(stack->entryCount(), 0);
    EXPECT_EQ(stack->currentWidget(), stack->placard());
    tabs.Publish();
    EXPECT_EQ(stack->entryCount(), 1);
}

TEST_F(WidgetStackTest, MovedTabsTakeTheirCardsAlong)
{
    for (long id : {1, 2, 3})
        addTab(id, "Notes");
    connect();
    const QList<QWidget*> before = cards();
    tabs.moveRow(0, 2);
    EXPECT_EQ(cards(), QList<QWidget*>({before[1], before[2], before[0]}));
    EXPECT_EQ(stack->entryId(2), 1);
}

TEST_F(WidgetStackTest, BadIndexesAreReportedAndChangeNothing)
{
    addTab(10, "Notes");
    connect();
    DebugMessageCollector messages;
    stack->removeWidget(3);
    stack->reinitializeWidget(-1);
    stack->reconnectWidget(1);
    EXPECT_EQ(stack->entryCount(), 1);
    EXPECT_TRUE(messages.contains(QStringLiteral("Kel_WidgetStack::removeWidget, index 3 out of range")));
    EXPECT_EQ(messages.messages().size(), 3);
}

TEST_F(WidgetStackTest, TheStyleOverrideReachesEveryWidgetOfANewCard)
{
    QProxyStyle style;
    Mve_SimpleValue<QProxyStyle*> styleOverride(&style, "PellaTool.StyleOverride");
    styleOverride.Publish();
    addTab(10, "Clip", "Clip=ClipA");
    connect();
    QWidget* card = stack->entryCard(0);
    EXPECT_EQ(card->style(), &style);
    for (QWidget* child : card->findChildren<QWidget*>())
        EXPECT_EQ(child->style(), &style) << child->objectName().toStdString();
    tabs.clearRows(); // the cards go before the style
    deleteRemovedCards();
}

TEST(Placard, TakesTheTopLinesFontFromTheFontManager)
{
    QFont large;
    large.setPointSize(31);
    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_Placard.TopLine.Font"), large);
    Kel_Placard placard(nullptr, "placard");
    placard.setTopLine(QStringLiteral("Nothing here"));
    const QList<QLabel*> lines = placard.findChildren<QLabel*>();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0]->text(), QStringLiteral("Nothing here"));
    EXPECT_EQ(lines[0]->font().pointSize(), 31);
    EXPECT_NE(lines[1]->font().pointSize(), 31);
}
