#include "DemoWindow.h"

#include "DemoPanel.h"

#include "DemoModels.h"
#include "Kel_KeymapMgr.h"
#include "Kel_MenuBar.h"
#include "Kel_ModelInspector.h"
#include "Ost_Resource.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QTabWidget>

DemoWindow::DemoWindow(QWidget* parent)
    : QMainWindow(parent), mTabsP(new QTabWidget(this))
{
    setObjectName("DemoWindow");
    setWindowTitle(tr("KelCore demo"));
    setCentralWidget(mTabsP);
    for (const DemoPanel& panel : demoPanels()) {
        QWidget* page = panel.create(mTabsP);
        page->setObjectName(panel.title);
        mTabsP->addTab(page, panel.title);
    }
    // After the panels: the "Menus" panel publishes the models the bar binds to.
    auto* menuBar = new Kel_MenuBar(this, "DemoMenuBar");
    setMenuBar(menuBar);
    menuBar->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    // The base keymap and its language variants; menu-command keys go to this bar.
    Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
    keymap->loadAll(Ost_Resource::getResourcePath() + "Keymaps/", "DemoKeys");
    keymap->setMenuBar(menuBar);
    // The developer's view of the models behind every panel.
    auto* inspect = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+I")), this);
    connect(inspect, &QShortcut::activated, this, [this] {
        if (!mInspectorP) {
            mInspectorP = new Kel_ModelInspector(this);
            mInspectorP->setWindowFlags(Qt::Window);
        }
        mInspectorP->show();
        mInspectorP->raise();
    });
    resize(900, 600);
}

bool DemoWindow::showPanel(const QString& title)
{
    for (int i = 0; i < mTabsP->count(); ++i) {
        if (mTabsP->tabText(i) == title) {
            mTabsP->setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

void DemoWindow::keyPressEvent(QKeyEvent* event)
{
    const bool used = Kel_KeymapMgr::getInstance()->handleAction(event, "MainWindow",
                                                                 Mv_ConnectionEnvironment::blankEnvironment());
    DemoModels& models = DemoModels::instance();
    models.lastKeyUsed.setValue(used);
    models.lastKey.setValue(Kel_KeymapMgr::keySequence(event).toString(QKeySequence::PortableText));
    if (!used)
        QMainWindow::keyPressEvent(event);
}

void DemoWindow::prepareScreenshot()
{
    const int index = mTabsP->currentIndex();
    if (index < 0 || index >= int(demoPanels().size()))
        return;
    const DemoPanel& panel = demoPanels().at(size_t(index));
    if (panel.prepareScreenshot)
        panel.prepareScreenshot(mTabsP->currentWidget());
}
