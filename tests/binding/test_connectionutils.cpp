// Connecting a widget tree: plain Qt containers are transparent, bound
// widgets connect themselves and answer for their own children.
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mve_SimpleValue.h"

#include <QFrame>
#include <QGroupBox>
#include <QPointer>
#include <QSplitter>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>

namespace {

// A bound widget that counts its connections; optionally connects its
// children the way container widgets do, or runs a test hook.
class CountingWidget : public QWidget, public Kel_WidgetConnectInterface
{
public:
    explicit CountingWidget(QWidget* parent = nullptr, bool connectsChildren = false)
        : QWidget(parent), mConnectsChildren(connectsChildren)
    {
    }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override
    {
        ++connections;
        lastEnvironment = environment;
        if (hook)
            hook();
        if (mConnectsChildren)
            Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
    }

    int connections = 0;
    boost::shared_ptr<const Mv_ConnectionEnvironment> lastEnvironment;
    std::function<void()> hook;

private:
    bool mConnectsChildren;
};

} // namespace

TEST(ConnectionUtils, PlainContainersAreTransparent)
{
    QWidget root;
    auto* frame = new QFrame(&root);
    auto* direct = new CountingWidget(frame);
    auto* splitter = new QSplitter(&root);
    auto* group = new QGroupBox(splitter);
    auto* nested = new CountingWidget(group);

    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    Kel_ConnectionUtils::recursiveConnect(&root, env);
    EXPECT_EQ(direct->connections, 1);
    EXPECT_EQ(nested->connections, 1);
    EXPECT_EQ(direct->lastEnvironment, env);
    EXPECT_EQ(nested->lastEnvironment, env);

    // A real bound widget two levels down shows its model.
    Mve_SimpleValue<bool> muted(true, "ConnectionUtils.Muted");
    muted.Publish();
    auto* box = new Kel_CheckBox(new QFrame(&root), "box");
    box->setCheckedStateConnectionSpec("$Bus.Muted");
    env->set(QStringLiteral("Bus"), QStringLiteral("ConnectionUtils"));
    Kel_ConnectionUtils::recursiveConnect(&root, env);
    EXPECT_TRUE(box->isChecked());
    EXPECT_TRUE(box->isEnabled());
    EXPECT_EQ(direct->connections, 2);
}

TEST(ConnectionUtils, BoundWidgetsAnswerForTheirChildren)
{
    QWidget root;
    auto* outer = new CountingWidget(&root);
    auto* inner = new CountingWidget(outer);
    auto* innerFrame = new QFrame(outer);
    auto* deeper = new CountingWidget(innerFrame);

    // A bound widget's children are not walked into...
    Kel_ConnectionUtils::recursiveConnect(&root, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(outer->connections, 1);
    EXPECT_EQ(inner->connections, 0);
    EXPECT_EQ(deeper->connections, 0);

    // ...the same holds when the root itself is bound...
    Kel_ConnectionUtils::recursiveConnect(outer, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(outer->connections, 2);
    EXPECT_EQ(inner->connections, 0);

    // ...unless the widget connects them itself, as containers do.
    QWidget other;
    auto* container = new CountingWidget(&other, true);
    auto* child = new CountingWidget(new QFrame(container));
    Kel_ConnectionUtils::recursiveConnect(&other, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(container->connections, 1);
    EXPECT_EQ(child->connections, 1);

    // Nothing to connect is not an error.
    Kel_ConnectionUtils::recursiveConnect(nullptr, Mv_ConnectionEnvironment::blankEnvironment());
    Kel_ConnectionUtils::recursiveConnectChildren(nullptr, Mv_ConnectionEnvironment::blankEnvironment());
}

TEST(ConnectionUtils, ChildrenRemovedWhileConnectingAreSkipped)
{
    QWidget root;
    auto* first = new CountingWidget(&root);
    QPointer<CountingWidget> second = new CountingWidget(&root);
    auto* third = new CountingWidget(&root);
    // Connecting the first widget rebuilds part of the form.
    first->hook = [&second] { delete second.data(); };
    Kel_ConnectionUtils::recursiveConnect(&root, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(first->connections, 1);
    EXPECT_TRUE(second.isNull());
    EXPECT_EQ(third->connections, 1);
}

TEST(WidgetConnectInterface, TypeInfoIsThatOfTheInterface)
{
    Kel_CheckBox box;
    const Kel_WidgetConnectInterface& bound = box;
    EXPECT_EQ(bound.getTypeInfo(), typeid(Kel_WidgetConnectInterface));
    CountingWidget counting;
    EXPECT_EQ(static_cast<Kel_WidgetConnectInterface&>(counting).getTypeInfo(), typeid(Kel_WidgetConnectInterface));
}
