// Kel_TreeWidget: a tree built from a parent/name record array, the current
// node bound to a long model, driven with clicks and keys.
#include "Kel_ConnectionUtils.h"
#include "Kel_TreeWidget.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <random>

namespace {

// The nodes as indented lines, depth first.
QStringList outline(QTreeWidget* tree)
{
    QStringList lines;
    std::function<void(QTreeWidgetItem*, int)> walk = [&](QTreeWidgetItem* item, int depth) {
        lines << QString(depth, QLatin1Char(' ')) + item->text(0);
        for (int i = 0; i < item->childCount(); ++i)
            walk(item->child(i), depth + 1);
    };
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        walk(tree->topLevelItem(i), 0);
    return lines;
}

struct Node
{
    const char* name;
    long parent;
};

class TreeWidgetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        bins.addField<QString>("name");
        bins.addField<long>("parent", -1);
        bins.Publish();
        current.Publish();
        tree = new Kel_TreeWidget(&window, "binTree");
        (new QVBoxLayout(&window))->addWidget(tree);
        window.resize(300, 400);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void fill(std::initializer_list<Node> nodes)
    {
        for (const Node& node : nodes) {
            const long row = bins.appendRow();
            bins.setValue<QString>(row, "name", QString::fromLatin1(node.name));
            bins.setValue<long>(row, "parent", node.parent);
        }
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }
    void click(const QString& text)
    {
        const QList<QTreeWidgetItem*> found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << text.toStdString();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, tree->visualItemRect(found[0]).center());
    }
    QString currentText() const { return tree->currentItem() ? tree->currentItem()->text(0) : QString(); }

    Mve_RecordArray bins{"TreeWidget.Bins"};
    Mve_SimpleValue<long> current{-1, "TreeWidget.Current"};
    QWidget window;
    Kel_TreeWidget* tree = nullptr;
};

} // namespace

TEST_F(TreeWidgetTest, BuildsTheTreeAndBindsTheCurrentNode)
{
    fill({{"Footage", -1}, {"Day 1", 0}, {"Day 2", 0}, {"Music", -1}, {"Take 3", 1}});
    // Unbound, the tree is empty.
    connect();
    EXPECT_EQ(tree->topLevelItemCount(), 0);

    tree->SetConnectionEnv(QStringLiteral("Tree=TreeWidget.Bins; Node=TreeWidget.Current"));
    tree->setProperty("treeDMConnection", QByteArray("$Tree"));
    tree->setProperty("baseNameConnection", QByteArray("$Node"));
    connect();
    EXPECT_EQ(outline(tree), (QStringList{"Footage", " Day 1", "  Take 3", " Day 2", "Music"}));
    EXPECT_EQ(tree->currentItem(), nullptr);

    click(QStringLiteral("Day 2"));
    EXPECT_EQ(current.getValue(), 2);
    current.setValue(4);
    EXPECT_EQ(currentText(), QStringLiteral("Take 3"));
    QTest::keyClick(tree, Qt::Key_Up);
    EXPECT_EQ(current.getValue(), 1);

    // The tree follows its model's edits.
    bins.setValue<QString>(3, "name", QStringLiteral("Score"));
    bins.setValue<long>(3, "parent", 2L);
    EXPECT_EQ(outline(tree), (QStringList{"Footage", " Day 1", "  Take 3", " Day 2", "  Score"}));
    EXPECT_EQ(currentText(), QStringLiteral("Day 1"));

    // A read-only current node refuses: the model's node is selected again.
    current.setReadOnly(true);
    click(QStringLiteral("Score"));
    EXPECT_EQ(current.getValue(), 1);
    EXPECT_EQ(currentText(), QStringLiteral("Day 1"));

    // Without its model the user can still browse.
    current.UnPublish();
    click(QStringLiteral("Score"));
    EXPECT_EQ(currentText(), QStringLiteral("Score"));
}

