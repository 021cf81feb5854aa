// What's-this names of the library's widgets.
#include "Kel_CheckBox.h"
#include "Kel_WhatsThis.h"

#include <QWidget>
#include <gtest/gtest.h>

TEST(WhatsThis, NameBecomesTheDefaultTextButNeverReplacesOwnText)
{
    QWidget plain;
    Kel_WhatsThis::setBestWhatsThisName(&plain, "Kel_Base");
    EXPECT_EQ(Kel_WhatsThis::whatsThisName(&plain), QStringLiteral("Kel_Base"));
    EXPECT_EQ(plain.whatsThis(), QStringLiteral("Kel_Base"));

    // A derived class registering after its base wins.
    Kel_WhatsThis::setBestWhatsThisName(&plain, "Kel_Derived");
    EXPECT_EQ(Kel_WhatsThis::whatsThisName(&plain), QStringLiteral("Kel_Derived"));
    EXPECT_EQ(plain.whatsThis(), QStringLiteral("Kel_Derived"));

    QWidget described;
    described.setWhatsThis(QStringLiteral("Mutes the output."));
    Kel_WhatsThis::setBestWhatsThisName(&described, "Kel_Base");
    EXPECT_EQ(Kel_WhatsThis::whatsThisName(&described), QStringLiteral("Kel_Base"));
    EXPECT_EQ(described.whatsThis(), QStringLiteral("Mutes the output."));

    Kel_CheckBox box;
    EXPECT_EQ(Kel_WhatsThis::whatsThisName(&box), QStringLiteral("Kel_CheckBox"));
}

TEST(WhatsThis, NullArgumentsAreIgnored)
{
    QWidget widget;
    Kel_WhatsThis::setBestWhatsThisName(nullptr, "Kel_Base");
    Kel_WhatsThis::setBestWhatsThisName(&widget, nullptr);
    Kel_WhatsThis::setBestWhatsThisName(&widget, "");
    EXPECT_TRUE(Kel_WhatsThis::whatsThisName(&widget).isEmpty());
    EXPECT_TRUE(widget.whatsThis().isEmpty());
    EXPECT_TRUE(Kel_WhatsThis::whatsThisName(nullptr).isEmpty());
}
