#include "Kel_SubscriptionIdentifierSubstitution.h"

#include "Ost_StringUtils.h"

#include <QWidget>

QString Kel_SubscriptionIdentifierSubstitution(QString identifier, QWidget* owner)
{
    identifier = identifier.trimmed();
    if (!owner || !identifier.startsWith(QLatin1String("$Window")))
        return identifier;
    // The outermost widget, not QWidget::window(): a dialog or tool window
    // inside the application window belongs to that window's models.
    QWidget* top = owner;
    while (QWidget* parent = top->parentWidget())
        top = parent;
    return Ost_StringUtils::pointerToHex(top) + identifier;
}
