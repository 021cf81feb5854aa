#ifndef MVE_SIMPLEVALUE_H
#define MVE_SIMPLEVALUE_H

#include "Mv_ValueTraits.h"
#include "Mvt_SimpleValue.h"

#include <boost/function.hpp>
#include <memory>

// A value model that stores its value. Kind is the model kind it presents
// (Mvt_SimpleValue<T>, or a kind derived from it such as Mvt_Index<T>).
// Sets from listeners are refused (status 3) while the model is read-only or
// when the validator rejects the value; setValue() from the owner always
// stores. Listeners are told of every change.
template <class T, class Kind = Mvt_SimpleValue<T>>
class Mve_SimpleValue : public Kind
{
public:
    typedef boost::function<bool(const T&)> Validator;

    explicit Mve_SimpleValue(const T& initial = T(), const QString& name = QString())
        : Kind(name), mValue(initial) {}

    const T& getValue() const { return mValue; }

    // Stores the value and notifies the listeners when it differs; true
    // when it changed.
    bool setValue(const T& value)
    {
        if (Mv_ValueTraits<T>::equal(value, mValue))
            return false;
        mValue = value;
        this->notifyValueChanged();
        return true;
    }

    // Stores the value without telling anyone; true when it changed. For an
    // owner that moves an index model for a moment and puts it back (a list
    // shows each row by moving its current-row index while it paints): reads
    // through the index see the new value at once, while element listeners
    // keep hearing about the element of the last notified value. Use
    // setValue for a move that others must follow.
    bool setValueQuietly(const T& value)
    {
        if (Mv_ValueTraits<T>::equal(value, mValue))
            return false;
        mValue = value;
        return true;
    }

    void setReadOnly(bool readOnly) { mReadOnly = readOnly; }
    bool isReadOnly() const { return mReadOnly; }
    void setValidator(const Validator& validator)
    {
        if (mValidatorP)
            *mValidatorP = validator;
        else if (!validator.empty())
            mValidatorP.reset(new Validator(validator));
    }

protected:
    bool handleGet(T& value) override
    {
        value = mValue;
        return true;
    }
    int handleSet(const T& value) override
    {
        if (mReadOnly || (mValidatorP && !mValidatorP->empty() && !(*mValidatorP)(value)))
            return Mvt_SimpleValue_BaseAPI::kSetRefused;
        return setValue(value) ? Mvt_SimpleValue_BaseAPI::kSetChanged : Mvt_SimpleValue_BaseAPI::kSetUnchanged;
    }

private:
    T mValue;
    bool mReadOnly = false;
    // Held by pointer, as few models have one (see Mv_ModelBase's callback).
    std::unique_ptr<Validator> mValidatorP;
};

#endif
