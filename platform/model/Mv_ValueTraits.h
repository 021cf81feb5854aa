#ifndef MV_VALUETRAITS_H
#define MV_VALUETRAITS_H

#include <QPixmap>
#include <type_traits>

// How the model library compares and wraps values of a model's type. The
// defaults fit every type with operator==; types without it say how to
// compare by specialising equal().
template <class T>
struct Mv_ValueTraits
{
    static bool equal(const T& a, const T& b) { return a == b; }
};

// Pixmaps compare by identity of their pixel data.
template <>
struct Mv_ValueTraits<QPixmap>
{
    static bool equal(const QPixmap& a, const QPixmap& b) { return a.cacheKey() == b.cacheKey(); }
};

#endif
