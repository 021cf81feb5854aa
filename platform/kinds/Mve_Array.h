#ifndef MVE_ARRAY_H
#define MVE_ARRAY_H

#include "Mv_ValueTraits.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <algorithm>
#include <vector>

// An array of values of type T that stores its elements. Listeners read and
// write elements by index and ask for moves (both refused while read-only);
// the owner changes the array through the operations below, each of which
// notifies the listeners.
template <class T>
class Mve_Array : public Mvt_Array<Mvt_SimpleValue<T>>
{
public:
    explicit Mve_Array(const QString& name = QString()) : Mvt_Array<Mvt_SimpleValue<T>>(name) {}
    explicit Mve_Array(const std::vector<T>& values, const QString& name = QString())
        : Mvt_Array<Mvt_SimpleValue<T>>(name), mValues(values) {}

    long size() const { return long(mValues.size()); }
    // By const_reference so that Mve_Array<bool> (a packed std::vector<bool>)
    // hands out a value instead of a reference to a temporary.
    typename std::vector<T>::const_reference at(long index) const { return mValues.at(size_t(index)); }
    const std::vector<T>& values() const { return mValues; }

    // Changes one element; notifies and answers true when it differed.
    bool setAt(long index, const T& value)
    {
        if (index < 0 || index >= size() || Mv_ValueTraits<T>::equal(mValues[size_t(index)], value))
            return false;
        mValues[size_t(index)] = value;
        if (mNotifying)
            this->notifyElementValueChanged(index);
        return true;
    }

    // Inserts values before index (clamped to [0, size]).
    void insert(long index, const std::vector<T>& values)
    {
        if (values.empty())
            return;
        index = std::max(0L, std::min(index, size()));
        mValues.insert(mValues.begin() + index, values.begin(), values.end());
        if (mNotifying)
            this->notifyElementsReplaced(index, index, long(values.size()));
    }
    void insert(long index, const T& value) { insert(index, std::vector<T>{value}); }
    void append(const T& value) { insert(size(), value); }

    // Removes count elements from index (clipped to the array).
    void removeAt(long index, long count = 1)
    {
        if (index < 0 || index >= size() || count < 1)
            return;
        const long end = std::min(size(), index + count);
        mValues.erase(mValues.begin() + index, mValues.begin() + end);
        if (mNotifying)
            this->notifyElementsReplaced(index, end, 0);
    }

    // Moves the element at from to position to; false when either is out
    // of range or they are equal.
    bool move(long from, long to)
    {
        if (from < 0 || from >= size() || to < 0 || to >= size() || from == to)
            return false;
        T value = mValues[size_t(from)];
        mValues.erase(mValues.begin() + from);
        mValues.insert(mValues.begin() + to, value);
        if (mNotifying)
            this->notifyElementsMoved(from, to);
        return true;
    }

    // Replaces the whole contents.
    void setValues(const std::vector<T>& values)
    {
        const long oldSize = size();
        mValues = values;
        if (mNotifying)
            this->notifyElementsReplaced(0, oldSize, size());
    }
    void clear() { setValues(std::vector<T>()); }

    // While off, the operations above change the array silently; an owner
    // that changes several arrays together sends the notifications itself
    // once all of them are consistent.
    void setNotifying(bool on) { mNotifying = on; }
    bool isNotifying() const { return mNotifying; }

    void setReadOnly(bool readOnly) { mReadOnly = readOnly; }
    bool isReadOnly() const { return mReadOnly; }

protected:
    long handleGetSize() override { return size(); }
    bool handleMoveElements(long from, long to) override { return !mReadOnly && move(from, to); }

    bool handleElementMessage(long index, const Mv_MessageInterface& request) override
    {
        if (index < 0 || index >= size())
            return false;
        return Mvt_SimpleValue<T>::handleValueRequest(
            request,
            [this, index](T& v) {
                v = mValues[size_t(index)];
                return true;
            },
            [this, index](const T& v) {
                if (mReadOnly)
                    return int(Mvt_SimpleValue_BaseAPI::kSetRefused);
                return setAt(index, v) ? int(Mvt_SimpleValue_BaseAPI::kSetChanged)
                                       : int(Mvt_SimpleValue_BaseAPI::kSetUnchanged);
            });
    }

private:
    std::vector<T> mValues;
    bool mReadOnly = false;
    bool mNotifying = true;
};

#endif
