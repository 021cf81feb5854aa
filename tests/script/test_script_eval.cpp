// Parsed scripts run against real published models: connecting, values and
// calls travelling as variant messages, refusals stopping a block, the
// enabled state, window-relative names and delayed scripts.
#include "Kel_SubscriptionIdentifierSubstitution.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mv_Utils.h"
#include "Mve_Action.h"
#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_SimpleValue.h"
#include "Mvt_Action_API.h"
#include "Mvt_SimpleValue_BaseAPI.h"
#include "Ost_StringUtils.h"
#include "TestSupport.h"
#include "Uip_ParseScript.h"
#include "Uip_RunScript.h"
#include "Uip_StatementBlock_ParseNode.h"

#include <QFrame>
#include <QWidget>
#include <gtest/gtest.h>
#include <memory>

namespace {

// A model that answers every request itself and remembers them, to see
// exactly which messages a script sends and what they carry.
class RecordingModel : public Mv_ModelBase
{
public:
    explicit RecordingModel(const QString& name) : Mv_ModelBase(name)
    {
        setReceiveMessageCB([this](const Mv_MessageInterface& m) { return receive(m); });
    }

    bool receive(const Mv_MessageInterface& m)
    {
        requests.append(QString::fromLatin1(m.typeName()).section(QStringLiteral("::"), -1));
        if (const auto* set = m.as<Mvt_SimpleValue_BaseAPI::MsgSetVariant>())
            sent = set->value();
        if (const auto* get = m.as<Mvt_SimpleValue_BaseAPI::MsgGetVariant>())
            *get->result() = value;
        if (const auto* action = m.as<Mvt_Action_API::MsgAction>())
            arguments = action->arguments();
        return answer;
    }

    QStringList requests;
    Mv_Variant sent;
    Mv_Variant value; // what gets answer
    Mvt_Action_API::ArgumentList arguments;
    bool answer = true;
};

class ScriptEval : public ::testing::Test
{
protected:
    // Parses (the script must be valid) and connects in the test's own
    // dictionary; connected tells whether every model was there.
    std::unique_ptr<Uip_ParseNode> load(const char* script, bool* connected = nullptr, QWidget* owner = nullptr)
    {
        Uip_ParseError error;
        std::unique_ptr<Uip_ParseNode> root(Uip_ParseScript(QString::fromUtf8(script), &error));
        EXPECT_TRUE(root) << script << ": " << error.mMessage.toStdString();
        if (!root)
            root.reset(new Uip_StatementBlock_ParseNode());
        const bool ok = root->ConnectAndTypeCheck(env, owner);
        if (connected)
            *connected = ok;
        return root;
    }

    bool run(const char* script)
    {
        Mv_Variant result;
        return load(script)->Evaluate(&result);
    }

    Mv_ConnectionDict dict;
    Mv_ConnectionEnvironment::Ptr env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment(), &dict);
};

TEST_F(ScriptEval, AssignmentsSendLiteralsAndCopies)
{
    RecordingModel mute(QStringLiteral("Mute")), title(QStringLiteral("Title"));
    Mve_SimpleValue<long> a(0, QStringLiteral("A")), b(7, QStringLiteral("B"));
    publishAll({&mute, &title, &a, &b}, &dict);

    EXPECT_TRUE(run("Title = \"Take 2\"; A = B; Mute = true")); // a boolean literal goes last
    EXPECT_EQ(QStringList{QStringLiteral("MsgSetVariant")}, mute.requests);
    EXPECT_TRUE(mute.sent.holds<bool>() && mute.sent.value<bool>());
    EXPECT_TRUE(title.sent.holds<QString>());
    EXPECT_EQ(QStringLiteral("Take 2"), title.sent.value<QString>());
    EXPECT_EQ(7, a.getValue());

    mute.answer = false; // the model's refusal is the script's
    EXPECT_FALSE(run("Mute = false"));
}

TEST_F(ScriptEval, AssignmentsThatCannotRunSendNothing)
{
    RecordingModel a(QStringLiteral("A"));
    Mve_SimpleValue<QString> y(QStringLiteral("old"), QStringLiteral("y"));
    a.Publish(&dict);
    y.Publish(&dict);
    bool connected = true;
    auto root = load("A = B", &connected); // B is not there
    EXPECT_FALSE(connected);
    EXPECT_FALSE(root->isConnected());
    EXPECT_FALSE(root->Evaluate(nullptr));
    EXPECT_TRUE(a.requests.isEmpty());

    root = load("\"x\" = y", &connected); // parses, but a literal cannot be set
    EXPECT_TRUE(connected);
    EXPECT_FALSE(root->Evaluate(nullptr));
    EXPECT_EQ(QStringLiteral("old"), y.getValue());
}

