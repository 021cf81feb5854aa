#ifndef OST_DIRPATHS_H
#define OST_DIRPATHS_H

#include "kelplatform_export.h"

#include <QString>

// Where the application lives and keeps its files. Every operating-system
// detail about locations stays behind this class.
class KELPLATFORM_EXPORT Ost_DirPaths
{
public:
    // Fixed underlying type: callers pass kinds as plain numbers, and an
    // unknown number must be a defined value that GetPath can refuse.
    enum DirPath_t : int { kExecutableDir = 0, kUserDataDir = 1, kTempDir = 2, kResourceDir = 3 };

    // Stores the product name used in titles and folder names; productName
    // is Latin-1 text. May be called again; a null or empty name goes back
    // to the default.
    static void Initialize(const char* productName);
    // The stored name; before Initialize the application name, else "KelCore".
    static QString GetProductName();
    // File name (no folder) of the running executable; empty if unknown.
    static QString GetApplicationExeName();
    // The folder of the given kind, ending with "/"; with create the folder is
    // made when missing. kResourceDir honours the KELCORE_RESOURCE_DIR
    // environment variable, else it is <executable folder>/resources/.
    // Empty for an unknown kind.
    static QString GetPath(DirPath_t kind, bool create);
};

#endif
