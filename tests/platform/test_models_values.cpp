// Variants, environments, actions and the delayed-action queue.
#include "ModelTestSupport.h"

#include "Mv_ConnectionDict.h"
#include "Mv_Utils.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QRect>
#include <gtest/gtest.h>

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
