// The column header driven by the keyboard alone: reached by Tab, a column
// chosen with the arrows and sorted, moved, resized and hidden as the mouse
// gestures do, through the column data model.
#include "Kel_ColumnDataModel.h"
#include "HeaderTestSupport.h"
#include "Kel_Header.h"
#include "Kel_PopupMenu.h"
#include "TestSupport.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

const QString kBase = QStringLiteral("HeaderKeys.Columns");

// Columns "Name" (100, min 40), "Duration" (80, min 30), "Kind" (60, min 20)
// shown, "Colour" hidden; a line edit before the header and one after it.
class HeaderKeys : public ::testing::Test
{
protected:
    void SetUp() override
    {
        model = headertest::makeColumns(kBase, &sorts);
        ASSERT_TRUE(model->publish());

        window.reset(new QWidget);
        auto* layout = new QVBoxLayout(window.get());
        before = new QLineEdit(window.get());
        layout->addWidget(before);
        header = new Kel_Header(window.get(), "Header");
        header->setColumnBaseConnectionName(kBase);
        layout->addWidget(header);
        after = new QLineEdit(window.get());
        layout->addWidget(after);
        window->resize(400, 120);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        header->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        before->setFocus();
        QTest::keyClick(before, Qt::Key_Tab);
        ASSERT_TRUE(header->hasFocus());
    }
    void TearDown() override
    {
        window.reset();
        QApplication::processEvents(); // menus deleted later
        model.reset();
    }

    void key(int k, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(header, Qt::Key(k), modifiers);
    }
    std::vector<long> order() const { return model->visibleColumns(); }
    long width(long column) const { return model->column(column).width; }
    QStringList menuTexts() const
    {
        QStringList texts;
        if (Kel_PopupMenu* menu = header->contextMenu()) {
            for (QAction* action : menu->actions())
                texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
        }
        return texts;
    }

    std::unique_ptr<Kel_ColumnDataModel> model;
    std::unique_ptr<QWidget> window;
    QLineEdit* before = nullptr;
    Kel_Header* header = nullptr;
    QLineEdit* after = nullptr;
    std::vector<long> sorts; // column, or -1 - column for descending
};

TEST_F(HeaderKeys, TabReachesTheHeaderButAClickLeavesTheFocusAlone)
{
    EXPECT_EQ(header->keyboardColumn(), 0);
    QTest::keyClick(header, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab);
    EXPECT_TRUE(header->hasFocus());

    after->setFocus();
    QTest::mouseClick(header, Qt::LeftButton, Qt::NoModifier, QPoint(header->centerOfColumn(1), 10));
    EXPECT_TRUE(after->hasFocus());
    EXPECT_EQ(sorts, (std::vector<long>{1})) << "the click still sorts";
}

TEST_F(HeaderKeys, ArrowsChooseAFramedColumnWithinTheVisibleOnes)
{
    const QImage unfocused = [this] {
        after->setFocus();
        return header->grab().toImage();
    }();
    header->setFocus(Qt::TabFocusReason);
    const QImage focused = header->grab().toImage();
    const QRect label = header->labelRect(0);
    EXPECT_NE(focused.copy(label), unfocused.copy(label)) << "the chosen label is framed";
    EXPECT_EQ(focused.copy(header->labelRect(1)), unfocused.copy(header->labelRect(1)));

    key(Qt::Key_Left);
    EXPECT_EQ(header->keyboardColumn(), 0);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(header->keyboardColumn(), 2) << "stops at the last column";
    key(Qt::Key_Left);
    EXPECT_EQ(header->keyboardColumn(), 1);

    // Hiding the last columns keeps the choice among those left.
    key(Qt::Key_Right);
    ASSERT_TRUE(model->hideColumn(2));
    EXPECT_EQ(header->keyboardColumn(), 1);
    ASSERT_TRUE(model->hideColumn(1));
    ASSERT_TRUE(model->hideColumn(0));
    EXPECT_EQ(header->keyboardColumn(), -1);
    key(Qt::Key_Right);
    key(Qt::Key_Space);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_TRUE(sorts.empty()) << "no column, nothing to act on";
}

TEST_F(HeaderKeys, SpaceAndReturnSortByTheChosenColumn)
{
    key(Qt::Key_Right);
    key(Qt::Key_Space);
    key(Qt::Key_Return);
    key(Qt::Key_Left);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(sorts, (std::vector<long>{1, -2, 0}));
    EXPECT_EQ(model->sortColumn(), 0);
    // Space with a modifier is not a sort.
    key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(sorts.size(), 3u);
}

