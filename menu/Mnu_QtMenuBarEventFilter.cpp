#include "Mnu_QtMenuBarEventFilter.h"

#include "Mnu_QtMenuBarManager.h"

#include <QEvent>

Mnu_QtMenuBarEventFilter::Mnu_QtMenuBarEventFilter(Mnu_QtMenuBarManager* manager) : mManagerP(manager)
{
    mTimer.setSingleShot(true);
    mTimer.setInterval(0);
    connect(&mTimer, &QTimer::timeout, this, &Mnu_QtMenuBarEventFilter::slotRefresh);
}

Mnu_QtMenuBarEventFilter::~Mnu_QtMenuBarEventFilter() = default;

bool Mnu_QtMenuBarEventFilter::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Enter:
    case QEvent::WindowActivate:
    case QEvent::ActivationChange:
    case QEvent::LanguageChange:
        // Coalesced: several of these often arrive together.
        scheduleRefresh();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void Mnu_QtMenuBarEventFilter::scheduleRefresh()
{
    mTimer.start();
}

void Mnu_QtMenuBarEventFilter::slotRefresh()
{
    if (mManagerP)
        mManagerP->refreshMenuBar();
}
