#include "Kel_ConnectionUtils.h"

#include "Kel_WidgetConnectInterface.h"

#include <QObject>
#include <QObjectList>
#include <QPointer>

void Kel_ConnectionUtils::recursiveConnect(QObject* object,
                                           boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!object)
        return;
    if (auto* bound = dynamic_cast<Kel_WidgetConnectInterface*>(object)) {
        bound->makeConnections(environment);
        return;
    }
    recursiveConnectChildren(object, environment);
}

void Kel_ConnectionUtils::recursiveConnectChildren(QObject* object,
                                                   boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!object)
        return;
    // Connecting may create or delete children (a model notification can
    // rebuild part of a form): walk a snapshot and skip children gone since.
    const QObjectList children = object->children();
    QList<QPointer<QObject>> snapshot;
    snapshot.reserve(children.size());
    for (QObject* child : children)
        snapshot.append(child);
    for (const QPointer<QObject>& child : snapshot) {
        if (child)
            recursiveConnect(child.data(), environment);
    }
}
