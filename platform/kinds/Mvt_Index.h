#ifndef MVT_INDEX_H
#define MVT_INDEX_H

#include "Mvt_SimpleValue.h"

// The kind of index models: a value model whose value designates an element
// of an array. Listeners address elements through it by name
// ("Clips.name[RowIndexName]", see Mv_ListenerBase).
template <class T>
class Mvt_Index : public Mvt_SimpleValue<T>
{
public:
    explicit Mvt_Index(const QString& name = QString()) : Mvt_SimpleValue<T>(name) {}
};

#endif
