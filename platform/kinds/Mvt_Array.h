#ifndef MVT_ARRAY_H
#define MVT_ARRAY_H

#include "Mvt_Container_API.h"

// The kind of arrays: containers of Element models indexed from 0.
// Mvt_Array<Mvt_SimpleValue<QString>> is an array of strings,
// Mvt_Array<Mvt_Action<void()>> an array of actions.
template <class Element>
class Mvt_Array : public Mvt_Container_API<long, Element>
{
public:
    explicit Mvt_Array(const QString& name = QString()) : Mvt_Container_API<long, Element>(name) {}
};

#endif
