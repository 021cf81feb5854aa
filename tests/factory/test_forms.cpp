// Kel_CreateWidgetFromUILayout: form files under the resource path, built
// with the library's widgets, attached to their parent and connected in one go.
#include "Kel_ActionButton.h"
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_ImmediateActionButton.h"
#include "Kel_Label.h"
#include "Kel_LongLabel.h"
#include "Kel_UIFileFactoryEntry.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <memory>

namespace {

class FormTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previousResourcePath = Ost_Resource::getResourcePath();
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("factory/"));
    }
    void TearDown() override { Ost_Resource::setResourcePath(previousResourcePath); }
    template <class T>
    T* child(QWidget* form, const char* name)
    {
        return form->findChild<T*>(QString::fromLatin1(name));
    }

    QString previousResourcePath;
};

} // namespace

// The "Panel" form made in a window's layout, with the models it names published.
class PanelForm : public FormTest
{
protected:
    void SetUp() override
    {
        FormTest::SetUp();
        publishAll({&muted, &showMute, &state, &volume, &nudgeEnabled, &showPlay, &nudge});
        windowLayout = new QVBoxLayout(&window);
        DebugMessageCollector messages; // Qt reports the unknown class it falls back from
        panel = Kel_CreateWidgetFromUILayout(QStringLiteral("Panel"), &window, "ignoredName", true);
        ASSERT_NE(panel, nullptr);
    }

    Mve_SimpleValue<bool> muted{true, "FormDeck.Muted"};
    Mve_SimpleValue<bool> showMute{true, "Form.ShowMute"};
    Mve_SimpleValue<QString> state{QStringLiteral("cueing"), "Form.State"};
    Mve_SimpleValue<long> volume{42, "FormDeck.Volume"};
    Mve_SimpleValue<bool> nudgeEnabled{true, "Form.NudgeEnabled"};
    Mve_SimpleValue<bool> showPlay{true, "Form.ShowPlay"};
    int nudges = 0;
    Mve_Action<void()> nudge{[this] { ++nudges; }, "FormDeck.Nudge"};
    QWidget window;
    QVBoxLayout* windowLayout = nullptr;
    QWidget* panel = nullptr;
};

TEST_F(PanelForm, WidgetsAreMadeUnconnectedWithTheFormsProperties)
{
    // The form's own name, in the parent's layout.
    EXPECT_EQ(panel->objectName(), QStringLiteral("panel"));
    EXPECT_EQ(windowLayout->indexOf(panel), 0);
    // <cstring>, <string>, <bool> and <number> properties.
    auto* nudgeButton = child<Kel_ActionButton>(panel, "nudgeButton");
    ASSERT_NE(nudgeButton, nullptr);
    EXPECT_EQ(nudgeButton->text(), QStringLiteral("Nudge"));
    EXPECT_EQ(nudgeButton->GetRepeatDelay(), 300);
    EXPECT_FALSE(nudgeButton->isEnabled()); // its default, until the model connects
    EXPECT_EQ(child<Kel_CheckBox>(panel, "muteBox")->getVisibleStateConnectionSpec(), QByteArray("Form.ShowMute"));
    auto* play = child<Kel_ImmediateActionButton>(panel, "playButton");
    ASSERT_NE(play, nullptr);
    EXPECT_EQ(play->sizeHint(), QSize(24, 16)); // its image, found under the resource path
    EXPECT_EQ(play->getContextMenuConnectionSpec(), QByteArray("Form.Menu"));
    // Qt's classes stay; a custom class nobody registered falls back to its base.
    EXPECT_STREQ(child<QWidget>(panel, "plainButton")->metaObject()->className(), "QPushButton");
    EXPECT_STREQ(child<QWidget>(panel, "unknownWidget")->metaObject()->className(), "QFrame");
}

