// Finding the window that library dialogs use as their parent.
#include "Kel_Application.h"

#include <QFrame>
#include <QWidget>
#include <gtest/gtest.h>

TEST(FindMainWidget, WidgetGivesItsTopLevelWindow)
{
    QWidget window;
    auto* frame = new QFrame(&window);
    auto* inner = new QWidget(frame);
    EXPECT_EQ(Kel_Application::findMainWidget(inner), &window);
    EXPECT_EQ(Kel_Application::findMainWidget(frame), &window);
    EXPECT_EQ(Kel_Application::findMainWidget(&window), &window);
}

TEST(FindMainWidget, NullUnderAPlainApplicationIsNull)
{
    ASSERT_EQ(dynamic_cast<Kel_Application*>(QCoreApplication::instance()), nullptr);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), nullptr);
}