TEST_F(TreeWidgetTest, RootNodeLoopsAndCollapsedNodes)
{
    Mve_SimpleValue<QString> root(QStringLiteral("All bins"), "TreeWidget.Root");
    root.Publish();
    fill({{"Footage", -1}, {"Day 1", 0}, {"Loop A", 3}, {"Loop B", 2}, {"Stray", 99}, {"Self", 5}});
    tree->setTreeDMConn("TreeWidget.Bins");
    tree->setBaseNameConn("TreeWidget.Current");
    tree->setRootDisplayNameConn("TreeWidget.Root");
    connect();
    // Nodes whose parents loop, or name no row, hang from the root.
    EXPECT_EQ(outline(tree),
              (QStringList{"All bins", " Footage", "  Day 1", " Loop A", " Loop B", " Stray", " Self"}));
    click(QStringLiteral("All bins"));
    EXPECT_EQ(current.getValue(), -1);
    click(QStringLiteral("Footage"));
    EXPECT_EQ(current.getValue(), 0);

    // Collapsed by the user, a node stays collapsed when the tree is rebuilt.
    QTest::keyClick(tree, Qt::Key_Left);
    QTreeWidgetItem* footage = tree->findItems(QStringLiteral("Footage"), Qt::MatchRecursive)[0];
    EXPECT_FALSE(footage->isExpanded());
    bins.appendRow();
    bins.setValue<QString>(6, "name", QStringLiteral("Day 2"));
    bins.setValue<long>(6, "parent", 0L);
    footage = tree->findItems(QStringLiteral("Footage"), Qt::MatchRecursive)[0];
    EXPECT_FALSE(footage->isExpanded());
    EXPECT_EQ(footage->childCount(), 2);
    EXPECT_TRUE(tree->findItems(QStringLiteral("All bins"), Qt::MatchExactly)[0]->isExpanded());

    // Guided help finds nodes by their captions; one inside a collapsed node
    // points at the node to open.
    QRect found;
    ASSERT_TRUE(tree->findPoi(QStringLiteral("binTree.All bins.Footage.Day 2"), &found));
    const QRect footageRect = tree->visualItemRect(footage).translated(tree->viewport()->pos());
    EXPECT_EQ(found, QRect(tree->mapToGlobal(footageRect.topLeft()), footageRect.size()));
    ASSERT_TRUE(tree->findPoi(QStringLiteral("binTree.All bins.Stray"), &found));
    EXPECT_GT(found.top(), tree->mapToGlobal(footageRect.topLeft()).y());
    EXPECT_TRUE(tree->findPoi(QStringLiteral("binTree"), nullptr));
    for (const char* missing : {"binTree.Footage", "binTree.All bins.Nowhere", "other.All bins", "binTree."})
        EXPECT_FALSE(tree->findPoi(QString::fromLatin1(missing), &found)) << missing;

    // An empty root name leaves the top-level nodes at the top.
    root.setValue(QString());
    EXPECT_EQ(tree->topLevelItemCount(), 5);
}

TEST_F(TreeWidgetTest, EveryRowAppearsOnceUnderItsParentWhateverTheLinks)
{
    tree->setTreeDMConn("TreeWidget.Bins");
    connect();
    for (unsigned seed : {3u, 11u, 97u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        bins.beginUpdate();
        bins.clearRows();
        const long n = std::uniform_int_distribution<long>(1, 40)(random);
        std::vector<long> parents;
        for (long row = 0; row < n; ++row) {
            parents.push_back(std::uniform_int_distribution<long>(-2, n + 1)(random));
            bins.appendRow();
            bins.setValue<QString>(row, "name", QString::number(row));
            bins.setValue<long>(row, "parent", parents.back());
        }
        bins.endUpdate();
        // The shadow: a row is under its parent when its chain of parents
        // ends outside the rows, at the top otherwise.
        auto reachesTop = [&](long row) {
            for (long steps = 0; steps <= n; ++steps) {
                const long parent = parents[size_t(row)];
                if (parent < 0 || parent >= n)
                    return true;
                row = parent;
            }
            return false;
        };
        QSet<long> seen;
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            const long row = (*it)->data(0, Kel_TreeWidget::kRowRole).toLongLong();
            EXPECT_FALSE(seen.contains(row));
            seen.insert(row);
            const long parent = parents[size_t(row)];
            const bool underParent = reachesTop(row) && parent >= 0 && parent < n;
            ASSERT_EQ((*it)->parent() != nullptr, underParent) << row;
            if (underParent) {
                EXPECT_EQ((*it)->parent()->data(0, Kel_TreeWidget::kRowRole).toLongLong(), parent);
            }
        }
        EXPECT_EQ(seen.size(), int(n));
    }
}
