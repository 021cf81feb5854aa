// The vertical stack: rows one below the other, closing up when a row
// changes height (a reveal view hiding its body), under any order of edits.
#include "Kel_RevealView.h"
#include "Kel_VStackView.h"
#include "ViewTestSupport.h"

#include <random>

TEST(VStackView, StacksRowsTopDownAndClosesUpBehindAHiddenBody)
{
    RecordingParent parent;
    Kel_VStackView stack;
    stack.setName(QStringLiteral("Column"));
    stack.setParent(&parent);
    stack.AddSubView(namedBlank("A", 50, 10));
    auto* reveal = new Kel_RevealView;
    reveal->setName(QStringLiteral("R"));
    reveal->setBody(namedBlank("Body", 80, 40));
    stack.AddSubView(reveal);
    stack.AddSubView(namedBlank("C", 30, 5));
    const int header = reveal->headerHeight();
    EXPECT_EQ(stackLayout(stack), (QStringList{"A 0,0 50x10", QStringLiteral("R 0,10 96x%1").arg(header + 40),
                                          QStringLiteral("C 0,%1 30x5").arg(10 + header + 40)}));
    EXPECT_EQ(stack.getSize(), QSize(96, 10 + header + 40 + 5)); // the body is indented by the triangle

    // Hiding the body (Space with the reveal as the stack's focus view would
    // do the same) shrinks the reveal, and the row after it moves up.
    parent.log.clear();
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    reveal->keyPressEvent(&space);
    EXPECT_FALSE(reveal->isRevealed());
    EXPECT_EQ(stackLayout(stack).last(), QStringLiteral("C 0,%1 30x5").arg(10 + header));
    EXPECT_TRUE(parent.log.contains(QStringLiteral("size Column 96x%1 from 96x%2").arg(10 + header + 5).arg(10 + header + 45)));

    // Copies keep the arrangement and the orientation.
    std::unique_ptr<Kel_ViewInterface> copy(stack.clone());
    auto* copied = dynamic_cast<Kel_VStackView*>(copy.get());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->orientation(), Qt::Vertical);
    EXPECT_EQ(stackLayout(*copied), stackLayout(stack));
}

TEST(VStackView, KeepsRowsContiguousUnderRandomEdits)
{
    for (unsigned seed : {1u, 7u, 42u, 2024u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Kel_VStackView stack;
        std::vector<std::pair<QString, QSize>> shadow;
        int next = 0;
        for (int step = 0; step < 300; ++step) {
            const int what = std::uniform_int_distribution<int>(0, 4)(random);
            const int n = int(shadow.size());
            const int a = std::uniform_int_distribution<int>(-1, n + 1)(random);
            const int b = std::uniform_int_distribution<int>(-1, n + 1)(random);
            if (what <= 1) {
                const QSize size(std::uniform_int_distribution<int>(0, 60)(random),
                                 std::uniform_int_distribution<int>(0, 20)(random));
                const QString name = QString::number(next++);
                stack.insertView(a, namedBlank(name, size.width(), size.height()));
                shadow.insert(shadow.begin() + std::clamp(a, 0, n), {name, size});
            } else if (what == 2) {
                stack.removeViewAt(a);
                if (a >= 0 && a < n)
                    shadow.erase(shadow.begin() + a);
            } else if (what == 3) {
                stack.moveView(a, b);
                if (a >= 0 && a < n && b >= 0 && b < n && a != b) {
                    const auto moved = shadow[size_t(a)];
                    shadow.erase(shadow.begin() + a);
                    shadow.insert(shadow.begin() + b, moved);
                }
            } else if (a >= 0 && a < n) {
                const QSize size(std::uniform_int_distribution<int>(0, 60)(random), 7);
                static_cast<Kel_ViewBase*>(stack.viewAt(a))->setSizeAndNotifyParent(size);
                shadow[size_t(a)].second = size;
            }
            QStringList expected;
            int y = 0;
            int width = 0;
            for (const auto& entry : shadow) {
                expected << entry.first + QLatin1Char(' ') + rectText(QRect(QPoint(0, y), entry.second));
                y += entry.second.height();
                width = std::max(width, entry.second.width());
            }
            ASSERT_EQ(stackLayout(stack), expected) << "step " << step;
            ASSERT_EQ(stack.getSize(), QSize(width, y));
        }
    }
}
