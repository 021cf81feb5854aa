// Views that show model values as text: re-reading on notifications,
// reading again at paint time (one row view for every row), fonts.
#include "Kel_BoolTextView.h"
#include "Kel_FontManager.h"
#include "Kel_HStackView.h"
#include "Kel_LongIntView.h"
#include "Kel_StringView.h"
#include "Kel_TextView.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "ViewTestSupport.h"

#include <QApplication>

namespace {

std::vector<TextRecorder::Text> draw(Kel_ViewInterface& view)
{
    return drawTexts(view);
}

QStringList texts(const std::vector<TextRecorder::Text>& drawn)
{
    QStringList result;
    for (const auto& text : drawn)
        result << text.text;
    return result;
}

} // namespace

TEST(ValueViews, StringViewFollowsItsTextAndColourModels)
{
    Mve_SimpleValue<QString> state(QStringLiteral("stopped"), "ValueViews.State");
    state.Publish();
    Mve_SimpleValue<QColor> color(QColor(Qt::red), "ValueViews.StateColor");
    RecordingParent parent;
    Kel_StringView view;
    view.setName(QStringLiteral("State"));
    view.setSize(QSize(100, 20));
    view.setParent(&parent);
    // Connecting reads the value again even while the view is bound to nothing.
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(parent.log, QStringList{"bits State 0,0 100x20"});

    view.SetConnectionID(QStringLiteral("$Deck.State"));
    view.SetColorConn(QStringLiteral("$Deck.StateColor"));
    view.makeConnections(environmentWith(QStringLiteral("Deck"), QStringLiteral("ValueViews")));
    EXPECT_EQ(view.getText(), QStringLiteral("stopped"));
    EXPECT_FALSE(view.getTextColor().isValid()); // its model is not published yet

    parent.log.clear();
    color.Publish();
    state.setValue(QStringLiteral("playing"));
    EXPECT_EQ(parent.log, (QStringList{"bits State 0,0 100x20", "bits State 0,0 100x20"}));
    const auto drawn = draw(view);
    EXPECT_EQ(texts(drawn), QStringList{"playing"});
    EXPECT_EQ(drawn.at(0).color, QColor(Qt::red));

    // Without its colour model the text takes the pen its painter was given.
    color.UnPublish();
    EXPECT_EQ(draw(view).at(0).color, QColor(Qt::blue));
}

// Two clips, a current-row index, and a one row view of name, duration and
// selection copied from a prototype and connected with $Row at the index.
class OneRowView : public ::testing::Test
{
protected:
    OneRowView() : clips("ValueViews.Clips"), current(0, "ValueViews.CurrentRow")
    {
        clips.addField<QString>("name");
        clips.addField<long>("duration");
        clips.addField<bool>("selected", false);
        clips.Publish();
        clips.appendRow();
        clips.setValue<QString>(0, "name", "Intro");
        clips.setValue<long>(0, "duration", 12);
        clips.setValue<bool>(0, "selected", true);
        clips.appendRow();
        clips.setValue<QString>(1, "name", "A clip whose name is far too long for its column");
        clips.setValue<long>(1, "duration", -3);
        current.Publish();

        auto* name = new Kel_TextView;
        name->SetNameConnection(QStringLiteral("ValueViews.Clips.name[$Row]"));
        name->setSize(QSize(60, 20));
        prototype.AddSubView(name);
        auto* duration = new Kel_LongIntView;
        duration->setConnectionName(QStringLiteral("ValueViews.Clips.duration[$Row]"));
        duration->setSize(QSize(40, 20));
        prototype.AddSubView(duration);
        auto* selected = new Kel_BoolTextView;
        selected->setConnectionName(QStringLiteral("ValueViews.Clips.selected[$Row]"));
        selected->setTrueText(QStringLiteral("selected"));
        selected->setFalseText(QStringLiteral("-"));
        selected->setSize(QSize(80, 20));
        prototype.AddSubView(selected);
        row.reset(prototype.clone());
        row->makeConnections(environmentWith(QStringLiteral("Row"), QStringLiteral("ValueViews.CurrentRow")));
    }

    Mve_RecordArray clips;
    Mve_Index<long> current;
    Kel_HStackView prototype;
    std::unique_ptr<Kel_ViewInterface> row;
};

TEST_F(OneRowView, CopyIsUnconnectedUntilConnected)
{
    EXPECT_TRUE(draw(*std::unique_ptr<Kel_ViewInterface>(prototype.clone())).empty());
    EXPECT_EQ(texts(draw(*row)), (QStringList{"Intro", "12", "selected"}));
}

TEST_F(OneRowView, TextsUseTheListFontInTheirOwnCells)
{
    const QString fontKey = QString::fromLatin1(Kel_ValueViewBase::kListFontKey);
    QFont listFont = QApplication::font();
    listFont.setPointSize(7);
    Kel_FontManager::setFont(fontKey, listFont);
    const auto drawn = draw(*row);
    Kel_FontManager::setFont(fontKey, QApplication::font()); // the table cannot forget a key
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[1].font.pointSize(), 7);
    EXPECT_GT(drawn[1].position.x(), 60);  // right-aligned in the duration cell
    EXPECT_GE(drawn[2].position.x(), 102); // translated into the third cell
}

TEST_F(OneRowView, FollowsTheRowIndexAndElidesLongTexts)
{
    current.setValue(1);
    const auto drawn = draw(*row);
    ASSERT_EQ(texts(drawn).mid(1), (QStringList{"-3", "-"}));
    EXPECT_TRUE(drawn[0].text.endsWith(QChar(0x2026))) << drawn[0].text.toStdString();
}

TEST_F(OneRowView, GoneModelDrawsNothingRatherThanFalseTexts)
{
    clips.UnPublish();
    EXPECT_TRUE(draw(*row).empty());
}
