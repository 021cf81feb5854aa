// Copies of parsed trees: the same shape as the parse, connected and run
// on their own, and never made of a kind the copy does not know exactly.
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"
#include "Uip_CloneParseTree.h"
#include "Uip_Identifier_ParseNode.h"
#include "Uip_ParseScript.h"
#include "Uip_StatementBlock_ParseNode.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

std::unique_ptr<Uip_ParseNode> parse(const char* script)
{
    std::unique_ptr<Uip_ParseNode> tree(Uip_ParseScript(QString::fromUtf8(script), nullptr));
    EXPECT_TRUE(tree) << script;
    return tree;
}

} // namespace

TEST(ScriptClone, CopiesHaveTheShapeOfTheParse)
{
    const char* const scripts[] = {
        "",
        "Play()",
        "Select( (Row) )",
        "Rename(\"a b;c=(d)\")",
        "a = b = c",
        "Result = Compute(Input); List[2].Name = $Window.Sel_1",
        "\"x\" = y",
        "Mute = true; Play()",
        "a; ;b;\n c;",
    };
    for (const char* script : scripts) {
        std::unique_ptr<Uip_ParseNode> tree = parse(script);
        ASSERT_TRUE(tree);
        std::unique_ptr<Uip_ParseNode> copy(Uip_CloneParseTree(tree.get()));
        ASSERT_TRUE(copy) << script;
        EXPECT_NE(copy.get(), tree.get());
        EXPECT_EQ(tree->toTreeString(QString()), copy->toTreeString(QString())) << script;
    }
    EXPECT_EQ(nullptr, Uip_CloneParseTree(nullptr));
}

TEST(ScriptClone, EachCopyConnectsAndRunsInItsOwnEnvironment)
{
    // One parse, two owners in two dictionaries with their own models.
    std::unique_ptr<Uip_ParseNode> parsed = parse("A = B; Play()");
    ASSERT_TRUE(parsed);
    Mv_ConnectionDict firstDict, secondDict;
    Mve_SimpleValue<long> a1(0, "A"), b1(11, "B"), c1(0, "C"), a2(0, "A"), b2(22, "B"), c2(0, "C");
    int firstPlays = 0, secondPlays = 0;
    Mve_Action<void()> play1([&] { ++firstPlays; }, QStringLiteral("Play"));
    Mve_Action<void()> play2([&] { ++secondPlays; }, QStringLiteral("Play"));
    publishAll({&a1, &b1, &c1, &play1}, &firstDict);
    publishAll({&a2, &b2, &c2, &play2}, &secondDict);
    const auto first = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &firstDict);
    const auto second = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &secondDict);

    std::unique_ptr<Uip_ParseNode> one(Uip_CloneParseTree(parsed.get()));
    std::unique_ptr<Uip_ParseNode> two(Uip_CloneParseTree(parsed.get()));
    ASSERT_TRUE(one && two);
    ASSERT_TRUE(one->ConnectAndTypeCheck(first, nullptr));
    ASSERT_TRUE(two->ConnectAndTypeCheck(second, nullptr));
    EXPECT_FALSE(parsed->isConnected()); // the original stays as parsed

    Mv_Variant result;
    EXPECT_TRUE(two->Evaluate(&result));
    EXPECT_EQ(22, a2.getValue());
    EXPECT_EQ(0, a1.getValue());
    EXPECT_EQ(1, secondPlays);
    EXPECT_TRUE(one->Evaluate(&result));
    EXPECT_EQ(11, a1.getValue());
    EXPECT_EQ(1, firstPlays);

    // The original, connected after its copies, is a tree of its own too.
    ASSERT_TRUE(parsed->ConnectAndTypeCheck(first, nullptr));
    b1.setValue(5);
    EXPECT_TRUE(parsed->Evaluate(&result));
    EXPECT_EQ(5, a1.getValue());
    EXPECT_EQ(22, a2.getValue());

    // A chain keeps its links in the copy: the inner assignment runs, the
    // outer link receives no value, as with the parse itself.
    std::unique_ptr<Uip_ParseNode> chain = parse("A = C = B");
    ASSERT_TRUE(chain);
    std::unique_ptr<Uip_ParseNode> chainCopy(Uip_CloneParseTree(chain.get()));
    ASSERT_TRUE(chainCopy && chainCopy->ConnectAndTypeCheck(second, nullptr));
    EXPECT_FALSE(chainCopy->Evaluate(&result));
    EXPECT_EQ(22, c2.getValue());
}

namespace {

// A kind of node derived from a known one: copying it as its base would
// lose what it adds.
class TracingIdentifier : public Uip_Identifier_ParseNode
{
public:
    using Uip_Identifier_ParseNode::Uip_Identifier_ParseNode;
    QString toTreeString(const QString& prefix) const override { return prefix + QStringLiteral("Tracing\n"); }
};

} // namespace

TEST(ScriptClone, TreesWithKindsItDoesNotKnowExactlyAreNotCopied)
{
    Uip_StatementBlock_ParseNode block;
    block.append(std::unique_ptr<Uip_ParseNode>(new Uip_Identifier_ParseNode(QStringLiteral("Known"))));
    block.append(std::unique_ptr<Uip_ParseNode>(new TracingIdentifier(QStringLiteral("Derived"))));
    EXPECT_EQ(nullptr, Uip_CloneParseTree(&block));
    TracingIdentifier alone(QStringLiteral("Alone"));
    EXPECT_EQ(nullptr, Uip_CloneParseTree(&alone));
}
