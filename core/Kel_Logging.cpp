#include "Kel_Logging_p.h"

Q_LOGGING_CATEGORY(lcKelCore, "kel.core")
Q_LOGGING_CATEGORY(lcKelBinding, "kel.binding")
Q_LOGGING_CATEGORY(lcKelScript, "kel.script")
Q_LOGGING_CATEGORY(lcKelFactory, "kel.factory")
Q_LOGGING_CATEGORY(lcKelMenu, "kel.menu")
Q_LOGGING_CATEGORY(lcKelKeymap, "kel.keymap")
Q_LOGGING_CATEGORY(lcKelWidgets, "kel.widgets")
Q_LOGGING_CATEGORY(lcKelViews, "kel.views")
Q_LOGGING_CATEGORY(lcKelMedia, "kel.media")
