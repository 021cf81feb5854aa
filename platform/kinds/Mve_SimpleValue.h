#ifndef MVE_SIMPLEVALUE_H
#define MVE_SIMPLEVALUE_H

#include "Mv_ValueTraits.h"
#include "Mvt_SimpleValue.h"

#include <boost/function.hpp>
#include <memory>
#include <type_traits>
#include <typeinfo>

// A value model that stores its value. Kind is the model kind it presents
// (Mvt_SimpleValue<T>, or a kind derived from it such as Mvt_Index<T>).
// Sets from listeners are refused (status 3) while the model is read-only or
// when the validator rejects the value; setValue() from the owner always
// stores. Listeners are told of every change.
//
// Listeners read and write a model of exactly this class (for bool, long,
// double, QString and Mv_Timecode) directly, without building and
// dispatching a message, as long as nothing could tell the difference: a
// subclass, an owner's receive callback or (for sets) a validator sends
// them back to messages (see plainModel()).
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

    // The model when model is one that listeners may read and write directly
    // (getValue(), setFromListener()); else null. The fast path must not be
    // taken for a subclass, which may answer requests itself, nor for a model
    // whose owner has a receive callback: publishing finds out (once, with
    // typeid) and setReceiveMessageCB withdraws it.
    static Mve_SimpleValue* plainModel(Mv_ModelBase* model)
    {
        if constexpr (kPlainKind == 0)
            return nullptr;
        else
            return model && model->plainKind() == kPlainKind ? static_cast<Mve_SimpleValue*>(model) : nullptr;
    }

    // What a set request does: refused while read-only or when the validator
    // rejects the value, else a SetStatus telling whether it changed.
    int setFromListener(const T& value)
    {
        if (mReadOnly || (hasValidator() && !(*mValidatorP)(value)))
            return Mvt_SimpleValue_BaseAPI::kSetRefused;
        return setValue(value) ? Mvt_SimpleValue_BaseAPI::kSetChanged : Mvt_SimpleValue_BaseAPI::kSetUnchanged;
    }

    bool publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement) override
    {
        // Only now is the object whole, so that typeid tells a subclass.
        const bool plain = kPlainKind != 0 && typeid(*this) == typeid(Mve_SimpleValue) && !this->hasReceiveMessageCB();
        this->setPlainKind(plain ? kPlainKind : 0);
        return Kind::publishQuietly(dict, announcement);
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
    bool hasValidator() const { return mValidatorP && !mValidatorP->empty(); }

protected:
    bool handleGet(T& value) override
    {
        value = mValue;
        return true;
    }
    int handleSet(const T& value) override { return setFromListener(value); }

private:
    // The value kind that plainKind() shows for a plain model of this
    // class; 0 for types and kinds that always go through messages.
    static constexpr quint8 kPlainKind =
        std::is_same<Kind, Mvt_SimpleValue<T>>::value ? quint8(Mv_VariantImpl::ScalarOf<T>::value) : quint8(0);

    // First, so that it fills the padding at the end of Mv_ModelBase.
    bool mReadOnly = false;
    T mValue;
    // Held by pointer, as few models have one (see Mv_ModelBase's callback).
    std::unique_ptr<Validator> mValidatorP;
};

#endif
