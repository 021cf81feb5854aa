#ifndef KEL_WHATSTHIS_H
#define KEL_WHATSTHIS_H

#include "kelcore_export.h"

#include <QString>

class QWidget;

// What's-this help for the library's widgets. Every widget registers the
// name under which help describes it (its class name, usually); help
// tools read it back with whatsThisName. The registered name is never
// shown to users.
class KELCORE_EXPORT Kel_WhatsThis
{
public:
    Kel_WhatsThis() = delete;

    // Stores name as the widget's what's-this name (the dynamic property
    // "kelWhatsThisName"), under which help looks the widget up. The
    // widget's what's-this text, which Qt shows to users, is left alone. A
    // derived class may register again; its name wins. A null widget or
    // name does nothing.
    static void setBestWhatsThisName(QWidget* widget, const char* name);
    // The name stored by setBestWhatsThisName; empty when none.
    static QString whatsThisName(const QWidget* widget);
};

#endif
