#ifndef KEL_WIDGETCONNECTINTERFACE_H
#define KEL_WIDGETCONNECTINTERFACE_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"

#include <boost/shared_ptr.hpp>
#include <typeinfo>

// Mixed into every Qt widget of the library that is bound to models. The
// owner of a widget tree connects it with one environment through
// Kel_ConnectionUtils::recursiveConnect, which calls makeConnections.
class KELCORE_EXPORT Kel_WidgetConnectInterface
{
public:
    Kel_WidgetConnectInterface() = default;
    Kel_WidgetConnectInterface(const Kel_WidgetConnectInterface&) = default;
    Kel_WidgetConnectInterface& operator=(const Kel_WidgetConnectInterface&) = default;
    virtual ~Kel_WidgetConnectInterface();

    // The type of this interface itself, whatever the widget's class.
    virtual const std::type_info& getTypeInfo() const;

    // Connects the widget's listeners (and, for container widgets, their
    // children) in environment. May be called again with another environment.
    virtual void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) = 0;
};

#endif
