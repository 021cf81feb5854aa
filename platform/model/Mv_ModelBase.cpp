#include "Mv_ModelBase.h"

#include "Mv_Announcement.h"
#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"
#include "Mv_Logging_p.h"

namespace {

// Active guards, innermost first. The model library is used from one
// thread; guards live on its stack, so they come and go in order.
Mv_ModelBase::Guard* gGuards = nullptr;

} // namespace

Mv_ModelBase::Mv_ModelBase(const QString& name)
    : mName(name), mEntryP(nullptr)
{
}

Mv_ModelBase::~Mv_ModelBase()
{
    for (Guard* guard = gGuards; guard; guard = guard->mOuterP) {
        if (guard->mModelP == this)
            guard->mModelP = nullptr;
    }
    // Not the virtual unpublishQuietly: a derived model has already taken
    // its parts out in its own destructor.
    Mv_Announcement announcement;
    withdraw(announcement);
    announcement.run();
}

void Mv_ModelBase::SetConnectionName(const QString& name)
{
    if (name == mName)
        return;
    if (!mEntryP) {
        mName = name;
        return;
    }
    Mv_ConnectionDict* dict = dictionary();
    Mv_Announcement announcement;
    unpublishQuietly(announcement);
    mName = name;
    publishQuietly(dict, announcement);
    announcement.run(); // may destroy this
}

bool Mv_ModelBase::Publish(Mv_ConnectionDict* dict)
{
    Mv_Announcement announcement;
    const bool published = publishQuietly(dict, announcement);
    announcement.run(); // may destroy this
    return published;
}

void Mv_ModelBase::UnPublish()
{
    Mv_Announcement announcement;
    unpublishQuietly(announcement);
    announcement.run();
}

bool Mv_ModelBase::publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement)
{
    if (!dict)
        dict = Mv_ConnectionDict::Singleton();
    if (mName.isEmpty()) {
        qCDebug(lcKelPlatform, "Mv_ModelBase::Publish - a model without a name cannot be published");
        return false;
    }
    if (mEntryP) {
        if (mEntryP->dict() == dict && mEntryP->name == mName)
            return true;
        withdraw(announcement);
    }
    Mv_DictEntry* entry = dict->commitAttach(mName, this);
    if (!entry) {
        if (dict->mDying)
            qCDebug(lcKelPlatform, "Mv_ModelBase::Publish - %s: the dictionary is being destroyed", qPrintable(mName));
        else
            qCWarning(lcKelPlatform, "Mv_ModelBase::Publish - the name %s is already published", qPrintable(mName));
        return false;
    }
    mEntryP = entry;
    announcement.add(entry);
    return true;
}

void Mv_ModelBase::unpublishQuietly(Mv_Announcement& announcement)
{
    withdraw(announcement);
}

void Mv_ModelBase::withdraw(Mv_Announcement& announcement)
{
    if (!mEntryP)
        return;
    Mv_DictEntry* entry = mEntryP;
    mEntryP = nullptr;
    Mv_ConnectionDict::commitDetach(entry);
    announcement.add(entry);
}

Mv_ConnectionDict* Mv_ModelBase::dictionary() const
{
    return mEntryP ? mEntryP->dict() : nullptr;
}

int Mv_ModelBase::listenerCount() const
{
    return mEntryP ? mEntryP->listenerCount : 0;
}

void Mv_ModelBase::SendToListeners(const Mv_MessageInterface& message)
{
    if (mEntryP)
        Mv_ConnectionDict::deliver(mEntryP, message);
}

bool Mv_ModelBase::ReceiveMessage(const Mv_MessageInterface& message)
{
    return callReceiveMessageCB(message);
}

Mv_ModelBase::Guard::Guard(Mv_ModelBase* model)
    : mModelP(model), mOuterP(gGuards)
{
    gGuards = this;
}

Mv_ModelBase::Guard::~Guard()
{
    gGuards = mOuterP;
}
