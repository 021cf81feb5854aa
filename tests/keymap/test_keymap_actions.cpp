// What mapped keys do: menu commands, scripts and action models run from a
// widget's key presses; reverse lookup; changes at run time, the custom
// mappings written back, and the change notification.
#include "Kel_MenuBar.h"
#include "KeymapTestSupport.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QKeyEvent>
#include <QTest>
#include <QWidget>

using namespace keymaptest;

namespace {

const char kProbeKeymap[] =
    "<KeyMappings><Entries Context='Probe'>"
    "<Entry id='MenuAction' key='Ctrl+S'/>"
    "<Entry id='MenuAction::Ctrl+S' key='F2'/>"
    "<Entry id='MenuAction::Ctrl+M' key='F3'/>"
    "<Entry id='MenuAction::Ctrl+W' key='F4'/>"
    "<Entry id='Text' key='F5'><ActionScript>Keymap.Text = \"five\"</ActionScript><Action>Keymap.Play</Action></Entry>"
    "<Entry id='Broken' key='F6'><ActionScript>Keymap.Text = </ActionScript></Entry>"
    "<Entry id='Unbound' key='F7'><ActionScript>Keymap.Nothing = \"x\"</ActionScript></Entry>"
    "<Entry id='Play' key='F8'><Action>Keymap.Play</Action></Entry>"
    "<Entry id='Missing' key='F10'><Action>Keymap.NoSuchAction</Action></Entry>"
    "<Entry id='Note' key='F11'><Description>Only words</Description></Entry>"
    "<Entry id='Deck' key='F12'><ActionScript>$Deck.Text = \"deck\"</ActionScript></Entry>"
    "<Entry id='Digit' key='5'><Action>Keymap.Play</Action></Entry>"
    "</Entries></KeyMappings>";

// A widget that offers its key presses to a keymap in its own context, as the
// library's widgets do, and counts those the keymap consumed.
struct KeyProbe : QWidget
{
    KeyProbe(Kel_KeymapMgr* m, Mv_ConnectionEnvironment::ConstPtr e) : mgr(m), env(e) {}
    void keyPressEvent(QKeyEvent* event) override
    {
        event->setAccepted(mgr->handleAction(event, "Probe", env));
        consumed += event->isAccepted();
    }
    Kel_KeymapMgr* mgr;
    Mv_ConnectionEnvironment::ConstPtr env;
    int consumed = 0;
};

// A menu bar read from tests/data/keymap/KeymapBar.xml, a window with a
// probe in the context "Probe", and the models both use.
class KeymapActionTest : public KeymapTest
{
protected:
    void SetUp() override
    {
        KeymapTest::SetUp();
        publishAll({&canSave, &save, &muted, &play, &text, &deckText, &changed});
        // Not in the window: only the keymap reaches its commands.
        bar.reset(new Kel_MenuBar(nullptr, "KeymapBar"));
        bar->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        mgr->setMenuBar(bar.get());
        loadXml(QString::fromLatin1(kProbeKeymap));

        probe.reset(new KeyProbe(mgr.get(), environmentWith("Deck", "Keymap.Deck")));
        probe->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(probe.get()));
    }

    // Presses key on the probe; whether the keymap consumed it.
    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const int before = probe->consumed;
        QTest::keyClick(probe.get(), key, modifiers);
        return probe->consumed > before;
    }
    bool hasAction(Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        return mgr->hasAction(&event, "Probe");
    }
    // Lets the notification task run.
    void settle() { TaskScheduler::instance()->advanceClock(1); }

    int saves = 0;
    int plays = 0;
    int notifications = 0;
    Mve_SimpleValue<bool> canSave{true, "Keymap.CanSave"};
    Mve_Action<void()> save{[this] { ++saves; }, "Keymap.Save"};
    Mve_SimpleValue<bool> muted{false, "Keymap.Muted"};
    Mve_Action<void()> play{[this] { ++plays; }, "Keymap.Play"};
    Mve_SimpleValue<QString> text{"", "Keymap.Text"};
    Mve_SimpleValue<QString> deckText{"", "Keymap.Deck.Text"};
    Mve_Action<void()> changed{[this] { ++notifications; }, "KeymapsChanged.Action"};
    std::unique_ptr<Kel_MenuBar> bar;
    std::unique_ptr<KeyProbe> probe;
};

} // namespace

