#include "DemoPanel.h"

#include <algorithm>

std::vector<DemoPanel>& demoPanels()
{
    static std::vector<DemoPanel> panels;
    return panels;
}

DemoPanelRegistrar::DemoPanelRegistrar(const DemoPanel& panel)
{
    auto& panels = demoPanels();
    panels.push_back(panel);
    std::stable_sort(panels.begin(), panels.end(),
                     [](const DemoPanel& a, const DemoPanel& b) { return a.order < b.order; });
}