TEST_F(PanelForm, OneRecursiveConnectBindsEveryWidget)
{
    Kel_ConnectionUtils::recursiveConnect(&window, environmentWith(QStringLiteral("Deck"), QStringLiteral("FormDeck")));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_TRUE(child<Kel_CheckBox>(panel, "muteBox")->isChecked());
    EXPECT_EQ(child<Kel_Label>(panel, "stateLabel")->text(), QStringLiteral("cueing"));
    EXPECT_EQ(child<Kel_LongLabel>(panel, "volumeLabel")->text(), QStringLiteral("42"));
    auto* nudgeButton = child<Kel_ActionButton>(panel, "nudgeButton");
    EXPECT_TRUE(nudgeButton->isEnabled());
    QTest::mouseClick(nudgeButton, Qt::LeftButton);
    auto* play = child<Kel_ImmediateActionButton>(panel, "playButton");
    QTest::mouseClick(play, Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
    EXPECT_EQ(nudges, 2);
    showPlay.setValue(false);
    EXPECT_FALSE(play->isVisible());
}

TEST_F(FormTest, ParentLayoutIsUsedOnlyWhenThereIsOneAndWhenAsked)
{
    QWidget withLayout;
    auto* layout = new QVBoxLayout(&withLayout);
    layout->addWidget(new QWidget(&withLayout));
    QWidget* notLaidOut = Kel_CreateWidgetFromUILayout(QStringLiteral("Sub/Small"), &withLayout, nullptr, false);
    ASSERT_NE(notLaidOut, nullptr);
    EXPECT_EQ(notLaidOut->parent(), &withLayout);
    EXPECT_EQ(layout->count(), 1);
    QWidget* laidOut = Kel_CreateWidgetFromUILayout(QStringLiteral("Sub/Small"), &withLayout, nullptr, true);
    EXPECT_EQ(layout->indexOf(laidOut), 1);

    QWidget bare;
    QWidget* child = Kel_CreateWidgetFromUILayout(QStringLiteral("Sub/Small"), &bare, nullptr, true);
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->parent(), &bare);
    EXPECT_EQ(bare.layout(), nullptr);

    std::unique_ptr<QWidget> top(Kel_CreateWidgetFromUILayout(QStringLiteral("Sub/Small"), nullptr, nullptr, true));
    EXPECT_NE(top, nullptr);
}

TEST_F(FormTest, MissingOrBrokenFormsGiveNull)
{
    QWidget parent;
    new QVBoxLayout(&parent);
    {
        DebugMessageCollector messages;
        EXPECT_EQ(Kel_CreateWidgetFromUILayout(QStringLiteral("NoSuchForm"), &parent, nullptr, true), nullptr);
        EXPECT_TRUE(messages.messages().isEmpty());
    }
    {
        DebugMessageCollector messages; // Qt's reader reports the syntax error
        EXPECT_EQ(Kel_CreateWidgetFromUILayout(QStringLiteral("Broken"), &parent, nullptr, true), nullptr);
    }
    // The resource path is used as it is stored: without it no form is found.
    Ost_Resource::setResourcePath(QString());
    EXPECT_EQ(Kel_CreateWidgetFromUILayout(QStringLiteral("Sub/Small"), &parent, nullptr, true), nullptr);
    EXPECT_EQ(parent.layout()->count(), 0);
    EXPECT_TRUE(parent.findChildren<QWidget*>().isEmpty());
}

TEST_F(FormTest, FormFileEntryEmbedsOneFormInAnother)
{
    Kel_UIFileFactoryEntry inspectorEntry(QStringLiteral("Inspector"));
    QWidget parent;
    auto* layout = new QVBoxLayout(&parent);
    QWidget* inspector = inspectorEntry.create(&parent, QStringLiteral("ignored"), false);
    ASSERT_NE(inspector, nullptr);
    EXPECT_EQ(inspector->objectName(), QStringLiteral("inspector"));
    EXPECT_EQ(layout->indexOf(inspector), 0);

    // Named as a class in another form, it takes its place in that form's layout, once.
    QWidget* host = Kel_CreateWidgetFromUILayout(QStringLiteral("Host"), &parent, nullptr, false);
    ASSERT_NE(host, nullptr);
    ASSERT_EQ(host->layout()->count(), 3);
    QWidget* embedded = host->layout()->itemAt(1)->widget();
    ASSERT_NE(embedded, nullptr);
    EXPECT_EQ(embedded->parent(), host);
    EXPECT_EQ(host->layout()->itemAt(2)->widget()->objectName(), QStringLiteral("footer"));

    Mve_SimpleValue<QString> state(QStringLiteral("idle"), "Form.State");
    state.Publish();
    Kel_ConnectionUtils::recursiveConnect(host, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(child<Kel_Label>(embedded, "inspectorState")->text(), QStringLiteral("idle"));

    Kel_UIFileFactoryEntry missing(QStringLiteral("NotAForm"));
    EXPECT_EQ(missing.create(&parent, QString(), false), nullptr);

    // A form that embeds itself stops at the first level instead of recursing.
    Kel_UIFileFactoryEntry mirrorEntry(QStringLiteral("Mirror"));
    DebugMessageCollector messages; // Qt reports the layout item it could not fill
    QWidget* mirror = Kel_CreateWidgetFromUILayout(QStringLiteral("Mirror"), &parent, nullptr, true);
    ASSERT_NE(mirror, nullptr);
    EXPECT_TRUE(mirror->findChildren<QWidget*>().isEmpty());
}
