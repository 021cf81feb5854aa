#ifndef SORTEDVALUELIST_H
#define SORTEDVALUELIST_H

#include <algorithm>
#include <vector>

// A set of values kept sorted ascending without duplicates; the value type of
// published selections. first(), last() and next() answer -1 (converted to T)
// when there is no such element.
template <class T>
class SortedValueList
{
public:
    typedef typename std::vector<T>::const_iterator const_iterator;

    void clear() { mValues.clear(); }
    int size() const { return int(mValues.size()); }
    bool isEmpty() const { return mValues.empty(); }
    bool contains(const T& v) const { return std::binary_search(mValues.begin(), mValues.end(), v); }

    // Inserts v in order; false when it was already there.
    bool add(const T& v)
    {
        auto it = std::lower_bound(mValues.begin(), mValues.end(), v);
        if (it != mValues.end() && !(v < *it))
            return false;
        mValues.insert(it, v);
        return true;
    }

    // Removes v; false when it was not there.
    bool remove(const T& v)
    {
        auto it = std::lower_bound(mValues.begin(), mValues.end(), v);
        if (it == mValues.end() || v < *it)
            return false;
        mValues.erase(it);
        return true;
    }

    T first() const { return mValues.empty() ? T(-1) : mValues.front(); }
    T last() const { return mValues.empty() ? T(-1) : mValues.back(); }
    // The smallest element greater than v, or -1.
    T next(const T& v) const
    {
        auto it = std::upper_bound(mValues.begin(), mValues.end(), v);
        return it == mValues.end() ? T(-1) : *it;
    }
    T at(int i) const { return mValues.at(size_t(i)); }

    const_iterator begin() const { return mValues.begin(); }
    const_iterator end() const { return mValues.end(); }

    bool operator==(const SortedValueList& o) const { return mValues == o.mValues; }
    bool operator!=(const SortedValueList& o) const { return mValues != o.mValues; }

private:
    std::vector<T> mValues;
};

#endif
