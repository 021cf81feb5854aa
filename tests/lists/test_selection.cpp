// Selection by mouse and keys in the four modes, against hand-picked cases
// and against a shadow of the rules driven at random.
#include "ListTestSupport.h"

#include "Kel_KeyboardLanguage.h"
#include "Kel_KeymapMgr.h"
#include "Mve_Action.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <random>
#include <set>

using namespace listtest;

namespace {

class Selection : public ListFixture
{
};

// Clicks and keys in every mode. Steps: "2" clicks row 2, "^2" with Control,
// "+2" with Shift, "r2" with the right button; "U", "D", "H", "E" are the
// Up, Down, Home and End keys, "A" is Control+A and "a" the A key alone.
TEST_F(Selection, ClicksAndKeysFollowTheModesRules)
{
    using L = Kel_ListView;
    const struct
    {
        L::SelectionMode mode;
        int rows;
        const char* steps;
        QList<long> selected;
        long anchor;
    } cases[] = {
        {L::Single, 6, "2 ^3 +5", {5}, 5},
        {L::Multi, 6, "1 ^3 ^4", {1, 3, 4}, 4},
        {L::Multi, 6, "1 ^3 ^4 ^3", {1, 4}, -1},
        {L::Multi, 6, "1 ^3 ^4 ^3 +5", {5}, 5},
        {L::Extended, 8, "+2", {}, -1}, // no anchor right after connecting
        {L::Extended, 8, "3 +6", {3, 4, 5, 6}, 3},
        {L::Extended, 8, "3 +6 +1", {1, 2, 3}, 3},
        {L::Extended, 8, "3 +1 ^7 +5", {5, 6, 7}, 7},
        {L::Extended, 6, "1 ^3 ^3 +5", {1}, -1}, // removing a row leaves nothing to extend from
        {L::Multi, 3, "0 ^2 r2", {0, 2}, 2},      // a right click keeps a selection for its menu
        {L::Multi, 3, "0 ^2 r1", {1}, 1},
        {L::Multi, 3, "0 r4", {}, -1},
        {L::Multi, 3, "1 3", {}, -1}, // below the last row
        {L::Multi, 4, "2 A", {0, 1, 2, 3}, 2},
        {L::Multi, 4, "2 A A", {}, 2},
        {L::Multi, 4, "2 a", {2}, 2},
        {L::Extended, 4, "A", {0, 1, 2, 3}, -1},
        {L::Single, 4, "1 A", {1}, 1},
        {L::Extended, 5, "U", {4}, 4}, // arrows wrap
        {L::Extended, 5, "U D", {0}, 0},
        {L::Extended, 5, "1 +3 D", {4}, 4}, // below the last selected row, alone
        {L::Extended, 5, "1 +3 U", {0}, 0},
        {L::Extended, 5, "E", {4}, 4},
        {L::Extended, 5, "E H", {0}, 0},
        {L::None, 4, "1 ^2 D A", {}, -1},
    };
    const int keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
    for (const auto& c : cases) {
        SCOPED_TRACE(QStringLiteral("mode %1: %2").arg(c.mode).arg(QLatin1String(c.steps)).toStdString());
        build(c.rows, c.mode);
        for (const QString& step : QString::fromLatin1(c.steps).split(QLatin1Char(' '))) {
            const QChar first = step.at(0);
            const long r = step.mid(first.isDigit() ? 0 : 1).toLong();
            if (first.isDigit())
                click(r);
            else if (first == QLatin1Char('^'))
                click(r, Qt::ControlModifier);
            else if (first == QLatin1Char('+'))
                click(r, Qt::ShiftModifier);
            else if (first == QLatin1Char('r'))
                click(r, Qt::NoModifier, Qt::RightButton);
            else if (first.toLower() == QLatin1Char('a'))
                key(Qt::Key_A, first == QLatin1Char('A') ? Qt::ControlModifier : Qt::NoModifier);
            else
                key(keys[QStringLiteral("UDHE").indexOf(first)]);
        }
        EXPECT_EQ(selection(), c.selected);
        EXPECT_EQ(list->getLastSelection(), c.anchor);
        // A plain click or key makes its row current.
        const QChar last = QString::fromLatin1(c.steps).split(QLatin1Char(' ')).last().at(0);
        if (c.selected.size() == 1 && (last.isDigit() || QStringLiteral("UDHE").contains(last))) {
            EXPECT_EQ(list->getCurrentCell(), c.selected.first());
        }
        TearDown();
    }

    // In mode None even the program's own calls select nothing, and keys go on.
    build(4, L::None);
    EXPECT_TRUE(list->SetSelected(3, false, Qt::NoModifier));
    EXPECT_TRUE(selection().isEmpty());
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    down.accept();
    list->keyPressEvent(&down);
    EXPECT_FALSE(down.isAccepted());
}

TEST_F(Selection, PageKeysMoveByTheVisibleRowsAndStopAtTheEnds)
{
    build(20, Kel_ListView::Single, 5);
    click(2);
    key(Qt::Key_PageDown);
    EXPECT_EQ(selection(), (QList<long>{7}));
    key(Qt::Key_PageDown);
    key(Qt::Key_PageDown);
    EXPECT_EQ(selection(), (QList<long>{17}));
    key(Qt::Key_PageDown);
    EXPECT_EQ(selection(), (QList<long>{19}));
    key(Qt::Key_PageUp);
    EXPECT_EQ(selection(), (QList<long>{14}));
    key(Qt::Key_Home);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_PageUp);
    EXPECT_EQ(selection(), (QList<long>{0}));
}

