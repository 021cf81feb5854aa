#include "Mnu_MenuID.h"

#include "Kel_Logging_p.h"

void Mnu_MenuID::dump(const QString& prefix) const
{
    qCDebug(lcKelMenu, "%sMnu_MenuID: [%p], value [%p] (void *)", qPrintable(prefix), static_cast<const void*>(this),
            mValue);
}
