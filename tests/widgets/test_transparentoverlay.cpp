// Kel_TransparentOverlay: alpha set at once or faded to, and the pixmap it shows.
#include "Kel_TransparentOverlay.h"
#include "TestSupport.h"

#include <QTest>
#include <gtest/gtest.h>

TEST(TransparentOverlay, AlphaIsSetAtOnceOrFadedToAndThePixmapIsShownAtTheCorner)
{
    QWidget owner;
    auto* overlay = new Kel_TransparentOverlay(&owner);
    EXPECT_TRUE(overlay->isWindow());
    EXPECT_TRUE(overlay->testAttribute(Qt::WA_TransparentForMouseEvents));

    overlay->setAlpha(143, true);
    EXPECT_EQ(overlay->alpha(), 143);
    EXPECT_DOUBLE_EQ(overlay->windowOpacity(), 143 / 255.0);
    overlay->setAlpha(400, true); // beyond opaque
    EXPECT_EQ(overlay->alpha(), 255);

    overlay->setFadeDuration(40);
    overlay->setAlpha(0, false);
    EXPECT_EQ(overlay->alpha(), 0);
    EXPECT_GT(overlay->windowOpacity(), 0.5); // still on its way
    EXPECT_TRUE(waitFor([overlay] { return overlay->windowOpacity() == 0.0; }));
    // A new alpha stops a running fade.
    overlay->setAlpha(255, false);
    overlay->setAlpha(100, true);
    QTest::qWait(80);
    EXPECT_DOUBLE_EQ(overlay->windowOpacity(), 100 / 255.0);

    QPixmap pane(30, 10);
    pane.fill(Qt::red);
    overlay->setPixmap(pane);
    EXPECT_EQ(overlay->sizeHint(), QSize(30, 10));
    overlay->setFixedSize(40, 20);
    const QImage shown = overlay->grab().toImage();
    EXPECT_EQ(shown.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(shown.pixelColor(35, 15).alpha(), 0); // transparent beyond the pixmap
}
