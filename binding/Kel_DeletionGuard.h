#ifndef KEL_DELETIONGUARD_H
#define KEL_DELETIONGUARD_H

#include "kelcore_export.h"

// Tells a member function whether its object was destroyed by something it
// called (a signal, an event, a model notification), for the price of two
// stores: a QPointer would take and drop a shared reference count in
// another block of memory on every call. The object holds one guard, as a
// member; a function that must know puts a Watch on its stack:
//
//   const Kel_DeletionGuard::Watch watch(mGuard);
//   setChecked(checked);              // may delete this
//   if (watch.deleted()) return;
class KELCORE_EXPORT Kel_DeletionGuard
{
public:
    class Watch
    {
    public:
        explicit Watch(Kel_DeletionGuard& guard) : mGuardP(&guard), mOuterP(guard.mTopP) { guard.mTopP = this; }
        ~Watch()
        {
            if (!mDeleted)
                mGuardP->mTopP = mOuterP;
        }
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

        bool deleted() const { return mDeleted; }

    private:
        friend class Kel_DeletionGuard;
        Kel_DeletionGuard* mGuardP;
        Watch* mOuterP; // the watch of an enclosing call on the same object
        bool mDeleted = false;
    };

    Kel_DeletionGuard() = default;
    // Every watch still on a stack learns that the object is gone.
    ~Kel_DeletionGuard()
    {
        for (Watch* watch = mTopP; watch; watch = watch->mOuterP)
            watch->mDeleted = true;
    }
    Kel_DeletionGuard(const Kel_DeletionGuard&) = delete;
    Kel_DeletionGuard& operator=(const Kel_DeletionGuard&) = delete;

private:
    Watch* mTopP = nullptr;
};

#endif
