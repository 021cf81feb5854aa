// What's-this names: kept for help lookup, never shown to users in Qt's
// What's This mode.
#include "Kel_CheckBox.h"
#include "Kel_WhatsThis.h"
#include "TestSupport.h"

#include <QApplication>
#include <QTest>
#include <QWhatsThis>
#include <gtest/gtest.h>

namespace {

// Whether Qt's what's-this pop-up is showing.
bool whatsThisShown()
{
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->inherits("QWhatsThat") && top->isVisible())
            return true;
    }
    return false;
}

// Clicks widget in What's This mode, the way a user asks for its help;
// answers whether a pop-up came up, which is then closed.
bool askWhatsThis(QWidget* widget)
{
    QWhatsThis::enterWhatsThisMode();
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, widget->rect().center());
    const bool shown = waitFor(&whatsThisShown, 300);
    QWhatsThis::hideText();
    QWhatsThis::leaveWhatsThisMode();
    return shown;
}

} // namespace

TEST(WhatsThis, TheRegisteredNameIsForHelpAndTheFormsTextForUsers)
{
    QWidget window;
    auto* box = new Kel_CheckBox(&window, "mute");
    box->setText(QStringLiteral("Mute"));
    box->resize(100, 30);
    window.resize(120, 40);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    EXPECT_EQ(Kel_WhatsThis::whatsThisName(box), QStringLiteral("Kel_CheckBox"));
    EXPECT_TRUE(box->whatsThis().isEmpty());
    EXPECT_FALSE(askWhatsThis(box)); // no class name shown to the user

    // The text a form gives is what users see; registering again keeps it.
    box->setWhatsThis(QStringLiteral("Silences the output."));
    Kel_WhatsThis::setBestWhatsThisName(box, "Kel_MuteBox");
    EXPECT_EQ(box->whatsThis(), QStringLiteral("Silences the output."));
    EXPECT_EQ(Kel_WhatsThis::whatsThisName(box), QStringLiteral("Kel_MuteBox"));
    EXPECT_TRUE(askWhatsThis(box));
}
