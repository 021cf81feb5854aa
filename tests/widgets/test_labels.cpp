// Kel_Label and Kel_LongLabel: text, tool tip, font and context menu from models.
#include "Kel_ConnectionUtils.h"
#include "Kel_FontManager.h"
#include "Kel_Label.h"
#include "Kel_LongLabel.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QContextMenuEvent>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>
#include <memory>

namespace {

class LabelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        window.reset(new QWidget);
        auto* layout = new QVBoxLayout(window.get());
        label = new Kel_Label(window.get(), "stateLabel");
        longLabel = new Kel_LongLabel(window.get(), "volumeLabel");
        layout->addWidget(label);
        layout->addWidget(longLabel);
        window->resize(200, 80);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }

    void connectAll(boost::shared_ptr<const Mv_ConnectionEnvironment> env = Mv_ConnectionEnvironment::blankEnvironment())
    {
        Kel_ConnectionUtils::recursiveConnect(window.get(), env);
    }

    // A right-click on the label, through the window as the platform sends it.
    void rightClick(QWidget* widget)
    {
        const QPoint inWindow = widget->mapTo(window.get(), widget->rect().center());
        QTest::mouseClick(window->windowHandle(), Qt::RightButton, Qt::NoModifier, inWindow);
    }

    std::unique_ptr<QWidget> window;
    Kel_Label* label = nullptr;
    Kel_LongLabel* longLabel = nullptr;
};

} // namespace

TEST_F(LabelTest, TextFollowsItsModel)
{
    Mve_SimpleValue<QString> state(QStringLiteral("stopped"), "Label.State");
    state.Publish();
    label->setText(QStringLiteral("designer text"));
    label->setProperty("textConnection", QByteArray("$Transport.State"));
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Transport"), QStringLiteral("Label"));
    connectAll(env);
    EXPECT_EQ(label->text(), QStringLiteral("stopped"));
    state.setValue(QStringLiteral("playing"));
    EXPECT_EQ(label->text(), QStringLiteral("playing"));

    // A model that goes away leaves the bound label empty, not stale.
    state.UnPublish();
    EXPECT_TRUE(label->text().isEmpty());
    state.Publish();
    EXPECT_EQ(label->text(), QStringLiteral("playing"));
}

TEST_F(LabelTest, UnboundLabelsKeepTheirOwnTextAndToolTip)
{
    label->setText(QStringLiteral("Volume:"));
    label->setToolTip(QStringLiteral("static tip"));
    longLabel->setText(QStringLiteral("n/a"));
    connectAll();
    EXPECT_EQ(label->text(), QStringLiteral("Volume:"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("static tip"));
    EXPECT_EQ(longLabel->text(), QStringLiteral("n/a"));

    // Named but missing models show nothing.
    label->setTextConnectionSpec("Label.Missing");
    label->setToolTipConnections("Label.MissingTip");
    longLabel->SetConnectionName("Label.MissingLong");
    connectAll();
    EXPECT_TRUE(label->text().isEmpty());
    EXPECT_TRUE(label->toolTip().isEmpty());
    EXPECT_TRUE(longLabel->text().isEmpty());
}

TEST_F(LabelTest, ToolTipFollowsItsModel)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("Transport state"), "Label.Tip");
    tip.Publish();
    label->setProperty("toolTipConnection", QByteArray("Label.Tip"));
    EXPECT_EQ(label->getToolTipConnections(), QByteArray("Label.Tip"));
    connectAll();
    EXPECT_EQ(label->toolTip(), QStringLiteral("Transport state"));
    tip.setValue(QStringLiteral("Now playing"));
    EXPECT_EQ(label->toolTip(), QStringLiteral("Now playing"));
}

TEST_F(LabelTest, RightClickCallsTheMenuAction)
{
    QWidget* calledWith = nullptr;
    QPoint eventPos;
    int calls = 0;
    Mve_Action<void(QWidget*, QContextMenuEvent*)> menu(
        [&](QWidget* widget, QContextMenuEvent* event) {
            ++calls;
            calledWith = widget;
            eventPos = event ? event->pos() : QPoint(-1, -1);
        },
        "Label.Menu");
    menu.Publish();

    // Without a menu model a right-click does nothing of ours.
    rightClick(label);
    EXPECT_EQ(calls, 0);

    label->setMenuConnStr("Label.Menu");
    connectAll();
    rightClick(label);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(calledWith, label);
    EXPECT_EQ(eventPos, label->rect().center());

    // The event is taken: it does not travel on to the parent.
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(2, 2));
    event.ignore();
    QCoreApplication::sendEvent(label, &event);
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(calls, 2);

    // A label whose menu model went away behaves like a plain label again.
    menu.UnPublish();
    QContextMenuEvent plain(QContextMenuEvent::Keyboard, QPoint(2, 2));
    QCoreApplication::sendEvent(label, &plain);
    EXPECT_FALSE(plain.isAccepted());
    EXPECT_EQ(calls, 2);
}

TEST_F(LabelTest, FontsComeFromTheFontManager)
{
    const QFont title(QStringLiteral("Courier"), 23);
    Kel_FontManager::setFont(QStringLiteral("FontSettings.Kel_LabelTest.Title.Font"), title);
    label->setProperty("fontConnection", QByteArray("FontSettings.Kel_LabelTest.Title.Font"));
    EXPECT_EQ(label->font().pointSize(), 23);
    longLabel->setFontConnectionSpec("FontSettings.Kel_LabelTest.Title.Font");
    EXPECT_EQ(longLabel->font().pointSize(), 23);

    longLabel->setFontConnectionSpec("FontSettings.Kel_LabelTest.Unknown.Font");
    EXPECT_EQ(longLabel->font(), QFont());
    EXPECT_TRUE(Kel_FontManager::hasFont(QStringLiteral("FontSettings.Kel_LabelTest.Unknown.Font")));
}

TEST_F(LabelTest, LongLabelShowsDecimalValues)
{
    Mve_SimpleValue<long> volume(60, "Label.Volume");
    volume.Publish();
    longLabel->setProperty("connectionName", QByteArray("Label.Volume"));
    connectAll();
    EXPECT_EQ(longLabel->text(), QStringLiteral("60"));
    volume.setValue(-2147483649L);
    EXPECT_EQ(longLabel->text(), QStringLiteral("-2147483649"));
    volume.setValue(0);
    EXPECT_EQ(longLabel->text(), QStringLiteral("0"));

    // A model of another kind does not answer a long get: nothing is shown.
    Mve_SimpleValue<QString> text(QStringLiteral("12"), "Label.NotALong");
    text.Publish();
    longLabel->SetConnectionName("Label.NotALong");
    connectAll();
    EXPECT_TRUE(longLabel->text().isEmpty());
}

TEST(LabelLifetime, DefaultConstructionAndWhatsThis)
{
    Kel_Label label;
    Kel_LongLabel longLabel;
    EXPECT_EQ(label.whatsThis(), QStringLiteral("Kel_Label"));
    EXPECT_EQ(longLabel.whatsThis(), QStringLiteral("Kel_LongLabel"));
    EXPECT_TRUE(label.getTextConnectionSpec().isEmpty());
    EXPECT_TRUE(label.getMenuConnStr().isEmpty());
}