TEST_F(ScriptEval, LongAssignmentChainRunsWithoutRecursion)
{
    Mve_SimpleValue<long> a(0, QStringLiteral("a")), b(5, QStringLiteral("b"));
    a.Publish(&dict);
    b.Publish(&dict);
    const QByteArray script = QByteArray("a=").repeated(100000) + "b";
    bool connected = false;
    auto root = load(script.constData(), &connected);
    EXPECT_TRUE(connected);
    EXPECT_FALSE(root->Evaluate(nullptr)); // the outer links receive no value
    EXPECT_EQ(5, a.getValue());
}

// Stock models are read, written and called without messages; a model that
// answers requests itself must still get them, and the script must see the
// same outcomes either way.
TEST_F(ScriptEval, ModelsAnsweringThemselvesStillGetTheScriptsMessages)
{
    struct Tripling : Mve_SimpleValue<long>
    {
        using Mve_SimpleValue<long>::Mve_SimpleValue;
        bool handleGet(long& value) override
        {
            value = 3 * getValue();
            return true;
        }
        int handleSet(const long& value) override
        {
            ++sets;
            return Mve_SimpleValue<long>::handleSet(value);
        }
        int sets = 0;
    };
    struct Vetoed : Mve_Action<void()>
    {
        using Mve_Action<void()>::Mve_Action;
        bool handleIsEnabled() override { return false; }
    };
    int plays = 0;
    Tripling tripled(2, QStringLiteral("T"));
    Mve_SimpleValue<long> a(0, QStringLiteral("A")), even(0, QStringLiteral("Even"));
    even.setValidator([](const long& v) { return v % 2 == 0; });
    Vetoed vetoed([&plays] { ++plays; }, QStringLiteral("Vetoed"));
    Mve_Action<bool()> check([] { return true; }, QStringLiteral("Check"));
    publishAll({&tripled, &a, &even, &vetoed, &check}, &dict);

    EXPECT_TRUE(run("A = T")); // the subclass's own answer
    EXPECT_EQ(6, a.getValue());
    EXPECT_TRUE(run("T = A"));
    EXPECT_EQ(1, tripled.sets);
    EXPECT_EQ(6, tripled.getValue());
    EXPECT_FALSE(run("T = \"six\"")); // does not convert: refused before the model's set
    EXPECT_EQ(1, tripled.sets);

    EXPECT_TRUE(run("Even = T")); // T holds 6 and answers 18, which the validator takes
    EXPECT_EQ(18, even.getValue());
    tripled.setValue(1);
    EXPECT_FALSE(run("Even = T; A = T")); // 3 is refused, and the block stops
    EXPECT_EQ(18, even.getValue());
    EXPECT_EQ(6, a.getValue());

    // Between plain models the value passes as it is, or converted when the types differ.
    Mve_SimpleValue<QString> text(QStringLiteral("12"), QStringLiteral("Text"));
    Mve_SimpleValue<double> real(0.5, QStringLiteral("Real"));
    publishAll({&text, &real}, &dict);
    EXPECT_TRUE(run("A = Text; Real = A; A = A"));
    EXPECT_EQ(12, a.getValue());
    EXPECT_EQ(12.0, real.getValue());
    EXPECT_TRUE(run("Text = Real"));
    EXPECT_EQ(QStringLiteral("12"), text.getValue());
    real.setValue(2.5);
    EXPECT_FALSE(run("A = Real")); // not integral
    EXPECT_FALSE(run("Even = A; A = Real"));
    EXPECT_EQ(12, even.getValue());

    auto call = load("Vetoed()");
    EXPECT_FALSE(call->isConnected());
    EXPECT_FALSE(call->Evaluate(nullptr));
    EXPECT_EQ(0, plays);
    Mv_Variant result;
    EXPECT_TRUE(load("Check()")->Evaluate(&result));
    EXPECT_TRUE(result.holds<bool>() && result.value<bool>());
    check.setEnabled(false);
    EXPECT_FALSE(load("Check()")->isConnected());
    EXPECT_FALSE(load("Check()")->Evaluate(&result));

    // An owner's callback takes the action off the direct path; the stock
    // class still answers the call.
    check.setEnabled(true);
    check.setReceiveMessageCB([](const Mv_MessageInterface&) { return false; });
    EXPECT_EQ(0, check.plainKind());
    EXPECT_TRUE(load("Check()")->Evaluate(&result));
    EXPECT_EQ(0, vetoed.plainKind());
}

