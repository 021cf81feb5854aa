// Connecting a widget tree: plain Qt containers are transparent, bound
// widgets connect themselves and answer for their own children.
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Mv_ConnectionDict.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QFrame>
#include <QGroupBox>
#include <QPointer>
#include <QSplitter>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace {

// A bound widget that counts its connections; optionally connects its
// children the way container widgets do, or runs a test hook first.
class CountingWidget : public QWidget, public Kel_WidgetConnectInterface
{
public:
    explicit CountingWidget(QWidget* parent, bool container = false) : QWidget(parent), mContainer(container) {}
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override
    {
        ++connections;
        if (hook)
            hook();
        if (mContainer)
            Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
    }
    int connections = 0;
    std::function<void()> hook;

private:
    bool mContainer;
};

const auto kBlank = Mv_ConnectionEnvironment::blankEnvironment;

} // namespace

TEST(ConnectionUtils, PlainContainersAreTransparent)
{
    Mve_SimpleValue<bool> muted(true, "ConnectionUtils.Muted");
    muted.Publish();
    QWidget root;
    auto* direct = new CountingWidget(new QFrame(&root));
    auto* nested = new CountingWidget(new QGroupBox(new QSplitter(&root)));
    auto* box = new Kel_CheckBox(new QFrame(&root), "box");
    box->setCheckedStateConnectionSpec("$Bus.Muted");

    auto env = Mv_ConnectionEnvironment::create(kBlank());
    env->set(QStringLiteral("Bus"), QStringLiteral("ConnectionUtils"));
    Kel_ConnectionUtils::recursiveConnect(&root, env);
    EXPECT_EQ(direct->connections, 1);
    EXPECT_EQ(nested->connections, 1);
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(box->getTypeInfo(), typeid(Kel_WidgetConnectInterface));

    Kel_ConnectionUtils::recursiveConnect(nullptr, env); // nothing to do
}

TEST(ConnectionUtils, BoundWidgetsAnswerForTheirChildren)
{
    QWidget root;
    auto* outer = new CountingWidget(&root);
    auto* inner = new CountingWidget(outer);
    auto* deeper = new CountingWidget(new QFrame(outer));
    Kel_ConnectionUtils::recursiveConnect(&root, kBlank());
    Kel_ConnectionUtils::recursiveConnect(outer, kBlank());
    EXPECT_EQ(outer->connections, 2);
    EXPECT_EQ(inner->connections, 0);
    EXPECT_EQ(deeper->connections, 0);

    // Unless the widget connects them itself, as containers do.
    auto* container = new CountingWidget(&root, true);
    auto* child = new CountingWidget(new QFrame(container));
    Kel_ConnectionUtils::recursiveConnect(container, kBlank());
    EXPECT_EQ(child->connections, 1);
}

TEST(ConnectionUtils, ChildrenRemovedWhileConnectingAreSkipped)
{
    QWidget root;
    auto* first = new CountingWidget(&root);
    QPointer<CountingWidget> second = new CountingWidget(&root);
    auto* third = new CountingWidget(&root);
    first->hook = [&second] { delete second.data(); }; // connecting rebuilds part of the form
    Kel_ConnectionUtils::recursiveConnect(&root, kBlank());
    EXPECT_TRUE(second.isNull());
    EXPECT_EQ(third->connections, 1);
}

// A typo in a form leaves the widget silently at its defaults; with the
// report switched on, connecting the window says which name and what it
// probably meant, once, after the whole tree (not per nested container).
TEST(ConnectionUtils, TheUnconnectedReportNamesTheTypoOnceAfterTheWholeTree)
{
    Mv_ConnectionDict dict;
    Mve_SimpleValue<bool> solo(false, "Mixer.Bus1.solo");
    solo.Publish(&dict);
    QWidget window;
    auto* container = new CountingWidget(&window, true);
    auto* good = new Kel_CheckBox(container, "good");
    good->setCheckedStateConnectionSpec("$Bus.solo");
    auto* typo = new Kel_CheckBox(container, "typo");
    typo->setCheckedStateConnectionSpec("$Bus.slo");
    auto env = Mv_ConnectionEnvironment::create(kBlank(), &dict);
    env->set(QStringLiteral("Bus"), QStringLiteral("Mixer.Bus1"));

    qputenv("KEL_REPORT_UNCONNECTED", "1");
    DebugMessageCollector log;
    Kel_ConnectionUtils::recursiveConnect(&window, env);
    Kel_ConnectionUtils::recursiveConnect(&window, env);
    qunsetenv("KEL_REPORT_UNCONNECTED");
    ASSERT_EQ(log.messages().size(), 1) << log.messages().join('\n').toStdString();
    EXPECT_EQ(log.messages().first(), "unconnected: \"$Bus.slo\" waits for \"Mixer.Bus1.slo\", which nobody "
                                      "publishes; did you mean \"Mixer.Bus1.solo\"?");
    EXPECT_EQ(log.records().first().category, "kel.platform");
    EXPECT_FALSE(typo->isEnabled());
}

namespace {

// The interface at another place in the object than in CountingWidget.
struct Padding
{
    virtual ~Padding() = default;
    char bytes[40] = {};
};
class LateBoundWidget : public QWidget, public Padding, public Kel_WidgetConnectInterface
{
public:
    explicit LateBoundWidget(QWidget* parent) : QWidget(parent) {}
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment>) override { ++connections; }
    int connections = 0;
};

} // namespace

TEST(ConnectionUtils, ClassesMixingTheInterfaceInAtDifferentPlacesAreEachConnectedOncePerWalk)
{
    QWidget root;
    std::vector<CountingWidget*> early;
    std::vector<LateBoundWidget*> late;
    for (int i = 0; i < 6; ++i) { // interleaved, under plain widgets of the same meta-object
        QWidget* frame = i % 2 ? new QWidget(&root) : static_cast<QWidget*>(new QFrame(&root));
        early.push_back(new CountingWidget(frame));
        late.push_back(new LateBoundWidget(frame));
    }
    for (int walk = 1; walk <= 3; ++walk) {
        Kel_ConnectionUtils::recursiveConnect(&root, kBlank());
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(early[i]->connections, walk);
            EXPECT_EQ(late[i]->connections, walk);
        }
    }
}
