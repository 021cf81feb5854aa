// The model inspector: what a developer sees when a binding by name does
// nothing, and live values they can change from it.
#include "Kel_BridgeQWidget.h"
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_HStackView.h"
#include "Kel_ModelInspector.h"
#include "Kel_StringView.h"
#include "Mv_ConnectionDict.h"
#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_SimpleValue.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace {

QString cell(QTableWidget* table, int row, int column)
{
    const QTableWidgetItem* item = table->item(row, column);
    return item ? item->text() : QStringLiteral("<none>");
}

int rowOf(QTableWidget* table, const QString& firstColumn)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        if (cell(table, row, 0) == firstColumn)
            return row;
    }
    return -1;
}

// A mixer form whose "Solo" box names "$Track.sloo", published models in a
// dictionary of the test's own, and an inspector on it.
class Inspector : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previousResourcePath = Ost_Resource::getResourcePath();
        Ost_Resource::setResourcePath(testDataDir() + QStringLiteral("widgets/"));
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&muted, &solo})
            m->Publish(&dict);
        window = std::make_unique<QWidget>();
        form = Kel_CreateWidgetFromUILayout(QStringLiteral("Mixer"), window.get());
        ASSERT_NE(form, nullptr);
        auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
        env->set(QStringLiteral("Track"), QStringLiteral("Mixer.Track1"));
        Kel_ConnectionUtils::recursiveConnect(window.get(), env);
        window->resize(300, 200);
        window->move(0, 0);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        inspector = std::make_unique<Kel_ModelInspector>(nullptr, &dict);
        inspector->move(400, 0);
        inspector->show();
        models = inspector->findChild<QTableWidget*>("models");
        unconnected = inspector->findChild<QTableWidget*>("unconnected");
        bindings = inspector->findChild<QTableWidget*>("bindings");
    }
    void TearDown() override
    {
        inspector.reset();
        window.reset();
        Ost_Resource::setResourcePath(previousResourcePath);
    }
    Kel_CheckBox* box(const char* name) { return form->findChild<Kel_CheckBox*>(name); }
    // Types text into the value cell of the model's row, as a user would.
    void typeValue(const QString& model, const QString& text)
    {
        models->setCurrentCell(rowOf(models, model), 2);
        QTest::keyClick(models, Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        ASSERT_TRUE(editor && editor != models);
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return); // the editor commits from the event loop
    }

    QString previousResourcePath;
    Mv_ConnectionDict dict;
    Mve_SimpleValue<bool> muted{false, "Mixer.Track1.muted"};
    Mve_SimpleValue<bool> solo{false, "Mixer.Track1.solo"};
    std::unique_ptr<QWidget> window;
    QWidget* form = nullptr;
    std::unique_ptr<Kel_ModelInspector> inspector;
    QTableWidget* models = nullptr;
    QTableWidget* unconnected = nullptr;
    QTableWidget* bindings = nullptr;
};

TEST_F(Inspector, AMisspeltSpecificationIsListedWithWhatItProbablyMeant)
{
    ASSERT_EQ(unconnected->rowCount(), 1);
    EXPECT_EQ(cell(unconnected, 0, 0), "$Track.sloo");
    EXPECT_EQ(cell(unconnected, 0, 1), "Mixer.Track1.sloo");
    EXPECT_EQ(cell(unconnected, 0, 2), "Mixer.Track1.solo");
    EXPECT_FALSE(box("solo")->isEnabled()); // what the developer saw

    // The filter narrows both lists.
    QTest::keyClicks(inspector->findChild<QLineEdit*>("filter"), "mute");
    EXPECT_EQ(models->rowCount(), 1);
    EXPECT_EQ(unconnected->rowCount(), 0);
}

