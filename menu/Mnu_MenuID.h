#ifndef MNU_MENUID_H
#define MNU_MENUID_H

#include "kelcore_export.h"

#include <QString>
#include <QtGlobal>

// Identifies one realised menu item. The value is opaque to the menu model;
// the Qt realisation stores the item's QAction pointer in it. 0 is invalid.
class KELCORE_EXPORT Mnu_MenuID
{
public:
    Mnu_MenuID() : mValue(nullptr) {}
    explicit Mnu_MenuID(void* value) : mValue(value) {}

    bool IsValid() const { return mValue != nullptr; }
    void* getValue() const { return mValue; }

    bool operator==(const Mnu_MenuID& other) const { return mValue == other.mValue; }
    bool operator!=(const Mnu_MenuID& other) const { return mValue != other.mValue; }
    // Plain unsigned order of the stored values, so identifiers can key maps.
    bool operator<(const Mnu_MenuID& other) const
    {
        return reinterpret_cast<quintptr>(mValue) < reinterpret_cast<quintptr>(other.mValue);
    }

    // One debug line with this object's address and the stored value.
    void dump(const QString& prefix) const;

private:
    void* mValue;
};

#endif
