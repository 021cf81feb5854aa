#ifndef MV_LOGGING_P_H
#define MV_LOGGING_P_H

// Internal to the model library; not installed.
//
// Every message of the model library goes through kel.platform, so that an
// application can switch it on or off with QT_LOGGING_RULES
// ("kel.platform.debug=false"). Hidden: the category is not part of the
// library's interface.

#include <QLoggingCategory>

Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelPlatform)

#endif
