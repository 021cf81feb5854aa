// The reveal view: a header whose triangle shows and hides the body, bound
// to a bool model or keeping the state itself, driven by clicks on a bridge.
#include "Kel_RevealView.h"
#include "Mve_SimpleValue.h"
#include "ViewTestSupport.h"

namespace {

// A reveal view named "Group" holding a probe body, as the panel's only view.
struct RevealHost
{
    RevealHost()
    {
        reveal = new Kel_RevealView;
        reveal->setName(QStringLiteral("Group"));
        reveal->setTitle(QStringLiteral("Advanced"));
        body = new ProbeView(QStringLiteral("Body"), QRect(0, 0, 150, 50), 0, &host.log);
        reveal->setBody(body);
        host.panel->AddSubView(reveal);
    }
    void clickHeader(Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(host.bridge, Qt::LeftButton, modifiers, QPoint(8, reveal->headerHeight() / 2));
    }
    void clickBody() { QTest::mouseClick(host.bridge, Qt::LeftButton, Qt::NoModifier, QPoint(20, reveal->headerHeight() + 10)); }
    HostedPanel host{QSize(200, 200)};
    Kel_RevealView* reveal;
    ProbeView* body;
};

} // namespace

TEST(RevealView, UnboundItShowsTheBodyAndTheHeaderTogglesIt)
{
    RevealHost r;
    r.reveal->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    const int header = r.reveal->headerHeight();
    EXPECT_TRUE(r.reveal->isRevealed());
    EXPECT_EQ(r.reveal->getSize(), QSize(16 + 150, header + 50));
    EXPECT_EQ(r.body->getRectInParent(), QRect(16, header, 150, 50));

    r.clickBody();
    EXPECT_EQ(r.host.log, (QStringList{"press Body 4,10", "release Body 4,10"}));

    r.clickHeader();
    EXPECT_FALSE(r.reveal->isRevealed());
    EXPECT_EQ(r.reveal->getSize().height(), header);
    // The hidden body takes no clicks: they fall through to the panel.
    r.host.log.clear();
    r.clickBody();
    EXPECT_TRUE(r.host.log.isEmpty());

    r.clickHeader();
    EXPECT_TRUE(r.reveal->isRevealed());
    EXPECT_EQ(r.reveal->findUiName(QPoint(20, header + 5)), QStringLiteral("Group.Body"));
}

TEST(RevealView, FollowsItsModelAndUndoesRefusedClicks)
{
    Mve_SimpleValue<bool> open(false, "RevealView.Open");
    Mve_SimpleValue<QString> title(QStringLiteral("Effects"), "RevealView.Title");
    publishAll({&open, &title});
    RevealHost r;
    r.reveal->setRevealStateConnection(QStringLiteral("$P.Open"));
    r.reveal->setTitleConnection(QStringLiteral("$P.Title"));
    r.reveal->makeConnections(environmentWith(QStringLiteral("P"), QStringLiteral("RevealView")));
    EXPECT_FALSE(r.reveal->isRevealed());
    EXPECT_EQ(r.reveal->displayedTitle(), QStringLiteral("Effects"));

    r.clickHeader();
    EXPECT_TRUE(open.getValue());
    EXPECT_TRUE(r.reveal->isRevealed());
    open.setValue(false);
    EXPECT_FALSE(r.reveal->isRevealed());
    title.setValue(QStringLiteral("Effects (3)"));
    EXPECT_EQ(r.reveal->displayedTitle(), QStringLiteral("Effects (3)"));

    // A read-only model refuses: the body stays as the model says.
    open.setReadOnly(true);
    r.clickHeader();
    EXPECT_FALSE(open.getValue());
    EXPECT_FALSE(r.reveal->isRevealed());

    // Its models gone, the view keeps its own state and title again.
    open.UnPublish();
    EXPECT_TRUE(r.reveal->isRevealed());
    title.UnPublish();
    EXPECT_EQ(r.reveal->displayedTitle(), QStringLiteral("Advanced"));

    // Copies carry the names, not the connection.
    std::unique_ptr<Kel_ViewInterface> copy(r.reveal->clone());
    auto* copied = static_cast<Kel_RevealView*>(copy.get());
    EXPECT_EQ(copied->getRevealStateConnection(), QStringLiteral("$P.Open"));
    ASSERT_NE(copied->body(), nullptr);
    EXPECT_EQ(copied->body()->getName(), QStringLiteral("Body"));
}
