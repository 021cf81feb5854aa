#ifndef KEL_SUBSCRIPTIONIDENTIFIERSUBSTITUTION_H
#define KEL_SUBSCRIPTIONIDENTIFIERSUBSTITUTION_H

#include "kelcore_export.h"

#include <QString>

class QWidget;

// The connection name that a script identifier stands for when owner runs
// it. The identifier is trimmed; one that starts with "$Window" gets the
// address of owner's top-level widget (lower-case hexadecimal, no prefix)
// in front, so that two windows of the same kind each reach the models
// published under their own address. "$Window" itself stays for the
// environment to resolve. Without an owner the trimmed identifier is
// returned as it is.
KELCORE_EXPORT QString Kel_SubscriptionIdentifierSubstitution(QString identifier, QWidget* owner);

#endif
