#ifndef KEL_KEYBOARDLANGUAGE_H
#define KEL_KEYBOARDLANGUAGE_H

#include "kelcore_export.h"

#include <QLocale>
#include <QMap>
#include <QString>

// The operating system's answers about keyboard languages, as Windows
// primary language numbers (7 German, 9 English, 12 French, ...). On Windows
// they come from the keyboard layout and the locale tables; elsewhere from
// the input method's locale and a built-in table of the same numbers.
class KELCORE_EXPORT Kel_KeyboardLanguage
{
public:
    // The primary language of the keyboard layout in use (0 when unknown),
    // or the override when one is set.
    static int currentLanguage();
    // Makes currentLanguage() answer lang; a negative lang removes the
    // override. Meant for tests and for applications that pick the language.
    static void setCurrentLanguageOverride(int lang);
    static int currentLanguageOverride();

    // English language name -> primary language number, for the numbers 1 to
    // 126 except 9 that the system knows ("German" -> 7, "French" -> 12).
    static QMap<QString, int> languageNames();

    // The primary language number of locale's language; 0 when it has none.
    static int languageOfLocale(const QLocale& locale);
};

#endif
