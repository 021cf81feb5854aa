#ifndef DEMOWINDOW_H
#define DEMOWINDOW_H

#include <QMainWindow>

class Kel_ModelInspector;
class QTabWidget;

// The demo's main window: one tab per registered panel.
class DemoWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit DemoWindow(QWidget* parent = nullptr);

    // Makes the panel with this title current; false when there is none.
    bool showPanel(const QString& title);
    // Runs the current panel's scripted input, if it has any.
    void prepareScreenshot();
    QTabWidget* tabs() const { return mTabsP; }

protected:
    // Keys that no widget used: the keymap's "MainWindow" context decides.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QTabWidget* mTabsP;
    Kel_ModelInspector* mInspectorP = nullptr; // opened with Ctrl+Shift+I
};

#endif