TEST_F(ScriptEval, CallsPassTheArgumentsValue)
{
    int plays = 0;
    long sought = -1;
    QString selected;
    Mve_Action<void()> play([&] { ++plays; }, QStringLiteral("Play"));
    Mve_Action<void(long)> seek([&](long v) { sought = v; }, QStringLiteral("Seek"));
    Mve_Action<void(QString)> select([&](QString s) { selected = s; }, QStringLiteral("Select"));
    Mve_SimpleValue<long> pos(42, QStringLiteral("Pos"));
    Mve_SimpleValue<QString> name(QStringLiteral("clip"), QStringLiteral("Name"));
    publishAll({&play, &seek, &select, &pos, &name}, &dict);

    EXPECT_TRUE(run("Play(); Seek(Pos); Select(Name)"));
    EXPECT_EQ(1, plays);
    EXPECT_EQ(42, sought);
    EXPECT_EQ(QStringLiteral("clip"), selected);

    EXPECT_TRUE(run("Select(\"lit\")"));
    EXPECT_EQ(QStringLiteral("lit"), selected);
    EXPECT_FALSE(run("Seek()"));  // the argument count does not fit
    EXPECT_FALSE(run("Pos()"));   // a value model cannot be called
    EXPECT_FALSE(run("\"Play\"()")); // nor a literal
    EXPECT_EQ(1, plays);
}

TEST_F(ScriptEval, CallResultGoesToTheCallersVariable)
{
    Mve_Action<long()> count([] { return 9L; }, QStringLiteral("Count"));
    count.Publish(&dict);
    Mv_Variant result;
    EXPECT_TRUE(load("Count()")->Evaluate(&result));
    EXPECT_EQ(9, result.value<long>());
    EXPECT_TRUE(load("\"lit\"; true")->Evaluate(&result)); // statements share it; the last one wins
    EXPECT_TRUE(result.holds<bool>());
}

TEST_F(ScriptEval, MissingOrEmptyArgumentStopsTheCall)
{
    RecordingModel select(QStringLiteral("Select")), index(QStringLiteral("Index"));
    select.Publish(&dict);
    EXPECT_FALSE(run("Select(Index)"));
    EXPECT_TRUE(select.requests.isEmpty());

    index.Publish(&dict); // answers the get, but with nothing
    EXPECT_FALSE(run("Select(Index)"));
    EXPECT_TRUE(select.requests.isEmpty());

    index.value = Mv_Variant(3L);
    EXPECT_TRUE(run("Select(Index)"));
    EXPECT_EQ(QStringList{QStringLiteral("MsgAction")}, select.requests);
    ASSERT_EQ(1u, select.arguments.size());
    EXPECT_EQ(3, select.arguments[0].value<long>());
}

TEST_F(ScriptEval, RefusedStatementStopsTheBlock)
{
    int stops = 0;
    Mve_Action<void()> play([] {}, QStringLiteral("Play"));
    Mve_Action<void()> stop([&] { ++stops; }, QStringLiteral("Stop"));
    Mve_Action<bool()> check([] { return false; }, QStringLiteral("Check"));
    publishAll({&play, &stop, &check}, &dict);

    play.setEnabled(false);
    EXPECT_FALSE(run("Play(); Stop()"));
    EXPECT_FALSE(run("Check(); Stop()"));
    EXPECT_EQ(0, stops);
    play.setEnabled(true);
    EXPECT_TRUE(run("Play(); Stop()"));
    EXPECT_EQ(1, stops);
}

TEST_F(ScriptEval, IsConnectedFollowsTheActionsEnabledState)
{
    Mve_Action<void(long)> seek([](long) {}, QStringLiteral("Seek"));
    Mve_SimpleValue<long> pos(1, QStringLiteral("Pos"));
    seek.Publish(&dict);
    auto root = load("Seek(Pos)");
    EXPECT_FALSE(root->isConnected()); // Pos is not there yet
    pos.Publish(&dict);                // late binding
    EXPECT_TRUE(root->isConnected());
    seek.setEnabled(false);
    EXPECT_FALSE(root->isConnected());
    seek.setEnabled(true);
    EXPECT_TRUE(root->isConnected());
    EXPECT_TRUE(root->Evaluate(nullptr));
    seek.UnPublish();
    EXPECT_FALSE(root->isConnected());
    EXPECT_FALSE(load("Pos()")->isConnected()); // a value model is never enabled
}

