#include "Mve_ContainerMirror.h"

#include "Mv_Announcement.h"
#include "Mvt_Root_Notifications.h"

Mve_ContainerMirror::Mve_ContainerMirror(const QString& sourceName, const QString& name)
    : Mvt_ArrayContainer(name), mSourceName(sourceName)
{
    mSource.setReceiveMessageCB([this](const Mv_MessageInterface& m) { handleSourceMessage(m); });
}

Mve_ContainerMirror::~Mve_ContainerMirror()
{
    // Leave the dictionary before the source listener goes, so that nobody
    // asks a half-destroyed mirror for its size.
    Mv_Announcement announcement;
    unpublishQuietly(announcement);
    announcement.run();
}

void Mve_ContainerMirror::setSourceName(const QString& sourceName)
{
    if (sourceName == mSourceName)
        return;
    mSourceName = sourceName;
    connectSource();
}

void Mve_ContainerMirror::connectSource()
{
    if (isPublished() && !mSourceName.isEmpty()) {
        mSource.SetConnectionName(mSourceName);
        mSource.connect(Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::ConstPtr(), dictionary()));
    } else {
        mSource.ClearConnection();
        handleSourceMessage(Mvt_Root_Notifications::MsgConnectedChanged(false));
    }
}

bool Mve_ContainerMirror::publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement)
{
    const bool published = Mvt_ArrayContainer::publishQuietly(dict, announcement);
    connectSource();
    return published;
}

void Mve_ContainerMirror::unpublishQuietly(Mv_Announcement& announcement)
{
    Mvt_ArrayContainer::unpublishQuietly(announcement);
    mSource.ClearConnection();
    mToldSize = 0;
}

void Mve_ContainerMirror::handleSourceMessage(const Mv_MessageInterface& message)
{
    if (const auto* r = message.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
        mToldSize = r->newSize();
        SendToListeners(message);
    } else if (message.is<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()
               || message.is<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>()) {
        SendToListeners(message);
    } else if (message.is<Mvt_Root_Notifications::MsgConnectedChanged>()) {
        // The source came or went: everything the listeners knew is replaced.
        const long size = mSource.size();
        if (size != mToldSize) {
            const long old = mToldSize;
            mToldSize = size;
            notifyElementsReplaced(0, old, size);
        }
    }
}
