// Kel_Sprite: a film strip of frames played in a loop while shown.
#include "Kel_Sprite.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QColor kFrameColours[] = {Qt::red, Qt::green, Qt::blue};

// A resource folder with Images/Strip.png: three 10 x 8 frames, red, green, blue.
class Sprite : public ::testing::Test
{
protected:
    void SetUp() override
    {
        previous = Ost_Resource::getResourcePath();
        ASSERT_TRUE(QDir(dir.path()).mkpath("Images"));
        QImage strip(30, 8, QImage::Format_ARGB32);
        QPainter painter(&strip);
        for (int i = 0; i < 3; ++i)
            painter.fillRect(QRect(10 * i, 0, 10, 8), kFrameColours[i]);
        painter.end();
        ASSERT_TRUE(strip.save(dir.path() + "/Images/Strip.png"));
        Ost_Resource::setResourcePath(dir.path() + "/");
    }
    void TearDown() override { Ost_Resource::setResourcePath(previous); }

    // The colour at the middle of what the sprite shows.
    static QColor shown(Kel_Sprite& sprite)
    {
        return sprite.grab().toImage().pixelColor(sprite.rect().center());
    }

    QTemporaryDir dir;
    QString previous;
};

TEST_F(Sprite, PlaysItsFramesInALoopWhileShownAndRunning)
{
    Kel_Sprite sprite;
    sprite.setImagePath("Images/Strip.png");
    sprite.setFrameCount(3);
    sprite.setInterval(5);
    EXPECT_EQ(sprite.sizeHint(), QSize(10, 8));
    sprite.resize(10, 8);
    EXPECT_FALSE(sprite.isAnimating()); // hidden: nobody sees it, nothing runs
    EXPECT_EQ(shown(sprite), kFrameColours[0]);

    sprite.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&sprite));
    EXPECT_TRUE(sprite.isAnimating());
    // Every frame comes round, each from its own part of the strip.
    bool seen[3] = {false, false, false};
    ASSERT_TRUE(waitFor([&] {
        seen[sprite.frame()] = shown(sprite) == kFrameColours[sprite.frame()];
        return seen[0] && seen[1] && seen[2];
    }));

    sprite.setRunning(false);
    EXPECT_FALSE(sprite.isAnimating());
    EXPECT_EQ(sprite.frame(), 0);
    EXPECT_EQ(shown(sprite), kFrameColours[0]);
    sprite.setRunning(true);
    sprite.hide();
    EXPECT_FALSE(sprite.isAnimating());
}

TEST_F(Sprite, BadSettingsShowNothingAndAnimateNothing)
{
    Kel_Sprite sprite;
    sprite.setFrameCount(0); // taken as one frame
    EXPECT_EQ(sprite.getFrameCount(), 1);
    sprite.setImagePath("Images/Missing.png");
    sprite.show();
    EXPECT_FALSE(sprite.isAnimating());
    sprite.setImagePath("Images/Strip.png"); // one frame: the whole strip, still
    EXPECT_FALSE(sprite.isAnimating());
    EXPECT_EQ(sprite.sizeHint(), QSize(30, 8));
}

} // namespace
