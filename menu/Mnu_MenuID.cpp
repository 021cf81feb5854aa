#include "Mnu_MenuID.h"

#include <QDebug>

void Mnu_MenuID::dump(const QString& prefix) const
{
    qDebug("%sMnu_MenuID: [%p], value [%p] (void *)", qPrintable(prefix), static_cast<const void*>(this), mValue);
}
