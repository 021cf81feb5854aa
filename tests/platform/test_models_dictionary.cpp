// The dictionary's bookkeeping of the listeners of one name: the order in
// which they hear, the chains of element listeners that appear when the
// first one connects, listeners that come and go during a delivery, and
// entries and guards that must survive what listeners destroy.
#include "ModelTestSupport.h"

#include "Mv_ModelBase.h"
#include "Mve_Array.h"
#include "Mve_SimpleValue.h"

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace {

typedef Mvt_SimpleValue<long>::Listener LongListener;
typedef DictTest Dictionary;

const long kElements = 4;

// Listeners of the array "A", plain or of one fixed element, checked
// against a shadow list in connection order: an element change reaches
// the plain listeners in that order, then those of the element; an
// announcement reaches everyone in that order.
class ListenerOrder
{
public:
    ListenerOrder(Mv_ConnectionDict& dict, unsigned seed)
        : mEnv(Mv_ConnectionEnvironment::create({}, &dict)), mRandom(seed), mArray({0, 0, 0, 0}, "A")
    {
        mArray.Publish(&dict);
    }

    void step()
    {
        switch (pick(mOrder.size() < 3 ? 2 : 8)) {
        case 0:
        case 1: add(); break;
        case 2: remove(pickId()); break;
        case 3: reconnect(); break;
        case 4: announce(); break;
        default: change(); break;
        }
    }

private:
    struct Slot
    {
        long index; // -1: the whole array
        std::unique_ptr<LongListener> listener;
    };

    size_t pick(size_t n) { return std::uniform_int_distribution<size_t>(0, n - 1)(mRandom); }
    int pickId() { return mOrder[pick(mOrder.size())]; }

    int add()
    {
        const int id = mNextId++;
        const long index = long(pick(kElements + 2)) - 2; // plain ones twice as likely as each element
        Slot& slot = mSlots[id];
        slot.index = index < 0 ? -1 : index;
        slot.listener.reset(new LongListener());
        slot.listener->SetConnectionName(index < 0 ? QStringLiteral("A") : QStringLiteral("A[%1]").arg(index));
        slot.listener->setReceiveMessageCB([this, id](const Mv_MessageInterface& m) { heard(id, m); });
        mOrder.push_back(id); // before connecting: it hears its own connection
        slot.listener->connect(mEnv);
        return id;
    }

    void remove(int id)
    {
        mOrder.erase(std::find(mOrder.begin(), mOrder.end(), id));
        mSlots.erase(id);
    }

    void reconnect()
    {
        const int id = pickId();
        mOrder.erase(std::find(mOrder.begin(), mOrder.end(), id));
        mOrder.push_back(id);
        mHeard.clear();
        mSlots.at(id).listener->connect(mEnv);
        ASSERT_EQ(mHeard, std::vector<int>{id});
        mHeard.clear();
    }

    void announce()
    {
        std::vector<int> expected = mOrder;
        expected.insert(expected.end(), mOrder.begin(), mOrder.end());
        mHeard.clear();
        mArray.UnPublish();
        mArray.Publish(mEnv->getDictionary());
        EXPECT_EQ(mHeard, expected);
        mHeard.clear();
    }

    // An element change; one listener on the way may remove another one
    // (or itself), or connect a new one.
    void change()
    {
        const long element = long(pick(kElements));
        std::vector<int> plain, ofElement;
        for (int id : mOrder) {
            const long index = mSlots.at(id).index;
            if (index < 0)
                plain.push_back(id);
            else if (index == element)
                ofElement.push_back(id);
        }
        std::vector<int> expected = plain;
        expected.insert(expected.end(), ofElement.begin(), ofElement.end());

        mActor = -1;
        mAction = int(pick(3));
        if (!expected.empty() && mAction != 0) {
            mActor = expected[pick(expected.size())];
            mVictim = pickId();
        }
        const int actorId = mActor;
        mHeard.clear();
        mArray.setAt(element, ++mValue);
        EXPECT_EQ(mActor, -1) << "the actor did not hear";

        if (actorId >= 0 && mAction == 1) {
            // The victim is skipped if it had not heard yet.
            const auto actor = std::find(expected.begin(), expected.end(), actorId);
            const auto victim = std::find(expected.begin(), expected.end(), mVictim);
            if (victim != expected.end() && victim > actor)
                expected.erase(victim);
        } else if (actorId >= 0 && mAction == 2) {
            // A newcomer joins the end of its chain. A walk has found its
            // next listener before it tells the current one, so the
            // newcomer hears the change if its chain is walked later, or if
            // the actor was not the last of the chain being walked.
            const Slot& added = mSlots.at(mAdded);
            const auto actor = std::find(expected.begin(), expected.end(), actorId);
            const bool actorPlain = actor < expected.begin() + long(plain.size());
            if (added.index == element && (actorPlain || actor + 1 != expected.end()))
                expected.push_back(mAdded);
            else if (added.index < 0 && actorPlain && actor + 1 != expected.begin() + long(plain.size()))
                expected.insert(expected.begin() + long(plain.size()), mAdded);
        }
        EXPECT_EQ(mHeard, expected) << "element " << element << ", action " << mAction;
        mHeard.clear();
    }

    void heard(int id, const Mv_MessageInterface& m)
    {
        mHeard.push_back(id);
        if (m.is<Mvt_Root_Notifications::MsgConnectedChanged>() || id != mActor)
            return;
        mActor = -1; // once
        if (mAction == 1) {
            remove(mVictim); // may be the actor itself
        } else {
            mHeard.pop_back(); // the newcomer's own connection is not part of the change
            mAdded = add();
            mHeard.pop_back();
            mHeard.push_back(id);
        }
    }

    Mv_ConnectionEnvironment::Ptr mEnv;
    std::mt19937 mRandom;
    Mve_Array<long> mArray;
    std::map<int, Slot> mSlots;
    std::vector<int> mOrder;
    std::vector<int> mHeard;
    int mNextId = 0;
    long mValue = 0;
    int mActor = -1;
    int mAction = 0;
    int mVictim = -1;
    int mAdded = -1;
};

TEST_F(Dictionary, ListenersHearInConnectionOrderWhateverComesAndGoesOnTheWay)
{
    for (unsigned seed : {1u, 2u, 3u, 4u}) {
        Mv_ConnectionDict local;
        ListenerOrder order(local, seed);
        for (int i = 0; i < 3000 && !HasFailure(); ++i)
            order.step();
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

// Plain listeners connected before the name's first element listener keep
// hearing element changes once the element chains exist.
TEST_F(Dictionary, PlainListenersKeepHearingWhenTheFirstElementListenerComesDuringADelivery)
{
    Mve_Array<long> array({1, 2, 3}, "A");
    array.Publish(&dict);
    LongListener first("A", env()), second("A", env());
    std::unique_ptr<LongListener> element;
    bool made = false;
    QStringList heard;
    first.setReceiveMessageCB([&](const Mv_MessageInterface&) {
        heard << "first";
        if (!made) {
            made = true;
            element.reset(new LongListener("A[1]", env()));
            element->setReceiveMessageCB([&](const Mv_MessageInterface&) { heard << "element"; });
        }
    });
    second.setReceiveMessageCB([&](const Mv_MessageInterface&) { heard << "second"; });
    array.setAt(1, 20);
    EXPECT_EQ(heard, (QStringList{"first", "second", "element"}));
    heard.clear();
    array.setAt(0, 10);
    EXPECT_EQ(heard, (QStringList{"first", "second"}));
    heard.clear();
    element.reset();
    array.setAt(1, 21);
    EXPECT_EQ(heard, (QStringList{"first", "second"}));
}

// Listeners outlive a dictionary that dies while one of its names is being
// delivered; they leave their orphaned entries and work in a new one.
TEST_F(Dictionary, ListenersOfADictionaryDestroyedDuringADeliveryLeaveAndConnectElsewhere)
{
    auto doomed = std::make_unique<Mv_ConnectionDict>();
    const auto doomedEnv = Mv_ConnectionEnvironment::create({}, doomed.get());
    auto value = std::make_unique<Mve_SimpleValue<long>>(1, "V");
    value->Publish(doomed.get());
    LongListener killer("V", doomedEnv), after("V", doomedEnv), waiting("W", doomedEnv), cell("V[0]", doomedEnv);
    int afterHeard = 0;
    killer.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (!m.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            doomed.reset();
    });
    after.setReceiveMessageCB([&](const Mv_MessageInterface&) { ++afterHeard; });
    value->setValue(2);
    EXPECT_FALSE(doomed);
    EXPECT_FALSE(value->isPublished());
    EXPECT_EQ(value->dictionary(), nullptr);
    EXPECT_EQ(afterHeard, 1); // the disconnection, instead of the change
    EXPECT_FALSE(after.isConnectedToModel());
    EXPECT_FALSE(waiting.isConnectedToModel());

    EXPECT_TRUE(value->Publish(&dict));
    EXPECT_TRUE(after.connect(env()));
    EXPECT_EQ(after.value(), 2);
    EXPECT_EQ(value->listenerCount(), 1);
    waiting.ClearConnection();
    value.reset(); // cell and killer still sit in their orphaned entries
}

// Tens of thousands of names, half of them withdrawn and published again
// under new names: the table grows and reuses the places of the names that
// left, and every name still finds its own model.
TEST_F(Dictionary, ManyNamesComeGoAndComeBackEachFindingItsModel)
{
    const int n = 40000;
    std::vector<std::unique_ptr<Mve_SimpleValue<long>>> models;
    for (int i = 0; i < n; ++i) {
        models.emplace_back(new Mve_SimpleValue<long>(i, QStringLiteral("M%1").arg(i)));
        ASSERT_TRUE(models.back()->Publish(&dict));
    }
    LongListener waiting("M1", env()), renamed("N0", env());
    for (int i = 0; i < n; i += 2)
        models[size_t(i)]->SetConnectionName(QStringLiteral("N%1").arg(i));
    EXPECT_EQ(dict.modelCount(), n);
    EXPECT_EQ(renamed.value(), 0);
    models[1].reset();
    EXPECT_FALSE(waiting.isConnectedToModel());
    for (int i = 2; i < n; ++i) {
        const QString now = QString(i % 2 ? "M%1" : "N%1").arg(i);
        const QString before = QString(i % 2 ? "N%1" : "M%1").arg(i);
        ASSERT_EQ(dict.lookup(now), models[size_t(i)].get()) << qPrintable(now);
        ASSERT_FALSE(dict.isPublished(before)) << qPrintable(before);
    }
    models.clear();
    EXPECT_EQ(dict.modelCount(), 0);
    EXPECT_EQ(dict.listenerCount("M1"), 1);
    EXPECT_FALSE(renamed.isConnectedToModel());
}

// A guard tells its own model's fate, whatever other models nested guards
// watch and whichever of them listeners destroy.
TEST_F(Dictionary, GuardsOfDifferentModelsNestAndEachFollowsItsOwnModel)
{
    auto outer = std::make_unique<Mve_SimpleValue<long>>(0, "Outer");
    auto inner = std::make_unique<Mve_SimpleValue<long>>(0, "Inner");
    outer->Publish(&dict);
    inner->Publish(&dict);
    LongListener destroyer("Inner", env());
    destroyer.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (!m.is<Mvt_Root_Notifications::MsgConnectedChanged>())
            inner.reset();
    });
    Mv_ModelBase::Guard outerGuard(outer.get());
    {
        Mv_ModelBase::Guard innerGuard(inner.get());
        Mv_ModelBase::Guard outerAgain(outer.get());
        inner->setValue(1);
        EXPECT_FALSE(innerGuard.alive());
        EXPECT_TRUE(outerAgain.alive());
    }
    EXPECT_TRUE(outerGuard.alive());
    outer.reset();
    EXPECT_FALSE(outerGuard.alive());
}

} // namespace
