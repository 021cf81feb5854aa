#ifndef MVE_INDEX_H
#define MVE_INDEX_H

#include "Mve_SimpleValue.h"
#include "Mvt_Index.h"

// An index model that stores its index; -1 (no element) by default.
template <class T>
class Mve_Index : public Mve_SimpleValue<T, Mvt_Index<T>>
{
public:
    explicit Mve_Index(const T& initial = T(-1), const QString& name = QString())
        : Mve_SimpleValue<T, Mvt_Index<T>>(initial, name) {}
};

#endif
