// Variants, environments, actions and the delayed-action queue.
#include "ModelTestSupport.h"

#include "Mv_ConnectionDict.h"
#include "Mv_Utils.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QRect>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

TEST(Variant, ScalarKindsConvertAndOtherTypesOnlyReadBackExactly)
{
    EXPECT_EQ(Mv_Variant(true).value<long>(), 1);
    EXPECT_EQ(Mv_Variant(7).value<double>(), 7.0);
    EXPECT_EQ(Mv_Variant(2.0).value<long>(-1), 2);
    EXPECT_EQ(Mv_Variant(2.5).value<long>(-1), -1); // not integral
    EXPECT_EQ(Mv_Variant("42").value<long>(-1), 42);
    EXPECT_EQ(Mv_Variant("42x").value<long>(-1), -1);
    EXPECT_EQ(Mv_Variant("TRUE").value<bool>(false), true);
    EXPECT_EQ(Mv_Variant("maybe").value<bool>(true), true); // default kept
    EXPECT_EQ(Mv_Variant(false).value<QString>(), "false");
    EXPECT_EQ(Mv_Variant(Mv_Timecode(1, 2, 3, 4)).value<QString>(), "01:02:03:04");
    EXPECT_EQ(Mv_Variant("01;00;00;02").value<Mv_Timecode>(), Mv_Timecode(1, 0, 0, 2, 1));

    const QRect r(1, 2, 3, 4);
    const Mv_Variant rect = Mv_Variant::fromValue(r);
    EXPECT_EQ(rect.value<QRect>(), r);
    EXPECT_EQ(rect.value<QString>("none"), "none");
    int x = 0;
    const Mv_Variant pointer(&x);
    EXPECT_EQ(pointer.value<int*>(), &x);
    EXPECT_EQ(pointer.value<long*>(nullptr), nullptr);
}

// Numbers live inside the variant and other values in a shared holder:
// copies, moves and assignments in any order must leave every variant with
// its own value (a moved-from one empty), whichever kinds meet.
TEST(Variant, CopiesMovesAndAssignmentsInAnyOrderKeepEachValue)
{
    const int kSlots = 5;
    std::vector<Mv_Variant> held(kSlots);
    std::vector<QString> shadow(kSlots, QStringLiteral("<empty>"));
    std::mt19937 random(26);
    for (int step = 0; step < 4000; ++step) {
        const int i = int(random() % kSlots), j = int(random() % kSlots);
        const long n = long(random() % 1000);
        switch (random() % 9) {
        case 0:
            held[i] = Mv_Variant(n);
            shadow[i] = QString::number(n);
            break;
        case 1:
            held[i] = Mv_Variant(n % 2 == 0);
            shadow[i] = n % 2 == 0 ? QStringLiteral("true") : QStringLiteral("false");
            break;
        case 2:
            held[i] = Mv_Variant(n + 0.5);
            shadow[i] = QString::number(n + 0.5);
            break;
        case 3:
            held[i] = Mv_Variant(QStringLiteral("t%1").arg(n));
            shadow[i] = QStringLiteral("t%1").arg(n);
            break;
        case 4:
            held[i] = held[j];
            shadow[i] = shadow[j];
            break;
        case 5:
            if (i != j) {
                held[i] = std::move(held[j]);
                shadow[i] = shadow[j];
                shadow[j] = QStringLiteral("<empty>");
            }
            break;
        case 6: {
            Mv_Variant moved(std::move(held[i]));
            held[i] = Mv_Variant(moved);
            break;
        }
        case 7:
            std::swap(held[i], held[j]);
            std::swap(shadow[i], shadow[j]);
            break;
        default:
            held[i].clear();
            shadow[i] = QStringLiteral("<empty>");
            break;
        }
        for (int k = 0; k < kSlots; ++k)
            ASSERT_EQ(held[k].toDebugString(), shadow[k]) << "slot " << k << " at step " << step;
    }
    // A copy reads back as exactly the kind it was made from.
    const Mv_Variant number(7L), copy(number);
    EXPECT_TRUE(copy.holds<long>());
    EXPECT_FALSE(copy.holds<double>());
    EXPECT_EQ(copy.value<double>(), 7.0);
}

