// The spellings that differ between Qt 5 and Qt 6, used the way a widget
// of the library or of an application uses them.
#include "Kel_QtCompat.h"

#include <QCoreApplication>
#include <QFont>
#include <QWidget>
#include <gtest/gtest.h>

namespace {
// Counts the enter events reaching the override; `override` makes the
// build fail where the alias does not match the Qt in use.
class EnterCounter : public QWidget
{
public:
    int enters = 0;

protected:
    void enterEvent(Kel_QtCompat::EnterEvent* event) override
    {
        ++enters;
        QWidget::enterEvent(event);
    }
};
} // namespace

TEST(QtCompat, EnterEventReachesTheOverrideAndFontMaskTellsSetFromInherited)
{
    EnterCounter widget;
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&widget, &enter);
    EXPECT_EQ(widget.enters, 1);

    QFont font;
    EXPECT_FALSE(Kel_QtCompat::fontResolveMask(font) & QFont::SizeResolved);
    font.setPointSize(13);
    EXPECT_TRUE(Kel_QtCompat::fontResolveMask(font) & QFont::SizeResolved);
    EXPECT_FALSE(Kel_QtCompat::fontResolveMask(font) & QFont::FamilyResolved);
}

TEST(QtCompat, OldFontWeightsMeanTheSameOnBothQts)
{
    QFont font;
    Kel_QtCompat::setLegacyFontWeight(font, 75);
    EXPECT_EQ(font.weight(), QFont::Bold);
    Kel_QtCompat::setLegacyFontWeight(font, 50);
    EXPECT_EQ(font.weight(), QFont::Normal);
    Kel_QtCompat::setLegacyFontWeight(font, 45); // between light and normal: read as normal or kept
    EXPECT_LT(font.weight(), QFont::Bold);
    EXPECT_GT(font.weight(), QFont::Light);
}
