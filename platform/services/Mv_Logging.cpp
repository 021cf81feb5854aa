#include "Mv_Logging_p.h"

Q_LOGGING_CATEGORY(lcKelPlatform, "kel.platform")