TEST_F(Selection, TheCurrentRowIsScrolledIntoView)
{
    build(40, Kel_ListView::Single, 5);
    QScrollBar* bar = bridge->verticalScrollBar();
    EXPECT_EQ(bar->value(), 0);
    key(Qt::Key_End);
    const int top = bar->value();
    EXPECT_LE(top, 39 * kRowHeight);
    EXPECT_GE(top + bridge->viewport()->height(), 40 * kRowHeight);
    key(Qt::Key_Home);
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(Selection, ModeNoneIgnoresClicksKeysAndCalls)
{
    build(4, Kel_ListView::None);
    click(1);
    click(2, Qt::ControlModifier);
    key(Qt::Key_Down);
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(list->SetSelected(3, false, Qt::NoModifier));
    EXPECT_TRUE(selection().isEmpty());
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    down.accept();
    list->keyPressEvent(&down);
    EXPECT_FALSE(down.isAccepted());
}

TEST_F(Selection, AKeyMappedInMainWindowGoesToTheApplication)
{
    Kel_KeyboardLanguage::setCurrentLanguageOverride(0);
    Kel_KeymapMgr* keys = Kel_KeymapMgr::getInstance();
    keys->setupCurrentLang(-1);
    ASSERT_TRUE(keys->add(QKeySequence(Qt::Key_Down), QString(), QStringLiteral("Next"),
                          QStringLiteral("ListTest.Unused = true"), QStringLiteral("MainWindow"), QString(), false));
    build(4, Kel_ListView::Single);
    click(1);
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    down.accept();
    list->keyPressEvent(&down);
    EXPECT_FALSE(down.isAccepted());
    key(Qt::Key_Down);
    EXPECT_EQ(selection(), (QList<long>{1}));
    key(Qt::Key_Up); // not mapped: still navigation
    EXPECT_EQ(selection(), (QList<long>{0}));
    keys->removeKeysOfContext(QStringLiteral("MainWindow"));
    Kel_KeyboardLanguage::setCurrentLanguageOverride(-1);
}

TEST_F(Selection, ScriptsRunOnEnterAndAfterEachSelectionInTheRowsEnvironment)
{
    int entered = 0;
    Mve_Action<void()> enter([&entered] { ++entered; }, QStringLiteral("ListTest.Enter"));
    Mve_SimpleValue<QString> chosen(QString(), QStringLiteral("ListTest.Chosen"));
    publishAll({&enter, &chosen});
    // Scripts are parsed at the next connection: set them, then connect again.
    build(4, Kel_ListView::Single);
    list->setEnterActionString(QStringLiteral("ListTest.Enter()"));
    list->setSelectionActionString(QStringLiteral("ListTest.Chosen = ListTest.Clips.name[$Row]"));
    list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    click(2);
    EXPECT_EQ(chosen.getValue(), QStringLiteral("clip2"));
    key(Qt::Key_Down);
    EXPECT_EQ(chosen.getValue(), QStringLiteral("clip3"));
    key(Qt::Key_Return);
    key(Qt::Key_Enter);
    EXPECT_EQ(entered, 2);
}

TEST_F(Selection, PublishedModelsFollowTheSelection)
{
    build(5, Kel_ListView::Multi);
    Mvt_SimpleValue<SortedValueList<long>>::Listener published(QStringLiteral("ListTest.Clips:SelectionList"));
    Mvt_SimpleValue<long>::Listener anchor(QStringLiteral("ListTest.Clips:LastSelection"));
    Mvt_Container_API<long, Mvt_SimpleValue<bool>>::Listener isSelected(QStringLiteral("ListTest.Clips.isSelected"));
    int told = 0;
    isSelected.setReceiveMessageCB([&told](const Mv_MessageInterface&) { ++told; });
    for (Mv_ListenerBase* l : std::initializer_list<Mv_ListenerBase*>{&published, &anchor, &isSelected})
        l->connect(Mv_ConnectionEnvironment::blankEnvironment());
    told = 0;
    click(1);
    click(3, Qt::ControlModifier);
    EXPECT_EQ(published.value().size(), 2);
    EXPECT_EQ(anchor.value(), 3);
    EXPECT_TRUE(isSelected.element<bool>(3));
    EXPECT_FALSE(isSelected.element<bool>(2));
    EXPECT_EQ(isSelected.size(), 5);
    EXPECT_EQ(told, 2);

    // A selection set from outside keeps to the array's rows.
    SortedValueList<long> wanted;
    for (long r : {0L, 4L, 9L, -2L})
        wanted.add(r);
    published.set(wanted);
    EXPECT_EQ(selection(), (QList<long>{0, 4}));
    EXPECT_TRUE(isSelected.element<bool>(4));
}

// ---------------------------------------------------------------------------
// The rules, played at random against a shadow

struct Shadow
{
    Kel_ListView::SelectionMode mode;
    long rows;
    std::set<long> selected;
    long anchor = -1;

    void setSelected(long row, bool all, Qt::KeyboardModifiers modifiers)
    {
        if (row > rows)
            row = rows - 1;
        if (row < 0)
            row = -1;
        if (mode == Kel_ListView::None)
            return;
        const bool control = modifiers & Qt::ControlModifier;
        const bool shift = modifiers & Qt::ShiftModifier;
        if (all) {
            if (mode != Kel_ListView::Single)
                total();
        } else if (mode == Kel_ListView::Multi && control) {
            multi(row);
        } else if (mode == Kel_ListView::Extended && shift) {
            extended(row);
        } else if (mode == Kel_ListView::Extended && control) {
            multi(row);
        } else {
            selected.clear();
            if (row != -1)
                selected.insert(row);
            anchor = row;
        }
    }
    void total()
    {
        if (long(selected.size()) == rows) {
            selected.clear();
            return;
        }
        for (long r = 0; r < rows; ++r)
            selected.insert(r);
    }
    void multi(long row)
    {
        if (row == -1) {
            selected.clear();
            anchor = -1;
        } else if (selected.erase(row)) {
            anchor = -1;
        } else {
            selected.insert(row);
            anchor = row;
        }
    }
    void extended(long row)
    {
        if (row == -1) {
            selected.clear();
            anchor = -1;
            return;
        }
        if (anchor == -1)
            return;
        selected.clear();
        for (long r = std::min(anchor, row); r <= std::max(anchor, row); ++r)
            selected.insert(r);
    }
    long first() const { return selected.empty() ? -1 : *selected.begin(); }
    long last() const { return selected.empty() ? -1 : *selected.rbegin(); }
    void arrow(int key)
    {
        long target = 0;
        if (key == Qt::Key_Up)
            target = first() >= 1 ? first() - 1 : rows - 1;
        else if (key == Qt::Key_Down)
            target = last() != -1 && last() < rows - 1 ? last() + 1 : 0;
        else if (key == Qt::Key_End)
            target = rows - 1;
        setSelected(target, false, Qt::NoModifier);
    }
    void rightClick(long row)
    {
        if (row >= rows)
            setSelected(-1, false, Qt::NoModifier);
        else if (!selected.count(row))
            setSelected(row, false, Qt::NoModifier);
    }
};

TEST_F(Selection, EveryModeFollowsTheRulesOverRandomClicksAndKeys)
{
    const long rows = 7;
    for (Kel_ListView::SelectionMode mode :
         {Kel_ListView::Single, Kel_ListView::Multi, Kel_ListView::Extended, Kel_ListView::None}) {
        for (unsigned seed = 1; seed <= 3; ++seed) {
            build(int(rows), mode, 10);
            Shadow shadow{mode, rows, {}, -1};
            std::mt19937 random(seed * 31 + unsigned(mode));
            const Qt::KeyboardModifiers modifierChoices[] = {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier,
                                                             Qt::ControlModifier | Qt::ShiftModifier};
            const int keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End};
            QString trail;
            for (int step = 0; step < 150; ++step) {
                const int what = int(random() % 10);
                const long r = long(random() % (rows + 2)); // sometimes below the last row
                const Qt::KeyboardModifiers modifiers = modifierChoices[random() % 4];
                if (what < 6) {
                    trail += QStringLiteral(" click%1/%2").arg(r).arg(int(modifiers));
                    click(r, modifiers);
                    shadow.setSelected(r < rows ? r : -1, false, r < rows ? modifiers : Qt::NoModifier);
                } else if (what == 6) {
                    trail += QStringLiteral(" right%1").arg(r);
                    click(r, modifiers, Qt::RightButton);
                    shadow.rightClick(r);
                } else if (what < 9) {
                    const int k = keys[random() % 4];
                    trail += QStringLiteral(" key%1").arg(k, 0, 16);
                    key(k);
                    if (mode != Kel_ListView::None)
                        shadow.arrow(k);
                } else {
                    trail += QStringLiteral(" all");
                    key(Qt::Key_A, Qt::ControlModifier);
                    if (mode != Kel_ListView::None)
                        shadow.setSelected(0, true, Qt::NoModifier);
                }
                const QList<long> expected(shadow.selected.begin(), shadow.selected.end());
                ASSERT_EQ(selection(), expected) << "mode " << mode << " seed " << seed << ":" << trail.toStdString();
                ASSERT_EQ(list->getLastSelection(), mode == Kel_ListView::None ? -1 : shadow.anchor)
                    << "mode " << mode << " seed " << seed << ":" << trail.toStdString();
            }
            TearDown();
        }
    }
}

} // namespace
