// The horizontal stack: layout by index, its size following its cells,
// proxy views outside the indexes, and copies.
#include "Kel_BlankView.h"
#include "Kel_HStackView.h"
#include "ViewTestSupport.h"

namespace {

QStringList layout(const Kel_HStackView& stack)
{
    return stackLayout(stack);
}

Kel_ViewInterface* cell(const QString& name, int width, int height = 10)
{
    return namedBlank(name, width, height);
}

} // namespace

TEST(HStackView, LaysOutByIndexAndFollowsItsCells)
{
    RecordingParent parent;
    Kel_HStackView stack;
    stack.setName(QStringLiteral("Row"));
    stack.setParent(&parent);
    stack.AddSubView(cell("A", 10, 5));
    stack.AddSubView(cell("B", 20, 15));
    stack.insertView(1, cell("C", 30));
    EXPECT_EQ(layout(stack), (QStringList{"A 0,0 10x5", "C 10,0 30x10", "B 40,0 20x15"}));
    EXPECT_EQ(stack.getSize(), QSize(60, 15));
    EXPECT_EQ(parent.log.last(), QStringLiteral("bits Row 0,0 60x15"));
    EXPECT_TRUE(parent.log.contains(QStringLiteral("size Row 60x15 from 30x15")));

    // A cell that grows pushes the ones after it; the stack grows and says so.
    parent.log.clear();
    static_cast<Kel_ViewBase*>(stack.viewAt(0))->setSizeAndNotifyParent(QSize(15, 25));
    EXPECT_EQ(layout(stack), (QStringList{"A 0,0 15x25", "C 15,0 30x10", "B 45,0 20x15"}));
    EXPECT_EQ(parent.log, (QStringList{"size Row 65x25 from 60x15", "bits Row 0,0 65x25"}));

    const int destroyed = ProbeView::sDestroyed;
    stack.insertView(99, new ProbeView(QStringLiteral("P"), QRect(0, 0, 5, 5))); // clamped: appended
    stack.removeViewAt(0);
    stack.removeViewAt(7);
    stack.insertView(0, nullptr);
    stack.insertView(0, &stack);
    EXPECT_EQ(layout(stack), (QStringList{"C 0,0 30x10", "B 30,0 20x15", "P 50,0 5x5"}));
    stack.removeView(stack.viewAt(2));
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
    EXPECT_EQ(stack.getSize(), QSize(50, 15));

    // A cell that the container does not find under its z-order stays, laid out.
    stack.viewAt(0)->setZOrder(4);
    stack.removeViewAt(0);
    EXPECT_EQ(layout(stack), (QStringList{"C 0,0 30x10", "B 30,0 20x15"}));
    EXPECT_EQ(stack.getSubViews().size(), 2u);
}

TEST(HStackView, MovesCellsAndKeepsProxiesOutOfTheIndexes)
{
    Kel_HStackView stack;
    stack.setName(QStringLiteral("Row"));
    for (const char* name : {"A", "B", "C", "D"})
        stack.AddSubView(cell(name, 10 * (stack.count() + 1)));
    stack.moveView(0, 3);
    stack.moveView(-1, 2); // out of range: ignored
    stack.moveView(1, 7);  // likewise
    EXPECT_EQ(layout(stack), (QStringList{"B 0,0 20x10", "C 20,0 30x10", "D 50,0 40x10", "A 90,0 10x10"}));
    stack.moveView(3, 1);
    EXPECT_EQ(layout(stack), (QStringList{"B 0,0 20x10", "A 20,0 10x10", "C 30,0 30x10", "D 60,0 40x10"}));

    const int destroyed = ProbeView::sDestroyed;
    auto* proxy = new ProbeView(QStringLiteral("Drag"), QRect(15, 0, 10, 10), 1);
    stack.addProxyView(proxy);
    EXPECT_EQ(stack.indexOf(proxy), -1);
    EXPECT_EQ(stack.getSize(), QSize(100, 10));
    EXPECT_EQ(stack.findUiName(QPoint(22, 5)), QStringLiteral("Row.Drag")); // over the cells

    // Copies take the cells, not the transient proxies.
    std::unique_ptr<Kel_ViewInterface> copy(stack.clone());
    auto* copied = dynamic_cast<Kel_HStackView*>(copy.get());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(layout(*copied), layout(stack));
    EXPECT_EQ(copied->viewAt(0)->getParent(), copied);
    EXPECT_EQ(copied->proxyCount(), 0);

    stack.clearProxyViews();
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
    EXPECT_EQ(stack.findUiName(QPoint(22, 5)), QStringLiteral("Row.A"));
}

TEST(HStackView, ACellTakenByAnotherStackLeavesAGapThatCloses)
{
    Kel_HStackView left;
    Kel_HStackView right;
    for (const char* name : {"A", "B", "C"})
        left.AddSubView(cell(name, 10 * (left.count() + 1)));
    Kel_ViewInterface* b = left.viewAt(1);
    right.AddSubView(b);
    EXPECT_EQ(layout(left), (QStringList{"A 0,0 10x10", "C 10,0 30x10"}));
    EXPECT_EQ(left.getSize(), QSize(40, 10));
    EXPECT_EQ(layout(right), (QStringList{"B 0,0 20x10"}));
    EXPECT_EQ(b->getParent(), &right);
}
