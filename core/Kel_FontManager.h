#ifndef KEL_FONTMANAGER_H
#define KEL_FONTMANAGER_H

#include "kelcore_export.h"

#include <QFont>
#include <QString>

// The process-wide table of named fonts. Keys are dotted names made of the
// settings prefix, a class name, an optional element name and the word
// "Font", e.g. "FontSettings.Kel_Header.Font". The table lives as long as
// the library and is never cleared.
class KELCORE_EXPORT Kel_FontManager
{
public:
    // Prefix of every font key, and the settings prefix read by loadSettingsFile.
    static const char* const kSettingsPrefix;

    Kel_FontManager() = delete;

    static bool hasFont(const QString& key);
    // The font stored under key. An unknown key is added with a default
    // QFont, which is returned; ask hasFont first to keep a default of your own.
    static QFont getFont(const QString& key);
    // Inserts or replaces.
    static void setFont(const QString& key, QFont font);
    // Reads font entries ("family[,pointSize[,weight]]") below the settings
    // root "Windows" of an XML settings file; a missing file adds nothing.
    static void loadSettingsFile(const QString& path);
};

#endif