TEST_F(ScriptEval, ReconnectingFollowsTheEnvironment)
{
    int first = 0, second = 0;
    Mve_Action<void()> deck1([&] { ++first; }, QStringLiteral("Deck1.Play"));
    Mve_Action<void()> deck2([&] { ++second; }, QStringLiteral("Deck2.Play"));
    deck1.Publish(&dict);
    deck2.Publish(&dict);
    env->set(QStringLiteral("Deck"), QStringLiteral("Deck1"));
    auto root = load("$Deck.Play()");
    EXPECT_TRUE(root->Evaluate(nullptr));
    auto other = Mv_ConnectionEnvironment::create(env);
    other->set(QStringLiteral("Deck"), QStringLiteral("Deck2"));
    EXPECT_TRUE(root->ConnectAndTypeCheck(other, nullptr));
    EXPECT_TRUE(root->Evaluate(nullptr));
    EXPECT_EQ(1, first);
    EXPECT_EQ(1, second);
}

TEST_F(ScriptEval, ArrayElementsThroughAnIndexModel)
{
    Mve_Array<QString> names(std::vector<QString>{QStringLiteral("a"), QStringLiteral("b")}, QStringLiteral("Names"));
    Mve_Index<long> row(1, QStringLiteral("List::row"));
    Mve_SimpleValue<QString> current(QString(), QStringLiteral("Current"));
    publishAll({&names, &row, &current}, &dict);
    env->set(QStringLiteral("Row"), QStringLiteral("List::row"));
    auto root = load("Current = Names[$Row]; Names[0] = \"z\"");
    EXPECT_TRUE(root->Evaluate(nullptr));
    EXPECT_EQ(QStringLiteral("b"), current.getValue());
    EXPECT_EQ(QStringLiteral("z"), names.at(0));
    row.setValue(5); // no such element
    EXPECT_FALSE(root->Evaluate(nullptr));
}

TEST_F(ScriptEval, WindowNamesDependOnTheTopLevelWindow)
{
    QWidget first, second;
    QFrame frame(&first);
    QWidget inner(&frame);
    QWidget button(&second);
    const QString firstName = Ost_StringUtils::pointerToHex(&first) + QStringLiteral("$Window.Close");
    const QString secondName = Ost_StringUtils::pointerToHex(&second) + QStringLiteral("$Window.Close");
    EXPECT_EQ(firstName, Kel_SubscriptionIdentifierSubstitution(QStringLiteral(" $Window.Close "), &inner));
    EXPECT_EQ(secondName, Kel_SubscriptionIdentifierSubstitution(QStringLiteral("$Window.Close"), &button));
    EXPECT_NE(firstName, secondName);
    EXPECT_EQ(QStringLiteral("A.$Window"), Kel_SubscriptionIdentifierSubstitution(QStringLiteral(" A.$Window"), &inner));

    // Each window's script reaches that window's model.
    int closedFirst = 0, closedSecond = 0;
    Mve_Action<void()> closeFirst([&] { ++closedFirst; }, firstName);
    Mve_Action<void()> closeSecond([&] { ++closedSecond; }, secondName);
    closeFirst.Publish(&dict);
    closeSecond.Publish(&dict);
    EXPECT_TRUE(load("$Window.Close()", nullptr, &inner)->Evaluate(nullptr));
    EXPECT_TRUE(load("$Window.Close()", nullptr, &button)->Evaluate(nullptr));
    EXPECT_EQ(1, closedFirst);
    EXPECT_EQ(1, closedSecond);
}

TEST_F(ScriptEval, RunScriptParsesConnectsAndRuns)
{
    int plays = 0;
    Mve_Action<void()> play([&] { ++plays; }, QStringLiteral("Play"));
    play.Publish(&dict);
    EXPECT_TRUE(Uip_RunScript(env, QStringLiteral("Play()")));
    EXPECT_FALSE(Uip_RunScript(env, QStringLiteral("Play(")));
    EXPECT_FALSE(Uip_RunScript(env, QStringLiteral("Play(); Missing()"))); // not connected: nothing runs
    EXPECT_EQ(1, plays);
    EXPECT_TRUE(Uip_RunScript(env, QStringLiteral("  ;; ")));
}

TEST_F(ScriptEval, DelayedScriptRunsOnALaterTurnOfTheEventLoop)
{
    const Mv_Utils::DelayedActionRunner previous = Mv_Utils::Mv_SetDelayedActionRunner(Mv_Utils::DelayedActionRunner());
    Uip_InstallDelayedActionRunner();
    int plays = 0;
    Mve_Action<void()> play([&] { ++plays; }, QStringLiteral("Play"));
    play.Publish(&dict);
    EXPECT_TRUE(Mv_Utils::Mv_AddDelayedAction(env, QStringLiteral("Play()")));
    EXPECT_EQ(0, plays);
    EXPECT_TRUE(waitFor([&] { return plays == 1; }));
    EXPECT_EQ(0, Mv_Utils::Mv_PendingDelayedActions());

    Mv_Utils::Mv_SetDelayedActionRunner(previous);
}

} // namespace
