#ifndef MNU_QTMENUBAREVENTFILTER_H
#define MNU_QTMENUBAREVENTFILTER_H

#include "kelcore_export.h"

#include <QObject>
#include <QTimer>

class Mnu_QtMenuBarManager;

// Watches a menu bar and, shortly after it is shown, entered by the mouse
// or its window is activated, refreshes the bar's menu titles and
// visibility from their models (the drop-down menus rebuild themselves).
class KELCORE_EXPORT Mnu_QtMenuBarEventFilter : public QObject
{
    Q_OBJECT

public:
    explicit Mnu_QtMenuBarEventFilter(Mnu_QtMenuBarManager* manager);
    ~Mnu_QtMenuBarEventFilter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    // Refreshes the bar on the next turn of the event loop.
    void scheduleRefresh();
    // True while a refresh is pending.
    bool isRefreshPending() const { return mTimer.isActive(); }

private slots:
    void slotRefresh();

private:
    Mnu_QtMenuBarManager* mManagerP;
    QTimer mTimer;
};

#endif
