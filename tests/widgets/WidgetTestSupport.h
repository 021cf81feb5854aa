#ifndef WIDGETTESTSUPPORT_H
#define WIDGETTESTSUPPORT_H

#include "Kel_ConnectionUtils.h"
#include "Mv_ConnectionEnvironment.h"

#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <gtest/gtest.h>

// A window that a test fills with widgets, one under the other, shows, and
// connects as one form in the blank environment.
class WidgetWindowTest : public ::testing::Test
{
protected:
    void SetUp() override { layout = new QVBoxLayout(&window); }

    template <class W>
    W* add(const char* name)
    {
        auto* w = new W(&window, name);
        layout->addWidget(w);
        return w;
    }
    void show()
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void connect() { Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment()); }

    QWidget window;
    QVBoxLayout* layout = nullptr;
};

#endif
