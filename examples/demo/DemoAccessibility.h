#ifndef DEMOACCESSIBILITY_H
#define DEMOACCESSIBILITY_H

#include <QString>

class QWidget;

// The accessibility tree under root as a screen reader or a UI-test tool
// sees it, one line per interface, indented by depth:
//   Role name="..." value="..." [state state ...]
// Lists and tables show their first rows only.
QString demoAccessibilityTree(QWidget* root);

#endif
