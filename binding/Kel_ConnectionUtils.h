#ifndef KEL_CONNECTIONUTILS_H
#define KEL_CONNECTIONUTILS_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <boost/shared_ptr.hpp>

class QObject;

// Connects the bound widgets of a widget tree with one environment.
class KELCORE_EXPORT Kel_ConnectionUtils
{
public:
    Kel_ConnectionUtils() = delete;

    // A bound widget (Kel_WidgetConnectInterface) connects itself and is
    // responsible for its own children; any other object is transparent and
    // its children are connected instead. A null object does nothing.
    // With KEL_REPORT_UNCONNECTED set in the environment, the outermost call
    // then logs (kel.platform) every specification still waiting for its
    // model, once per name, with the published names it probably meant.
    static void recursiveConnect(QObject* object, boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
    // recursiveConnect on each child of object, in order. Container widgets
    // call it from their makeConnections.
    static void recursiveConnectChildren(QObject* object,
                                         boost::shared_ptr<const Mv_ConnectionEnvironment> environment);
};

#endif
