#include "Kel_ConnectionUtils.h"

#include "Kel_WidgetConnectInterface.h"
#include "Mv_Diagnostics.h"

#include <QHash>
#include <QObject>
#include <QObjectList>
#include <QPointer>

#include <cstddef>
#include <cstdint>
#include <typeinfo>
#include <vector>

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

// The bound-widget part of object, or null: what a dynamic cast answers,
// remembered per dynamic type. A cross cast from QObject searches the whole
// class hierarchy, comparing type names (several hundred instructions),
// and a form repeats a handful of classes hundreds of times; where the
// interface lies in an object depends only on the object's class (the
// library mixes it in without virtual inheritance).
Kel_WidgetConnectInterface* boundPart(QObject* object)
{
    static const std::ptrdiff_t kNotBound = PTRDIFF_MIN;
    static QHash<const std::type_info*, std::ptrdiff_t> offsets; // GUI thread only, like the widgets
    const std::type_info* type = &typeid(*object);
    auto known = offsets.constFind(type);
    if (known == offsets.constEnd()) {
        auto* bound = dynamic_cast<Kel_WidgetConnectInterface*>(object);
        const std::ptrdiff_t offset =
            bound ? reinterpret_cast<char*>(bound) - reinterpret_cast<char*>(object) : kNotBound;
        known = offsets.insert(type, offset);
    }
    if (known.value() == kNotBound)
        return nullptr;
    return reinterpret_cast<Kel_WidgetConnectInterface*>(reinterpret_cast<char*>(object) + known.value());
}

} // namespace

void Kel_ConnectionUtils::recursiveConnect(QObject* object,
                                           boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!object)
        return;
    ++gConnectDepth;
    if (Kel_WidgetConnectInterface* bound = boundPart(object))
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
    const QObjectList& children = object->children();
    if (children.isEmpty())
        return;
    const std::vector<QPointer<QObject>> snapshot(children.begin(), children.end());
    for (const QPointer<QObject>& child : snapshot) {
        if (child)
            recursiveConnect(child.data(), environment);
    }
}
