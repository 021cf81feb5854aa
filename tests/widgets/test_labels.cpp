// Kel_Label and Kel_LongLabel: text, tool tip, font and context menu from models.
#include "Kel_ConnectionUtils.h"
#include "Kel_FontManager.h"
#include "Kel_Label.h"
#include "Kel_LongLabel.h"
#include "Mve_Action.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QContextMenuEvent>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>
#include <limits>

namespace {

class LabelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(label = new Kel_Label(&window, "stateLabel"));
        layout->addWidget(longLabel = new Kel_LongLabel(&window, "volumeLabel"));
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    QWidget window;
    Kel_Label* label = nullptr;
    Kel_LongLabel* longLabel = nullptr;
};

} // namespace

TEST_F(LabelTest, TextsToolTipAndFontFollowTheirModels)
{
    Mve_SimpleValue<QString> state(QStringLiteral("stopped"), "Label.State");
    Mve_SimpleValue<QString> tip(QStringLiteral("Transport state"), "Label.Tip");
    Mve_SimpleValue<long> volume(60, "Label.Volume");
    publishAll({&state, &tip, &volume});
    label->setProperty("textConnection", QByteArray("Label.State"));
    label->setProperty("toolTipConnection", QByteArray("Label.Tip"));
    longLabel->setProperty("connectionName", QByteArray("Label.Volume"));
    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_LabelTest.Font"), QFont(QStringLiteral("Courier"), 23));
    label->setProperty("fontConnection", QByteArray("FontSettings.Kel_LabelTest.Font"));
    longLabel->setFontConnectionSpec("FontSettings.Kel_LabelTest.Font");
    connect();
    EXPECT_EQ(label->text(), QStringLiteral("stopped"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("Transport state"));
    EXPECT_EQ(longLabel->text(), QStringLiteral("60"));
    EXPECT_EQ(label->font().pointSize(), 23);
    EXPECT_EQ(longLabel->font().pointSize(), 23);

    state.setValue(QStringLiteral("playing"));
    tip.setValue(QStringLiteral("Now playing"));
    // The most negative long, whatever its width: no digit may be lost.
    const long lowest = std::numeric_limits<long>::min();
    volume.setValue(lowest);
    EXPECT_EQ(label->text(), QStringLiteral("playing"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("Now playing"));
    EXPECT_EQ(longLabel->text(), QString::number(lowest));

    // Models that go away leave bound labels empty, not stale.
    state.UnPublish();
    volume.UnPublish();
    EXPECT_TRUE(label->text().isEmpty());
    EXPECT_TRUE(longLabel->text().isEmpty());
}

TEST_F(LabelTest, RightClickCallsTheMenuActionAndUnboundTextStays)
{
    QPoint eventPos;
    Mve_Action<void(QWidget*, QContextMenuEvent*)> menu(
        [&](QWidget* w, QContextMenuEvent* e) { EXPECT_EQ(w, label); eventPos = e->pos(); }, "Label.Menu");
    menu.Publish();
    label->setMenuConnStr("Label.Menu");
    connect();
    // Through the window, as the platform delivers a right-click.
    QTest::mouseClick(window.windowHandle(), Qt::RightButton, Qt::NoModifier,
                      label->mapTo(&window, label->rect().center()));
    EXPECT_EQ(eventPos, label->rect().center());

    // The event is taken, unless the menu model is gone.
    for (bool published : {true, false}) {
        if (!published)
            menu.UnPublish();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2), label->mapToGlobal(QPoint(2, 2)));
        event.setAccepted(!published);
        QCoreApplication::sendEvent(label, &event);
        EXPECT_EQ(event.isAccepted(), published);
    }

    // Unbound texts are the labels' own; connecting leaves them alone.
    label->setText(QStringLiteral("Volume:"));
    label->setToolTip(QStringLiteral("static tip"));
    longLabel->setText(QStringLiteral("n/a"));
    connect();
    EXPECT_EQ(label->text(), QStringLiteral("Volume:"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("static tip"));
    EXPECT_EQ(longLabel->text(), QStringLiteral("n/a"));
}

TEST_F(LabelTest, RowLabelFollowsItsIndexModelAndTheRowsOfItsArray)
{
    Mve_RecordArray clips("Clips");
    clips.addField<QString>("name");
    clips.Publish();
    for (const char* name : {"Intro", "Middle", "Outro"})
        clips.setValue<QString>(clips.appendRow(), "name", QString::fromLatin1(name));
    Mve_Index<long> row(0, "ClipList::currentRow");
    row.Publish();
    label->setTextConnectionSpec("Clips.name[$Row]");
    Kel_ConnectionUtils::recursiveConnect(&window, environmentWith("Row", "ClipList::currentRow"));
    EXPECT_EQ(label->text(), QStringLiteral("Intro"));

    row.setValue(2);
    EXPECT_EQ(label->text(), QStringLiteral("Outro"));
    clips.setValue<QString>(2, "name", QStringLiteral("Finale"));
    EXPECT_EQ(label->text(), QStringLiteral("Finale"));
    clips.setValue<QString>(1, "name", QStringLiteral("Bridge")); // another row
    EXPECT_EQ(label->text(), QStringLiteral("Finale"));

    // Rows removed under the index: the label shows whatever row the index
    // now designates, and nothing when there is none.
    clips.removeRows(0);
    EXPECT_TRUE(label->text().isEmpty());
    row.setValue(1);
    EXPECT_EQ(label->text(), QStringLiteral("Finale"));
    clips.removeRows(0);
    EXPECT_TRUE(label->text().isEmpty());
    row.setValue(0);
    EXPECT_EQ(label->text(), QStringLiteral("Finale"));
    clips.clearRows();
    EXPECT_TRUE(label->text().isEmpty());
}
