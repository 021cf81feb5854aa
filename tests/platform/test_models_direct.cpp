// Listeners read and write a stock value model directly, without a message:
// that shortcut must never reach a model that answers requests itself, and
// must leave exactly the traces that the messages leave.
#include "ModelTestSupport.h"

#include "Mve_DirectAccess.h"
#include "Mve_SimpleValue.h"
#include "Mvt_SimpleValue.h"

#include <gtest/gtest.h>
#include <random>

namespace {

typedef Mvt_SimpleValue_BaseAPI Base;
typedef Mvt_SimpleValue<long>::Listener LongListener;

// Answers gets with twice its value and counts the sets it takes.
struct Doubling : Mve_SimpleValue<long>
{
    using Mve_SimpleValue<long>::Mve_SimpleValue;
    bool handleGet(long& value) override
    {
        value = 2 * getValue();
        return true;
    }
    int handleSet(const long& value) override
    {
        ++sets;
        return Mve_SimpleValue<long>::handleSet(value);
    }
    int sets = 0;
};

// Sees every request on its way in and passes it on.
struct Watching : Mve_SimpleValue<long>
{
    using Mve_SimpleValue<long>::Mve_SimpleValue;
    bool ReceiveMessage(const Mv_MessageInterface& message) override
    {
        ++requests;
        return Mve_SimpleValue<long>::ReceiveMessage(message);
    }
    int requests = 0;
};

// A set as a message, whatever the model.
int sendSet(const LongListener& listener, long value)
{
    int status = Base::kSetNotAnswered;
    listener.SendMessageToModel(Mvt_SimpleValue_API<long>::MsgSet(value, &status), true);
    return status;
}

class DirectAccess : public DictTest
{
};

TEST_F(DirectAccess, ModelsThatAnswerRequestsThemselvesGetTheMessages)
{
    Doubling doubling(5, QStringLiteral("doubling"));
    Watching watching(7, QStringLiteral("watching"));
    Mve_SimpleValue<long> stock(9, QStringLiteral("stock"));
    publishAll({&doubling, &watching, &stock}, &dict);
    EXPECT_EQ(0, doubling.plainKind());
    EXPECT_EQ(0, watching.plainKind());
    EXPECT_NE(0, stock.plainKind()) << "the stock model is read directly, or this test proves nothing";

    LongListener toDoubling(QStringLiteral("doubling"), env()), toWatching(QStringLiteral("watching"), env());
    EXPECT_EQ(10, toDoubling.value());
    EXPECT_EQ(Base::kSetChanged, toDoubling.set(6));
    EXPECT_EQ(1, doubling.sets);
    EXPECT_EQ(12, toDoubling.value());
    EXPECT_EQ(7, toWatching.value());
    EXPECT_EQ(Base::kSetUnchanged, toWatching.set(7));
    EXPECT_EQ(2, watching.requests);

    // Senders that do not know the type are sent back to the messages.
    Mv_Variant v;
    EXPECT_FALSE(Mve_DirectAccess::getVariant(toDoubling.directModel(), &v));
    EXPECT_EQ(Base::kSetNotAnswered, Mve_DirectAccess::setVariant(toWatching.directModel(), Mv_Variant(3L)));
    EXPECT_EQ(2, watching.requests);
    EXPECT_EQ(7, watching.getValue());

    // Republishing does not make a subclass plain.
    doubling.UnPublish();
    doubling.Publish(&dict);
    EXPECT_EQ(0, doubling.plainKind());
    EXPECT_EQ(12, toDoubling.value());
}

TEST_F(DirectAccess, AReceiveCallbackOrAnElementIndexTurnsTheShortcutOff)
{
    // A kind without storage answers through its owner's callback.
    Mvt_SimpleValue<long> kind(QStringLiteral("kind"));
    int asked = 0;
    kind.setReceiveMessageCB([&asked](const Mv_MessageInterface& m) {
        ++asked;
        if (const auto* get = m.as<Mvt_SimpleValue_API<long>::MsgGet>())
            *get->result() = 41;
        return true;
    });
    kind.Publish(&dict);
    LongListener toKind(QStringLiteral("kind"), env());
    EXPECT_EQ(41, toKind.value());
    EXPECT_EQ(Base::kSetChanged, toKind.set(1)); // accepted without a status
    EXPECT_EQ(2, asked);

    // A stock model loses the shortcut when its owner installs a callback,
    // published or not.
    Mve_SimpleValue<long> late(3, QStringLiteral("late")), early(4, QStringLiteral("early"));
    early.setReceiveMessageCB([](const Mv_MessageInterface&) { return false; });
    publishAll({&late, &early}, &dict);
    EXPECT_NE(0, late.plainKind());
    EXPECT_EQ(0, early.plainKind());
    late.setReceiveMessageCB([](const Mv_MessageInterface&) { return false; });
    EXPECT_EQ(0, late.plainKind());
    LongListener toLate(QStringLiteral("late"), env());
    EXPECT_EQ(Base::kSetChanged, toLate.set(8)); // the stock class still answers
    EXPECT_EQ(8, toLate.value());

    // Element listeners address the element, not the model under the name.
    Mve_SimpleValue<long> plain(2, QStringLiteral("plain"));
    plain.Publish(&dict);
    LongListener element(QStringLiteral("plain[0]"), env());
    EXPECT_EQ(nullptr, element.directModel());
    EXPECT_EQ(-1, element.value(-1));
    EXPECT_EQ(Base::kSetNotAnswered, element.set(5));
    EXPECT_EQ(2, plain.getValue());
}

TEST_F(DirectAccess, AValidatorDecidesEverySet)
{
    Mve_SimpleValue<long> even(2, QStringLiteral("even"));
    even.setValidator([](const long& v) { return v % 2 == 0; });
    even.Publish(&dict);
    LongListener listener(QStringLiteral("even"), env());
    Recorder recorder(listener);
    recorder.takeHeard();

    EXPECT_EQ(Base::kSetRefused, listener.set(3));
    EXPECT_EQ(Base::kSetNotAnswered, Mve_DirectAccess::setVariant(listener.directModel(), Mv_Variant(5L)));
    EXPECT_EQ(2, even.getValue());
    EXPECT_TRUE(recorder.takeHeard().isEmpty());
    EXPECT_EQ(Base::kSetChanged, listener.set(4));
    EXPECT_EQ(QStringList{QStringLiteral("MsgValueChanged")}, recorder.takeHeard());
    Mv_Variant v;
    EXPECT_TRUE(Mve_DirectAccess::getVariant(listener.directModel(), &v)); // reading needs no say
    EXPECT_EQ(4, v.value<long>());
}

// The same sets, once directly and once as messages, to two models that
// start alike: the same statuses, and every listener hears the same, in the
// same order, reading the new value from inside its notification.
TEST_F(DirectAccess, DirectSetsNotifyExactlyAsMessagesDo)
{
    Mve_SimpleValue<long> direct(0, QStringLiteral("direct")), sent(0, QStringLiteral("sent"));
    publishAll({&direct, &sent}, &dict);
    LongListener toDirect(QStringLiteral("direct"), env()), toSent(QStringLiteral("sent"), env());
    LongListener watchDirect(QStringLiteral("direct"), env()), watchSent(QStringLiteral("sent"), env());
    QStringList heardDirect, heardSent;
    const auto hear = [](QStringList& log, const LongListener& l, const char* who) {
        return [log = &log, l = &l, who](const Mv_MessageInterface& m) {
            log->append(QStringLiteral("%1 %2 %3").arg(QLatin1String(who), QLatin1String(m.typeName())).arg(l->value(-99)));
        };
    };
    toDirect.setReceiveMessageCB(hear(heardDirect, toDirect, "setter"));
    watchDirect.setReceiveMessageCB(hear(heardDirect, watchDirect, "watcher"));
    toSent.setReceiveMessageCB(hear(heardSent, toSent, "setter"));
    watchSent.setReceiveMessageCB(hear(heardSent, watchSent, "watcher"));

    const long values[] = {1, 1, 2, -5, -5, 0, 7};
    for (long v : values) {
        if (v == 0) {
            direct.setReadOnly(true);
            sent.setReadOnly(true);
        }
        EXPECT_EQ(sendSet(toSent, v), toDirect.set(v)) << v;
        EXPECT_EQ(sent.getValue(), direct.getValue());
        direct.setReadOnly(false);
        sent.setReadOnly(false);
    }
    EXPECT_EQ(8, heardDirect.size()); // four changes, two listeners each
    EXPECT_EQ(heardSent, heardDirect);

    // The variant forms as well.
    heardDirect.clear();
    heardSent.clear();
    for (const Mv_Variant& v : {Mv_Variant(3L), Mv_Variant(QStringLiteral("3")), Mv_Variant(2.5), Mv_Variant(true)}) {
        int status = Base::kSetNotAnswered;
        toSent.SendMessageToModel(Base::MsgSetVariant(v, &status), true);
        EXPECT_EQ(status, Mve_DirectAccess::setVariant(toDirect.directModel(), v)) << v.toDebugString().toStdString();
    }
    EXPECT_EQ(1, direct.getValue());
    EXPECT_EQ(heardSent, heardDirect);
}

// Plain and non-plain models, read and written in every way in a random
// order, against a shadow of what each must hold and how often its
// listener must hear of a change.
TEST_F(DirectAccess, RandomMixOfDirectAndMessageRequestsMatchesAShadow)
{
    Mve_SimpleValue<long> plain(0, QStringLiteral("m0"));
    Doubling subclass(0, QStringLiteral("m1"));
    Mve_SimpleValue<long> validated(0, QStringLiteral("m2"));
    validated.setValidator([](const long& v) { return v % 3 != 0; });
    Watching watching(0, QStringLiteral("m3"));
    Mve_SimpleValue<long>* models[] = {&plain, &subclass, &validated, &watching};
    publishAll({&plain, &subclass, &validated, &watching}, &dict);

    struct Shadow
    {
        long value = 0;
        bool readOnly = false;
        int changes = 0;
    };
    Shadow shadow[4];
    int heard[4] = {0, 0, 0, 0};
    std::vector<std::unique_ptr<LongListener>> listeners;
    for (int i = 0; i < 4; ++i) {
        listeners.emplace_back(new LongListener(QStringLiteral("m%1").arg(i), env()));
        listeners.back()->setReceiveMessageCB([&heard, i](const Mv_MessageInterface& m) {
            if (m.is<Mvt_SimpleValue_Notifications::MsgValueChanged>())
                ++heard[i];
        });
    }

    std::mt19937 random(2611);
    for (int step = 0; step < 3000; ++step) {
        const int i = int(random() % 4);
        Shadow& s = shadow[i];
        const LongListener& l = *listeners[size_t(i)];
        const long v = long(random() % 7);
        // What a listener's set must answer, and the shadow after it.
        const auto expectSet = [&](int status) {
            int expected = Base::kSetUnchanged;
            if (s.readOnly || (i == 2 && v % 3 == 0))
                expected = Base::kSetRefused;
            else if (v != s.value)
                expected = Base::kSetChanged;
            EXPECT_EQ(expected, status) << "step " << step << " model " << i;
            if (expected == Base::kSetChanged) {
                s.value = v;
                ++s.changes;
            }
        };
        const long shown = i == 1 ? 2 * s.value : s.value; // the subclass doubles
        switch (random() % 7) {
        case 0:
            expectSet(l.set(v));
            break;
        case 1:
            expectSet(sendSet(l, v));
            break;
        case 2: {
            int status = Mve_DirectAccess::setVariant(l.directModel(), Mv_Variant(QString::number(v)));
            if (status == Base::kSetNotAnswered)
                l.SendMessageToModel(Base::MsgSetVariant(Mv_Variant(QString::number(v)), &status), true);
            expectSet(status);
            break;
        }
        case 3:
            EXPECT_EQ(shown, l.value(-1)) << "step " << step;
            break;
        case 4: {
            Mv_Variant got;
            if (!Mve_DirectAccess::getVariant(l.directModel(), &got))
                l.SendMessageToModel(Base::MsgGetVariant(&got), false);
            EXPECT_EQ(shown, got.value<long>(-1)) << "step " << step;
            break;
        }
        case 5:
            s.readOnly = !s.readOnly;
            models[i]->setReadOnly(s.readOnly);
            break;
        case 6: // the owner always stores
            if (models[i]->setValue(v))
                ++s.changes;
            s.value = v;
            break;
        }
        ASSERT_EQ(s.value, models[i]->getValue()) << "step " << step;
        ASSERT_EQ(s.changes, heard[i]) << "step " << step;
    }
    EXPECT_GT(heard[0], 100);
}

} // namespace
