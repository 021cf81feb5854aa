// The value, choice, reveal and container widgets as forms use them: each is
// made by the factory from a form file with the form's properties and bound
// by one recursive connection.
#include "Kel_ActionDialog.h"
#include "Kel_Bitmap.h"
#include "Kel_Busy.h"
#include "Kel_CheckBox.h"
#include "Kel_CheckBoxList.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_Double.h"
#include "Kel_DropdownList.h"
#include "Kel_EnhancedCheckBoxList.h"
#include "Kel_ImageMappedButtons.h"
#include "Kel_Label.h"
#include "Kel_PlayButton.h"
#include "Kel_PopupDisplay.h"
#include "Kel_QtCompat.h"
#include "Kel_RadioGroupListBox.h"
#include "Kel_RevealBody.h"
#include "Kel_RevealButton.h"
#include "Kel_RevealHeader.h"
#include "Kel_ScrollView.h"
#include "Kel_ListView.h"
#include "Kel_ListViewWidget.h"
#include "Kel_Slider.h"
#include "Kel_Sprite.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_StandardRadioButton.h"
#include "Kel_TCLabel.h"
#include "Mv_Timecode.h"
#include "Mve_Action.h"
#include "Mve_ActionArray.h"
#include "Mve_Array.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The models the "WidgetSet" and "SetDialog" forms name under "$Set".
class WidgetSetForm : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previousResourcePath = Ost_Resource::getResourcePath();
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("factory/"));
        channels.addField<QString>(QStringLiteral("name"));
        channels.addField<bool>(QStringLiteral("checked"));
        channels.setValue(channels.appendRow(), QStringLiteral("name"), QStringLiteral("Left"));
        channels.setValue(channels.appendRow(), QStringLiteral("name"), QStringLiteral("Right"));
        channels.setValue(1, QStringLiteral("checked"), true);
        publishAll({&value, &busy, &imagePath, &channels, &formats, &formatIndex, &map, &playState, &rate, &currentID,
                    &open, &muted, &title, &apply});
    }
    void TearDown() override { Ost_Resource::setResourcePath(previousResourcePath); }
    Mv_ConnectionEnvironment::Ptr environment() const { return environmentWith(QStringLiteral("Set"), QStringLiteral("WS")); }
    template <class T>
    static T* child(QWidget* form, const char* name)
    {
        return form->findChild<T*>(QString::fromLatin1(name));
    }

    QString previousResourcePath;
    Mve_SimpleValue<double> value{2.5, "WS.Value"};
    Mve_SimpleValue<bool> busy{true, "WS.Busy"};
    Mve_SimpleValue<QString> imagePath{QStringLiteral("Images/normal.png"), "WS.ImagePath"};
    Mve_RecordArray channels{"WS.Channels"};
    Mve_Array<QString> formats{std::vector<QString>{QStringLiteral("PAL"), QStringLiteral("NTSC")}, "WS.Formats"};
    Mve_SimpleValue<long> formatIndex{1, "WS.FormatIndex"};
    Mve_ActionArray<void()> map{[](long) {}, 1, "WS.Map"};
    Mve_SimpleValue<QString> playState{QStringLiteral("playing"), "WS.PlayState"};
    Mve_SimpleValue<QString> rate{QStringLiteral("30"), "WS.Rate"};
    Mve_SimpleValue<long> currentID{1, "WS.Channels.currentID"};
    Mve_SimpleValue<bool> open{false, "WS.Open"};
    Mve_SimpleValue<bool> muted{true, "WS.Muted"};
    Mve_SimpleValue<QString> title{QStringLiteral("Scrolled"), "WS.Title"};
    int applied = 0;
    Mve_Action<void()> apply{[this] { ++applied; }, "WS.Apply"};
};

} // namespace