TEST(Environment, VariablesExpandAndTextAssignmentsParse)
{
    auto parent = Mv_ConnectionEnvironment::create();
    parent->set("A", "one");
    auto child = Mv_ConnectionEnvironment::create(parent);
    EXPECT_EQ(child->set(" B = two ;bad name=x; C=three\nnoequals;D="), 3);
    EXPECT_EQ(child->get("B"), "two");
    EXPECT_TRUE(child->has("D"));
    EXPECT_TRUE(child->get("D").isEmpty());
    EXPECT_FALSE(child->get("D").isNull());
    EXPECT_TRUE(child->get("Z").isNull());
    EXPECT_EQ(child->replaceVariableNames("$A.$B[$C]"), "one.two[three]");
    EXPECT_EQ(child->replaceVariableNames("7f00$Window.x"), "7f00$Window.x"); // unknown: kept
    EXPECT_EQ(child->replaceVariableNames("cost$$A $ $1"), "cost$A $ $1");
    EXPECT_EQ(child->replaceVariableNames(Mv_Utils::Mv_MakeStaticConnectionSpec("x$A")), "x$A");
    EXPECT_EQ(child->getDictionary(), Mv_ConnectionDict::Singleton());
    child->set("A", "near"); // the nearer environment wins
    EXPECT_EQ(child->replaceVariableNames("$A"), "near");
}

TEST(Actions, ArgumentsConvertAndMisfitsAreRefused)
{
    Mv_ConnectionDict dict;
    auto env = Mv_ConnectionEnvironment::create({}, &dict);
    QStringList calls;
    Mve_Action<long(QString, long)> join(
        [&calls](QString s, long n) {
            calls.append(s + QString::number(n));
            return long(s.size()) + n;
        },
        "Join");
    join.Publish(&dict);
    Mvt_Action<long(QString, long)>::Listener listener("Join", env);
    Mv_Variant result;
    EXPECT_TRUE(listener.trigger({Mv_Variant("ab"), Mv_Variant("3")}, &result));
    EXPECT_EQ(result.value<long>(), 5);
    EXPECT_FALSE(listener.trigger({Mv_Variant("ab")}));                     // too few
    EXPECT_FALSE(listener.trigger({Mv_Variant("ab"), Mv_Variant("three")})); // does not convert
    EXPECT_TRUE(listener.call("c", 1));
    EXPECT_EQ(calls, (QStringList{"ab3", "c1"}));

    Recorder rec(listener);
    join.setEnabled(false);
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgEnabledChanged"});
    EXPECT_FALSE(listener.isEnabled());
    EXPECT_FALSE(listener.call("d", 1));
    EXPECT_EQ(calls.size(), 2);

    // A value model is not an action.
    Mve_SimpleValue<long> value(1, "Value");
    value.Publish(&dict);
    EXPECT_FALSE(Mvt_Action<void()>::Listener("Value", env).call());
}

TEST(DelayedActions, RunOnALaterTurnInOrderOnceARunnerIsInstalled)
{
    EXPECT_FALSE(Mv_Utils::Mv_AddDelayedAction(Mv_ConnectionEnvironment::blankEnvironment(), "A()"));
    QStringList ran;
    auto previous = Mv_Utils::Mv_SetDelayedActionRunner(
        [&ran](Mv_ConnectionEnvironment::ConstPtr env, const QString& script) {
            ran.append(script + env->get("Who"));
            return true;
        });
    auto env = Mv_ConnectionEnvironment::create();
    env->set("Who", "!");
    EXPECT_TRUE(Mv_Utils::Mv_AddDelayedAction(env, "A()"));
    EXPECT_TRUE(Mv_Utils::Mv_AddDelayedAction(env, "B()"));
    EXPECT_TRUE(ran.isEmpty()); // never inside the call
    EXPECT_EQ(Mv_Utils::Mv_PendingDelayedActions(), 2);
    EXPECT_TRUE(waitFor([&ran] { return ran.size() == 2; }));
    EXPECT_EQ(ran, (QStringList{"A()!", "B()!"}));
    Mv_Utils::Mv_SetDelayedActionRunner(previous);
}

} // namespace
