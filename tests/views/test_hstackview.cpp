// The horizontal stack: layout by index, its size following its cells,
// proxy views outside the indexes, and copies.
#include "Kel_BlankView.h"
#include "Kel_HStackView.h"
#include "ViewTestSupport.h"

#include <gtest/gtest.h>

namespace {

QStringList layout(const Kel_HStackView& stack)
{
    QStringList result;
    for (int i = 0; i < stack.count(); ++i)
        result << stack.viewAt(i)->getName() + QLatin1Char(' ') + rectText(stack.viewAt(i)->getRectInParent());
    return result;
}

Kel_ViewInterface* cell(const QString& name, int width, int height = 10)
{
    auto* view = new Kel_BlankView(QSize(width, height));
    view->setName(name);
    return view;
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
    EXPECT_EQ(stack.getMinSize(), QSize(60, 15));
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

    stack.removeAllSubViews();
    EXPECT_EQ(stack.count(), 0);
    EXPECT_EQ(stack.getSize(), QSize(0, 0));
}

TEST(HStackView, MovingACellAndItsSeparatorTogether)
{
    // Columns of a list row: a 2-pixel blank, then cell and separator per column.
    Kel_HStackView stack;
    stack.AddSubView(cell("blank", 2));
    for (const char* column : {"0", "1", "2"}) {
        stack.AddSubView(cell(QStringLiteral("C") + column, 40));
        stack.AddSubView(cell(QStringLiteral("S") + column, 5));
    }
    auto names = [&stack] {
        QStringList result;
        for (int i = 0; i < stack.count(); ++i)
            result << stack.viewAt(i)->getName();
        return result.join(QLatin1Char(' '));
    };
    // Column 0 to position 2, then back again.
    stack.moveView(1, 6);
    stack.moveView(1, 6);
    EXPECT_EQ(names(), QStringLiteral("blank C1 S1 C2 S2 C0 S0"));
    EXPECT_EQ(stack.viewAt(5)->getOrigin(), QPoint(92, 0));
    stack.moveView(5, 1);
    stack.moveView(6, 2);
    EXPECT_EQ(names(), QStringLiteral("blank C0 S0 C1 S1 C2 S2"));

    stack.moveView(-1, 2);
    stack.moveView(3, 7);
    EXPECT_EQ(names(), QStringLiteral("blank C0 S0 C1 S1 C2 S2"));
}

TEST(HStackView, ProxyViewsStayOutOfTheIndexes)
{
    Kel_HStackView stack;
    stack.setName(QStringLiteral("Row"));
    stack.AddSubView(cell("A", 10));
    stack.AddSubView(cell("B", 10));
    const int destroyed = ProbeView::sDestroyed;
    auto* proxy = new ProbeView(QStringLiteral("Drag"), QRect(3, 0, 10, 10), 1);
    stack.addProxyView(proxy);
    EXPECT_EQ(stack.count(), 2);
    EXPECT_EQ(stack.proxyCount(), 1);
    EXPECT_EQ(stack.indexOf(proxy), -1);
    EXPECT_EQ(stack.getSize(), QSize(20, 10));
    EXPECT_EQ(stack.findUiName(QPoint(12, 5)), QStringLiteral("Row.Drag")); // over the cells

    // Copies take the cells, not the transient proxies.
    std::unique_ptr<Kel_ViewInterface> copy(stack.clone());
    auto* copied = dynamic_cast<Kel_HStackView*>(copy.get());
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(layout(*copied), layout(stack));
    EXPECT_NE(copied->viewAt(0), stack.viewAt(0));
    EXPECT_EQ(copied->viewAt(0)->getParent(), copied);
    EXPECT_EQ(copied->proxyCount(), 0);

    stack.clearProxyViews();
    EXPECT_EQ(ProbeView::sDestroyed, destroyed + 1);
    EXPECT_EQ(layout(stack), (QStringList{"A 0,0 10x10", "B 10,0 10x10"}));
}
