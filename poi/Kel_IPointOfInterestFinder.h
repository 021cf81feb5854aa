#ifndef KEL_IPOINTOFINTERESTFINDER_H
#define KEL_IPOINTOFINTERESTFINDER_H

#include "kelcore_export.h"

#include <QRect>
#include <QString>

// Implemented by widgets that guided help can point at: resolves a dotted
// name path to a rectangle on the screen.
class KELCORE_EXPORT Kel_IPointOfInterestFinder
{
public:
    virtual ~Kel_IPointOfInterestFinder();

    // True when dottedName designates this widget or something inside it;
    // *globalRect (when not null) then receives its rectangle in global
    // screen coordinates.
    virtual bool findPoi(const QString& dottedName, QRect* globalRect) = 0;
};

#endif
