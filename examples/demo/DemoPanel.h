#ifndef DEMOPANEL_H
#define DEMOPANEL_H

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

// One page of the demo window. Panels register themselves from their own
// source file with a static DemoPanelRegistrar, so adding a panel never
// touches the window.
struct DemoPanel
{
    QString title;
    int order = 0;                                   // pages appear by ascending order
    std::function<QWidget*(QWidget* parent)> create; // builds the page (after the demo models exist)
    std::function<void(QWidget* page)> prepareScreenshot; // optional: scripted input before a screenshot
};

// The panels known to the demo, sorted by order.
std::vector<DemoPanel>& demoPanels();

struct DemoPanelRegistrar
{
    explicit DemoPanelRegistrar(const DemoPanel& panel);
};

#endif
