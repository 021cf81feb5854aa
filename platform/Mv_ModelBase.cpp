#include "Mv_ModelBase.h"

#include "Mv_ConnectionDict.h"
#include "Mv_ConnectionDict_p.h"

#include <QDebug>

Mv_ModelBase::Mv_ModelBase(const QString& name)
    : mName(name), mEntryP(nullptr), mDictP(nullptr)
{
}

Mv_ModelBase::~Mv_ModelBase()
{
    unpublish();
}

void Mv_ModelBase::SetConnectionName(const QString& name)
{
    if (name == mName)
        return;
    if (!mEntryP) {
        mName = name;
        return;
    }
    Mv_ConnectionDict* dict = mDictP;
    UnPublish();
    mName = name;
    Publish(dict);
}

bool Mv_ModelBase::Publish(Mv_ConnectionDict* dict)
{
    if (!dict)
        dict = Mv_ConnectionDict::Singleton();
    if (mName.isEmpty()) {
        qDebug("Mv_ModelBase::Publish - a model without a name cannot be published");
        return false;
    }
    if (mEntryP) {
        if (mDictP == dict && mEntryP->name == mName)
            return true;
        UnPublish();
    }
    Mv_DictEntry* entry = dict->acquire(mName);
    if (entry->model) {
        qDebug("Mv_ModelBase::Publish - the name %s is already published", qPrintable(mName));
        dict->releaseIfUnused(entry);
        return false;
    }
    mEntryP = entry;
    mDictP = dict;
    dict->attachModel(entry, this);
    return true;
}

void Mv_ModelBase::UnPublish()
{
    unpublish();
}

void Mv_ModelBase::unpublish()
{
    if (!mEntryP)
        return;
    Mv_DictEntry* entry = mEntryP;
    Mv_ConnectionDict* dict = mDictP;
    mEntryP = nullptr;
    mDictP = nullptr;
    dict->detachModel(entry);
}

int Mv_ModelBase::listenerCount() const
{
    return mEntryP ? mEntryP->listenerCount : 0;
}

void Mv_ModelBase::SendToListeners(const Mv_MessageInterface& message)
{
    if (mEntryP)
        mDictP->deliver(mEntryP, message);
}

bool Mv_ModelBase::ReceiveMessage(const Mv_MessageInterface& message)
{
    return callReceiveMessageCB(message);
}