TEST_F(KeymapActionTest, MenuCommandMappingsRunTheCommandAndAlwaysConsumeTheKey)
{
    EXPECT_TRUE(press(Qt::Key_S, Qt::ControlModifier)); // the pressed key's own command
    EXPECT_TRUE(press(Qt::Key_F2)); // the command whose accelerator is Ctrl+S
    EXPECT_EQ(saves, 2);
    EXPECT_EQ(mgr->getMenuActionLabel(QKeySequence("F2"), mgr->KeyMap().value("Probe::F2")), "&Save");
    EXPECT_EQ(mgr->getMenuActionLabel(QKeySequence("F3"), mgr->KeyMap().value("Probe::F3")), QString());

    canSave.setValue(false);
    EXPECT_TRUE(press(Qt::Key_F2));
    EXPECT_TRUE(press(Qt::Key_S, Qt::ControlModifier));
    EXPECT_EQ(saves, 2);
    // Not a command, and no item at all: the key is still the menu's.
    EXPECT_TRUE(press(Qt::Key_F3));
    EXPECT_FALSE(muted.getValue());
    EXPECT_TRUE(press(Qt::Key_F4));

    // A menu bar that goes away is forgotten.
    canSave.setValue(true);
    bar.reset();
    EXPECT_EQ(mgr->getMenuBar(), nullptr);
    EXPECT_TRUE(press(Qt::Key_F2));
    EXPECT_EQ(saves, 2);
}

TEST_F(KeymapActionTest, ScriptsComeBeforeActionsWhichRunOnlyWhenPresentAndEnabled)
{
    EXPECT_TRUE(press(Qt::Key_F5));
    EXPECT_EQ(text.getValue(), "five");
    EXPECT_EQ(plays, 0);
    // Scripts are connected in the widget's environment.
    EXPECT_TRUE(press(Qt::Key_F12));
    EXPECT_EQ(deckText.getValue(), "deck");

    // Does not parse, or names no model: mapped, yet not consumed.
    EXPECT_TRUE(hasAction(Qt::Key_F6));
    EXPECT_FALSE(press(Qt::Key_F6));
    EXPECT_FALSE(press(Qt::Key_F7));

    EXPECT_TRUE(press(Qt::Key_F8));
    EXPECT_TRUE(press(Qt::Key_5, Qt::KeypadModifier)); // maps like the main keyboard's 5
    EXPECT_EQ(plays, 2);
    play.setEnabled(false);
    for (Qt::Key key : {Qt::Key_F8, Qt::Key_F10, Qt::Key_F11})
        EXPECT_FALSE(press(key)) << key;
    EXPECT_FALSE(press(Qt::Key_F8, Qt::ShiftModifier));
    EXPECT_EQ(plays, 2);
    EXPECT_TRUE(hasAction(Qt::Key_F10));
    EXPECT_FALSE(hasAction(Qt::Key_F11));
}

TEST(KeymapKeySequence, EventsKeepOnlyTheFourModifiers)
{
    QKeyEvent all(QEvent::KeyPress, Qt::Key_A,
                  Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier | Qt::KeypadModifier
                      | Qt::GroupSwitchModifier);
    EXPECT_EQ(Kel_KeymapMgr::keySequence(&all).toString(QKeySequence::PortableText), "Meta+Ctrl+Alt+Shift+A");
    // Without a key code the single character of the text stands for it.
    QKeyEvent textOnly(QEvent::KeyPress, 0, Qt::AltModifier, QStringLiteral("%"));
    EXPECT_EQ(Kel_KeymapMgr::keySequence(&textOnly), QKeySequence(Qt::ALT | Qt::Key_Percent));
}

TEST_F(KeymapActionTest, ReverseLookupFindsTheFirstKeyOfAnActionInItsContext)
{
    loadXml("<KeyMappings><Entries Context='Editor'>"
            "<Entry id='Plain' key='Alt+C'><Action>Copy</Action></Entry>"
            "<Entry id='Copy2' key='Ctrl+Ins'><Action>Editor|Copy</Action></Entry>"
            "<Entry id='Copy' key='Ctrl+C'><Action>Editor|Copy</Action></Entry>"
            "<Entry id='Other' key='Ctrl+A'><Context>Alpha</Context><Action>Editor|Copy</Action></Entry>"
            "</Entries></KeyMappings>");
    EXPECT_EQ(mgr->lookup(QStringLiteral("Copy"), QStringLiteral("Editor")), "Ctrl+C");
    EXPECT_TRUE(mgr->lookup(QStringLiteral("Copy"), QStringLiteral("Alpha")).isNull());
    EXPECT_TRUE(mgr->lookup(QStringLiteral("Paste"), QStringLiteral("Editor")).isNull());
}