TEST_F(Inspector, ValuesFollowTheModelAndAnEditReachesModelAndWidget)
{
    const int row = rowOf(models, "Mixer.Track1.muted");
    ASSERT_GE(row, 0);
    EXPECT_EQ(cell(models, row, 2), "false");
    EXPECT_EQ(cell(models, row, 3), "1");
    models->setCurrentCell(row, 0);
    muted.setValue(true);
    EXPECT_TRUE(waitFor([&] { return cell(models, rowOf(models, "Mixer.Track1.muted"), 2) == "true"; }));
    EXPECT_EQ(models->currentRow(), row); // reading again keeps the user's place

    inspector->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(inspector.get()));
    models->setFocus();
    typeValue("Mixer.Track1.muted", "false");
    EXPECT_TRUE(waitFor([&] { return !muted.getValue(); }));
    EXPECT_FALSE(box("mute")->isChecked());

    // A value the model refuses is shown back as the model holds it.
    muted.setReadOnly(true);
    typeValue("Mixer.Track1.muted", "true");
    EXPECT_TRUE(waitFor([&] { return inspector->findChild<QLabel*>("status")->text().contains("refused"); }));
    EXPECT_TRUE(waitFor([&] { return cell(models, rowOf(models, "Mixer.Track1.muted"), 2) == "false"; }));
    EXPECT_FALSE(muted.getValue());
}

TEST_F(Inspector, PickingNamesTheModelsOfTheWidgetUnderTheCursorAndSwallowsTheClick)
{
    inspector->findChild<QPushButton*>("pick")->click();
    ASSERT_TRUE(inspector->isPicking());
    Kel_CheckBox* mute = box("mute");
    // Qt sends no move to where the pointer already is (an earlier test may
    // have left it there): come from the corner.
    QTest::mouseMove(mute, QPoint(1, 1));
    QTest::mouseMove(mute, mute->rect().center());
    ASSERT_TRUE(waitFor([&] { return bindings->rowCount() > 0; }));
    EXPECT_EQ(cell(bindings, 0, 0), "mute (Kel_CheckBox)");
    EXPECT_EQ(cell(bindings, 0, 1), "$Track.muted");
    EXPECT_EQ(cell(bindings, 0, 2), "Mixer.Track1.muted");
    EXPECT_EQ(cell(bindings, 0, 3), "yes");

    QTest::mouseClick(mute, Qt::LeftButton, {}, mute->rect().center());
    EXPECT_FALSE(inspector->isPicking());
    EXPECT_FALSE(mute->isChecked()); // the click ended picking, nothing else
    QTest::mouseClick(mute, Qt::LeftButton, {}, mute->rect().center());
    EXPECT_TRUE(muted.getValue());
}

// Views are painted, not widgets: the inspector finds them through their
// bridge, and element addresses name the element the view shows.
TEST_F(Inspector, AViewInABridgeShowsItsElementAddress)
{
    Mve_Array<QString> names(std::vector<QString>{"Intro", "Interview", "Outro"}, "Bin.names");
    Mve_Index<long> row(1, "Bin.row");
    names.Publish(&dict);
    row.Publish(&dict);
    auto* stack = new Kel_HStackView();
    auto* name = new Kel_StringView();
    name->SetConnectionID("Bin.names[$Row]");
    name->setSize(QSize(120, 20));
    stack->AddSubView(name);
    Kel_BridgeQWidget bridge;
    bridge.setObjectName("bin");
    bridge.setChild(stack);
    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
    env->set(QStringLiteral("Row"), QStringLiteral("Bin.row"));
    Kel_ConnectionUtils::recursiveConnect(&bridge, env);
    bridge.move(0, 250);
    bridge.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bridge));

    const auto found = Kel_ModelInspector::bindingsAt(bridge.mapToGlobal(QPoint(10, 10)));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].specification, "Bin.names[$Row]");
    EXPECT_EQ(found[0].resolvedName, "Bin.names[Bin.row]");
    EXPECT_EQ(found[0].index, 1);
    EXPECT_EQ(found[0].value, "Interview");
    row.setValue(2); // the same view, now showing another element
    EXPECT_EQ(Kel_ModelInspector::bindingsAt(bridge.mapToGlobal(QPoint(10, 10))).value(0).value, "Outro");
}

} // namespace
