// kelcore_demo: the KelCore showcase.
//
//   kelcore_demo                         opens the demo window
//   kelcore_demo --panel TITLE           opens it on one panel
//   kelcore_demo --screenshot FILE.png   renders the window, writes the PNG and exits
//   kelcore_demo --list-panels           prints the panel titles, one per line
//   kelcore_demo --panel TITLE --accessibility-tree
//                                        prints the panel's accessibility tree and exits
#include "DemoAccessibility.h"
#include "DemoModels.h"
#include "DemoPanel.h"
#include "DemoWindow.h"

#include "Kel_Application.h"
#include "Ost_DirPaths.h"
#include "Ost_Resource.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QTabWidget>
#include <QTextStream>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv)
{
    // Without a display there is nothing to open a window on; render offscreen.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    Kel_Application app(argc, argv); // initialises the library
    QApplication::setApplicationName("KelCoreDemo");
    QCommandLineParser parser;
    parser.setApplicationDescription("KelCore demo application");
    parser.addHelpOption();
    QCommandLineOption screenshot("screenshot", "Render the window to a PNG file and exit.", "file");
    QCommandLineOption panel("panel", "Open on the panel with this title.", "title");
    QCommandLineOption listPanels("list-panels", "Print the panel titles and exit.");
    QCommandLineOption accessibilityTree("accessibility-tree", "Print the panel's accessibility tree and exit.");
    parser.addOptions({screenshot, panel, listPanels, accessibilityTree});
    parser.process(app);

    if (parser.isSet(listPanels)) {
        QTextStream out(stdout);
        for (const DemoPanel& p : demoPanels())
            out << p.title << '\n';
        return 0;
    }

    // The demo's resource tree lies next to the executable unless the
    // environment points elsewhere.
    if (qEnvironmentVariableIsEmpty("KELCORE_RESOURCE_DIR"))
        qputenv("KELCORE_RESOURCE_DIR", QFile::encodeName(QCoreApplication::applicationDirPath() + "/resources/"));
    Ost_DirPaths::Initialize("KelCoreDemo");
    Ost_Resource::setResourcePath(Ost_DirPaths::GetPath(Ost_DirPaths::kResourceDir, false));

    DemoModels::instance();
    DemoWindow window;
    if (parser.isSet(panel) && !window.showPanel(parser.value(panel))) {
        std::fprintf(stderr, "kelcore_demo: no panel named %s\n", qPrintable(parser.value(panel)));
        return 2;
    }
    window.show();

    if (parser.isSet(accessibilityTree)) {
        // What a screen reader finds on the panel, once its layouts settled.
        QTimer::singleShot(50, &window, [&] {
            QTextStream(stdout) << demoAccessibilityTree(window.tabs()->currentWidget());
            app.quit();
        });
        return app.exec();
    }
    if (!parser.isSet(screenshot))
        return app.exec();

    // Let layouts settle, run the panel's scripted input, then capture.
    const QString file = parser.value(screenshot);
    int result = 1;
    QTimer::singleShot(50, &window, [&] {
        window.prepareScreenshot();
        QTimer::singleShot(50, &window, [&] {
            result = window.grab().save(file, "PNG") ? 0 : 1;
            if (result != 0)
                std::fprintf(stderr, "kelcore_demo: cannot write %s\n", qPrintable(file));
            app.quit();
        });
    });
    app.exec();
    return result;
}
