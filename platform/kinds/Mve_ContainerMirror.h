#ifndef MVE_CONTAINERMIRROR_H
#define MVE_CONTAINERMIRROR_H

#include "kelplatform_export.h"

#include "Mvt_ArrayContainer.h"

// A container that shows, under a name of its own, the container published
// under another name in the same dictionary (its source): it answers the
// source's size, tells its listeners the source's replaced, moved and
// value-changed notifications, and passes a listener's move request on to
// the source. Used where readers expect the container part of an array under
// a second name ("Columns.sortedVisibleColumns.arrayMetaData" beside
// "Columns.sortedVisibleColumns"). While the source is absent the mirror is
// empty; the source's arrival or departure is told as a replacement of all
// elements.
class KELPLATFORM_EXPORT Mve_ContainerMirror : public Mvt_ArrayContainer
{
public:
    explicit Mve_ContainerMirror(const QString& sourceName = QString(), const QString& name = QString());
    ~Mve_ContainerMirror() override;

    // The source's name, looked up in the dictionary the mirror is published
    // in; a change while published follows at once.
    void setSourceName(const QString& sourceName);
    QString sourceName() const { return mSourceName; }

    bool publishQuietly(Mv_ConnectionDict* dict, Mv_Announcement& announcement) override;
    void unpublishQuietly(Mv_Announcement& announcement) override;

protected:
    long handleGetSize() override { return mSource.size(); }
    bool handleMoveElements(long from, long to) override { return mSource.requestMove(from, to); }

private:
    void connectSource();
    void handleSourceMessage(const Mv_MessageInterface& message);

    QString mSourceName;
    Mvt_ArrayContainer::Listener mSource;
    // The size the mirror's listeners last heard of.
    long mToldSize = 0;
};

#endif