TEST_F(WidgetSetForm, EveryWidgetOfTheFormShowsItsModelsAfterOneConnection)
{
    QWidget window;
    new QVBoxLayout(&window);
    QWidget* form = Kel_CreateWidgetFromUILayout(QStringLiteral("WidgetSet"), &window, nullptr, true);
    ASSERT_NE(form, nullptr);
    auto* scroll = child<Kel_ScrollView>(form, "scroll");
    ASSERT_NE(scroll, nullptr);
    // The widget the form puts in the scroll view is the one it scrolls.
    ASSERT_NE(scroll->widget(), nullptr);
    EXPECT_EQ(scroll->widget()->objectName(), QStringLiteral("scrollContents"));
    auto* body = child<Kel_RevealBody>(form, "revealBody");
    ASSERT_NE(body, nullptr);
    ASSERT_NE(child<Kel_CheckBox>(body, "bodyBox"), nullptr);

    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Kel_ConnectionUtils::recursiveConnect(&window, environment());

    EXPECT_DOUBLE_EQ(child<Kel_Double>(form, "value")->value(), 2.5);
    EXPECT_TRUE(child<Kel_Busy>(form, "busy")->isAnimating());
    EXPECT_FALSE(Kel_QtCompat::labelPixmap(child<Kel_Bitmap>(form, "bitmap")).isNull());
    auto* channelList = child<Kel_CheckBoxList>(form, "channels");
    ASSERT_EQ(channelList->count(), 2);
    EXPECT_TRUE(channelList->box(1)->isChecked());
    EXPECT_EQ(child<Kel_EnhancedCheckBoxList>(form, "moreChannels")->count(), 2);
    EXPECT_EQ(child<Kel_DropdownList>(form, "formats")->currentText(), QStringLiteral("NTSC"));
    EXPECT_TRUE(child<Kel_ImageMappedButtons>(form, "map")->isButtonEnabled(0));
    EXPECT_TRUE(child<Kel_PlayButton>(form, "play")->isPlaying());
    EXPECT_EQ(child<Kel_PopupDisplay>(form, "rate")->currentText(), QStringLiteral("30"));
    EXPECT_EQ(child<Kel_RadioGroupListBox>(form, "group")->currentRow(), 1);
    EXPECT_FALSE(child<Kel_RevealButton>(form, "revealButton")->isRevealed());
    auto* header = child<Kel_RevealHeader>(form, "revealHeader");
    EXPECT_EQ(header->text(), QStringLiteral("Audio"));
    EXPECT_FALSE(body->isVisible());
    EXPECT_TRUE(child<Kel_CheckBox>(body, "bodyBox")->isChecked());
    EXPECT_EQ(child<Kel_Label>(form, "scrolledLabel")->text(), QStringLiteral("Scrolled"));

    // The reveal header opens the body of the same model.
    QTest::mouseClick(header->button(), Qt::LeftButton);
    EXPECT_TRUE(open.getValue());
    EXPECT_TRUE(body->isVisible());
}

TEST_F(WidgetSetForm, ActionDialogFormRunsItsScriptOnOk)
{
    std::unique_ptr<QWidget> top(Kel_CreateWidgetFromUILayout(QStringLiteral("SetDialog"), nullptr, nullptr, false));
    auto* dialog = qobject_cast<Kel_ActionDialog*>(top.get());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->getActionScript(), QByteArray("$Set.Apply()"));
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    Kel_ConnectionUtils::recursiveConnect(dialog, environment());
    EXPECT_DOUBLE_EQ(child<Kel_Double>(dialog, "dialogValue")->value(), 2.5);
    auto* buttons = child<QDialogButtonBox>(dialog, "dialogButtons");
    QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(applied, 1);
    EXPECT_FALSE(dialog->isVisible());
}

// The media widgets, the sprite and the list view as forms name them.
TEST_F(WidgetSetForm, MediaWidgetsAndTheListAreMadeFromAFormAndBoundAtOnce)
{
    Mve_SimpleValue<long> volume{150, "WS.Volume"}, volumeMin{0, "WS.Volume.min"}, volumeMax{200, "WS.Volume.max"};
    Mve_SimpleValue<QString> speed{QStringLiteral("2"), "WS.Speed"};
    Mve_SimpleValue<Mv_Timecode> position{Mv_Timecode(1, 2, 3, 4), "WS.Position"};
    publishAll({&volume, &volumeMin, &volumeMax, &speed, &position});
    QWidget window;
    QWidget* form = Kel_CreateWidgetFromUILayout(QStringLiteral("MediaSet"), &window, nullptr, true);
    ASSERT_NE(form, nullptr);
    Kel_ConnectionUtils::recursiveConnect(&window, environment());
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    EXPECT_EQ(child<Kel_Slider>(form, "volume")->value(), 150);
    EXPECT_EQ(child<Kel_StandardBistateButton>(form, "mute")->getState(), Kel_StandardBistateButton::kOnState);
    EXPECT_EQ(child<Kel_StandardRadioButton>(form, "double")->getState(), Kel_StandardBistateButton::kOnState);
    EXPECT_EQ(child<Kel_TCLabel>(form, "position")->text(), QStringLiteral("01:02:03:04"));
    EXPECT_EQ(child<Kel_Sprite>(form, "recordLight")->getFrameCount(), 4);
    auto* list = child<Kel_ListViewWidget>(form, "channelList");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->listView()->GetNumItems(), 2);
}