TEST_F(HeaderKeys, CtrlArrowsMoveTheChosenColumnAndTheChoiceFollows)
{
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(order(), (std::vector<long>{1, 0, 2}));
    EXPECT_EQ(header->keyboardColumn(), 1);
    key(Qt::Key_Right, Qt::ControlModifier);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(order(), (std::vector<long>{1, 2, 0})) << "the last place is as far as it goes";
    EXPECT_EQ(header->keyboardColumn(), 2);
    key(Qt::Key_Left);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(order(), (std::vector<long>{2, 1, 0}));
    EXPECT_EQ(header->keyboardColumn(), 0);
    EXPECT_EQ(model->columnBeingDragged(), -1) << "no drag shows in the lists";
}

TEST_F(HeaderKeys, CtrlShiftArrowsResizeByTenDownToTheMinimum)
{
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(width(1), 90);
    for (int i = 0; i < 10; ++i)
        key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(width(1), 30);
    EXPECT_EQ(width(0), 100);
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(width(1), 40);
    EXPECT_EQ(header->dividerPositions()[1], 105 + 2 + 40);
    // Alt does nothing here.
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(header->keyboardColumn(), 1);
    EXPECT_EQ(width(1), 40);
}

TEST_F(HeaderKeys, MenuKeyAndShiftF10OpenTheMenuUnderTheChosenColumn)
{
    key(Qt::Key_Right);
    key(Qt::Key_Menu);
    Kel_PopupMenu* menu = header->contextMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    ASSERT_GE(menuTexts().size(), 3);
    EXPECT_EQ(menuTexts().mid(0, 3), (QStringList{"Hide this Column", "-", "Show Colour"}));
    const QPoint under = header->mapToGlobal(header->labelRect(1).bottomLeft());
    EXPECT_LE(std::abs(menu->pos().x() - under.x()), 2);
    EXPECT_GE(menu->pos().y(), under.y());
    // Hidden from the keyboard too: Down to the first item, Return.
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(order(), (std::vector<long>{0, 2}));

    header->setFocus(Qt::TabFocusReason);
    key(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(header->contextMenu(), nullptr);
    EXPECT_TRUE(menuTexts().contains(QStringLiteral("Show Duration")));
    header->contextMenu()->close();
    key(Qt::Key_F10);
    QApplication::processEvents();
    EXPECT_EQ(header->contextMenu(), nullptr) << "F10 alone is not the menu";
}

// Random key sequences against a shadow of the column order, the chosen
// column, the widths and the sort.
TEST_F(HeaderKeys, RandomKeySequencesMatchAShadowModel)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        model.reset(new Kel_ColumnDataModel(kBase));
        std::vector<long> widths, minimums;
        for (long c = 0; c < 5; ++c) {
            widths.push_back(40 + 10 * c);
            minimums.push_back(15 + 5 * c);
            model->addColumn(QStringLiteral("c%1").arg(c), QStringLiteral("C%1").arg(c), widths.back(),
                             minimums.back());
        }
        model->setSortFunction([](long, bool) { return true; });
        ASSERT_TRUE(model->publish());
        header->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        header->setFocus(Qt::TabFocusReason);
        key(Qt::Key_Home); // not a header key: nothing happens
        for (int i = 0; i < 5; ++i)
            key(Qt::Key_Left);

        std::vector<long> shadow{0, 1, 2, 3, 4};
        int chosen = 0;
        long sorted = -1;
        bool ascending = true;
        for (int step = 0; step < 150; ++step) {
            const int move = int(random() % 7);
            const int dir = random() % 2 ? 1 : -1;
            const int k = dir > 0 ? Qt::Key_Right : Qt::Key_Left;
            const long column = shadow[size_t(chosen)];
            switch (move) {
            case 0:
            case 1:
                key(k);
                chosen = std::max(0, std::min(4, chosen + dir));
                break;
            case 2:
            case 3:
                key(k, Qt::ControlModifier);
                if (chosen + dir >= 0 && chosen + dir <= 4) {
                    std::swap(shadow[size_t(chosen)], shadow[size_t(chosen + dir)]);
                    chosen += dir;
                }
                break;
            case 4:
                key(k, Qt::ControlModifier | Qt::ShiftModifier);
                widths[size_t(column)] = std::max(widths[size_t(column)] + 10 * dir, minimums[size_t(column)]);
                break;
            default:
                key(random() % 2 ? Qt::Key_Space : Qt::Key_Return);
                ascending = sorted == column ? !ascending : true;
                sorted = column;
                break;
            }
            ASSERT_EQ(order(), shadow) << "step " << step;
            ASSERT_EQ(header->keyboardColumn(), chosen) << "step " << step;
            ASSERT_EQ(header->columnLabel(chosen), QStringLiteral("C%1").arg(shadow[size_t(chosen)]));
        }
        for (long c = 0; c < 5; ++c)
            EXPECT_EQ(width(c), widths[size_t(c)]) << "column " << c;
        EXPECT_EQ(model->sortColumn(), sorted);
        if (sorted >= 0) {
            EXPECT_EQ(model->isSortedAscending(), ascending);
        }
    }
}

} // namespace