TEST_F(KeymapActionTest, EntriesAreReboundAtRunTimeByKeyOrByIdentifier)
{
    const QKeySequence f8("F8");
    EXPECT_FALSE(mgr->addOrReplace(f8, "Keymap.Play", "Probe::X", QString(), QString(), QString(), false));
    ASSERT_TRUE(mgr->addOrReplace(f8, QString(), "Probe::Text", "Keymap.Text = \"eight\"", "Probe", "d", true));
    EXPECT_TRUE(press(Qt::Key_F8));
    EXPECT_EQ(text.getValue(), "eight");

    // Rebinding by identifier reaches every entry that carries it.
    EXPECT_TRUE(mgr->actionSetup("Probe::Text", "Keymap.Text = \"setup\"", "rebound", true));
    EXPECT_TRUE(press(Qt::Key_F5));
    EXPECT_EQ(text.getValue(), "setup");
    EXPECT_EQ(mgr->KeyMap().value("Probe::F8").description, "rebound");
    EXPECT_FALSE(mgr->actionSetup("Text", "x", "y", false)); // only the full identifier matches

    mgr->removeKeysOfContext("Prob");
    EXPECT_TRUE(press(Qt::Key_F5));
    mgr->removeKeysOfContext("Probe");
    EXPECT_FALSE(press(Qt::Key_F5));
}

TEST_F(KeymapActionTest, CustomMappingsAreWrittenAsAKeymapFile)
{
    mgr->clearMgr();
    EXPECT_EQ(mgr->customKeyMappingsToXml(), "<KeyMappings>\n <Entries/>\n</KeyMappings>\n");
    loadXml("<KeyMappings><Entries>"
            "<Entry id='Refresh' key='Ctrl+Shift+F5'><Context>MainMonitor</Context><Action>Monitor.Refresh</Action>"
            "<ActionScript>Monitor.Refresh()</ActionScript><Description>kept back</Description><CustomKeyMapping/></Entry>"
            "<Entry id='Plain' key='F1'><Context>MainMonitor</Context><Action>Monitor.Help</Action></Entry>"
            "<Entry id='Amp' key='A'><Context>Bins</Context><Action>Bins|A&amp;B &lt;c&gt;</Action>"
            "<CustomKeyMapping>ignored</CustomKeyMapping></Entry>"
            "</Entries></KeyMappings>");
    const QString xml = mgr->customKeyMappingsToXml();
    EXPECT_EQ(xml, "<KeyMappings>\n"
                   " <Entries>\n"
                   "  <Entry>\n"
                   "   <KeySequence>A</KeySequence>\n"
                   "   <Context>Bins</Context>\n"
                   "   <Action>Bins|A&amp;B &lt;c></Action>\n"
                   "   <CustomKeyMapping/>\n"
                   "  </Entry>\n"
                   "  <Entry>\n"
                   "   <KeySequence>Ctrl+Shift+F5</KeySequence>\n"
                   "   <Context>MainMonitor</Context>\n"
                   "   <Action>Monitor.Refresh</Action>\n"
                   "   <CustomKeyMapping/>\n"
                   "  </Entry>\n"
                   " </Entries>\n"
                   "</KeyMappings>\n");
    // Read back, they are the same custom mappings.
    TestKeymapMgr other;
    ASSERT_TRUE(other.loadFromXMLString(xml, 0));
    EXPECT_EQ(other.customKeyMappingsToXml(), xml);
}

TEST_F(KeymapActionTest, ABurstOfChangesIsAnnouncedOnce)
{
    settle(); // the loads of SetUp
    EXPECT_EQ(notifications, 1);
    ASSERT_TRUE(mgr->load("Keys", 0)); // an include and five entries
    mgr->removeKeysOfContext("Probe");
    EXPECT_EQ(notifications, 1);
    settle();
    settle();
    EXPECT_EQ(notifications, 2);

    // Nothing changed, nothing announced.
    mgr->removeKeysOfContext("Probe");
    EXPECT_FALSE(mgr->actionSetup("No::Such", "x", "y", false));
    settle();
    EXPECT_EQ(notifications, 2);

    // Pending when the manager goes: the task goes with it.
    mgr->clearMgr();
    mgr.reset(new TestKeymapMgr);
    settle();
    EXPECT_EQ(notifications, 2);
}
