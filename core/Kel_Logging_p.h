#ifndef KEL_LOGGING_P_H
#define KEL_LOGGING_P_H

// Internal to KelCore; not installed.
//
// The logging categories of KelCore, one per subsystem, so that an
// application can switch each one on or off with QT_LOGGING_RULES
// ("kel.menu.debug=true", "kel.*.debug=false"). Hidden: the categories are
// not part of the library's interface.

#include <QLoggingCategory>

Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelCore)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelBinding)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelScript)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelFactory)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelMenu)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelKeymap)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelWidgets) // widgets and dialogs
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelViews)
Q_DECL_HIDDEN Q_DECLARE_LOGGING_CATEGORY(lcKelMedia) // the monitor and its overlay

#endif
