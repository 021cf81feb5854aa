#include "Kel_ConnectionUtils.h"

#include "Kel_WidgetConnectInterface.h"
#include "Mv_Diagnostics.h"

#include <QObject>
#include <QObjectList>
#include <QPointer>

namespace {

// KEL_REPORT_UNCONNECTED set (to anything): once a whole tree is connected,
// log every specification still waiting for its model, with the names it
// probably meant. Looked up once per tree, which is nothing next to
// connecting the tree.
bool reportUnconnected()
{
    return qEnvironmentVariableIsSet("KEL_REPORT_UNCONNECTED");
}

int gConnectDepth = 0; // recursiveConnect calls in progress (the GUI thread's)

} // namespace

void Kel_ConnectionUtils::recursiveConnect(QObject* object,
                                           boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!object)
        return;
    ++gConnectDepth;
    if (auto* bound = dynamic_cast<Kel_WidgetConnectInterface*>(object))
        bound->makeConnections(environment);
    else
        recursiveConnectChildren(object, environment);
    if (--gConnectDepth == 0 && reportUnconnected())
        Mv_Diagnostics::reportUnconnected(environment ? environment->getDictionary() : nullptr);
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
