// The application object: library initialisation and the main widget.
#include "Kel_Application.h"
#include "Kel_Initialize.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QDir>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

Kel_Application* application()
{
    return dynamic_cast<Kel_Application*>(QCoreApplication::instance());
}

} // namespace

TEST(Application, ConstructionInitialisesTheLibrary)
{
    ASSERT_NE(application(), nullptr);
    EXPECT_TRUE(Kel_IsInitialized());
    EXPECT_EQ(QDir(Ost_Resource::getResourcePath()).canonicalPath(), QDir(testDataDir()).canonicalPath());
}

TEST(Application, RegisteredMainWidgetIsTheDefaultParent)
{
    Kel_Application* app = application();
    ASSERT_NE(app, nullptr);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), nullptr);

    QWidget window;
    auto* child = new QWidget(&window);
    QWidget other;
    app->setMainWidget(&window);
    EXPECT_EQ(app->mainWidget(), &window);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), &window);
    // A widget still gives its own window, not the main one.
    EXPECT_EQ(Kel_Application::findMainWidget(&other), &other);
    EXPECT_EQ(Kel_Application::findMainWidget(child), &window);

    app->setMainWidget(nullptr);
    EXPECT_EQ(Kel_Application::findMainWidget(nullptr), nullptr);
}
