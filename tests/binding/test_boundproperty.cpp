// Bound properties: what an empty specification does, and owners deleted by
// a notification while they connect or send.
#include "Kel_BoundProperty.h"
#include "Kel_CheckBox.h"
#include "Mve_SimpleValue.h"

#include <QPointer>
#include <gtest/gtest.h>
#include <memory>

namespace {

typedef Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> BoolProperty;

// An owner that deletes itself when its value property hears from its model, once armed.
class SelfDeletingOwner : public QObject
{
public:
    SelfDeletingOwner()
    {
        value.onNotify([this] {
            if (armed)
                delete this;
        });
    }
    BoolProperty value{this};
    BoolProperty other{this};
    bool armed = true;
};

} // namespace

TEST(BoundProperty, AnEmptySpecificationLeavesTheModelNamedEarlier)
{
    Mve_SimpleValue<bool> shown(false, "Bound.Shown");
    shown.Publish();
    Kel_CheckBox box;
    box.show();
    box.setVisibleStateConnectionSpec("Bound.Shown");
    box.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_FALSE(box.isVisible());

    // No longer named: back at the default, and deaf to the old model.
    box.setVisibleStateConnectionSpec(QByteArray());
    box.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(shown.listenerCount(), 0);
    shown.setValue(true);
    shown.setValue(false);
    EXPECT_TRUE(box.isVisible());
}

TEST(BoundProperty, AnOwnerDeletedByANotificationStopsTheConnectionsAndTheSend)
{
    Mve_SimpleValue<bool> first(false, "Bound.First");
    Mve_SimpleValue<bool> second(false, "Bound.Second");
    first.Publish();
    second.Publish();

    // Deleted while its value property connects: the other is never touched.
    QPointer<SelfDeletingOwner> owner(new SelfDeletingOwner);
    owner->value.setSpec("Bound.First");
    owner->other.setSpec("Bound.Second");
    EXPECT_FALSE(Kel_BoundPropertyBase::connectAll(Mv_ConnectionEnvironment::blankEnvironment(),
                                                   {&owner->value, &owner->other}));
    EXPECT_TRUE(owner.isNull());
    EXPECT_EQ(first.listenerCount() + second.listenerCount(), 0);

    // Deleted by the notification of its own set, which the model accepted.
    owner = new SelfDeletingOwner;
    owner->armed = false;
    owner->value.setSpec("Bound.Second");
    ASSERT_TRUE(owner->value.connect(Mv_ConnectionEnvironment::blankEnvironment()));
    owner->armed = true;
    EXPECT_EQ(owner->value.set(true), Kel_BoundPropertyBase::kOwnerDeleted);
    EXPECT_TRUE(owner.isNull());
    EXPECT_TRUE(second.getValue());
    EXPECT_EQ(second.listenerCount(), 0);
}

TEST(BoundProperty, HandlersReplaceEachOtherAndADestroyedPropertyHearsNothing)
{
    Mve_SimpleValue<bool> value(false, "Bound.Handlers");
    value.Publish();
    int notified = 0, messages = 0;
    auto property = std::make_unique<BoolProperty>(nullptr, Kel_BoundPropertyBase::kConnectWhenNamed);
    property->onNotify([&] { ++notified; });
    property->setSpec("Bound.Handlers");
    ASSERT_TRUE(property->connect(Mv_ConnectionEnvironment::blankEnvironment()));
    EXPECT_EQ(notified, 1); // the connection's own notification
    value.setValue(true);
    EXPECT_EQ(notified, 2);
    bool read = false;
    EXPECT_TRUE((*property)->get(read));
    EXPECT_TRUE(read);

    // A message handler takes the place of the notify handler, and nothing
    // takes the place of either.
    property->onMessage([&](const Mv_MessageInterface&) { ++messages; });
    value.setValue(false);
    property->onNotify(nullptr);
    value.setValue(true);
    EXPECT_EQ(notified, 2);
    EXPECT_EQ(messages, 1);

    // Gone: it leaves the model, which keeps notifying without it.
    property->onNotify([&] { ++notified; });
    EXPECT_EQ(value.listenerCount(), 1);
    property.reset();
    EXPECT_EQ(value.listenerCount(), 0);
    value.setValue(false);
    EXPECT_EQ(notified, 2);
}
