#include "Kel_EditMenuTestWindow.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_CreateWidgetFromUILayout.h"
#include "Kel_MenuBar.h"

#include <QLayout>
#include <QWidget>

QWidget* Kel_EditMenuTestWindow::open()
{
    QWidget* window = Kel_CreateWidgetFromUILayout(QStringLiteral("EditMenuTest"), nullptr);
    if (!window)
        return nullptr;
    window->setAttribute(Qt::WA_DeleteOnClose);
    auto* bar = new Kel_MenuBar(window, "EditMenuTestMenubar");
    if (window->layout())
        window->layout()->setMenuBar(bar);
    Kel_ConnectionUtils::recursiveConnect(window, Mv_ConnectionEnvironment::blankEnvironment());
    window->show();
    window->raise();
    return window;
}
