#include "Kel_WidgetConnectInterface.h"

Kel_WidgetConnectInterface::~Kel_WidgetConnectInterface() = default;

const std::type_info& Kel_WidgetConnectInterface::getTypeInfo() const
{
    return typeid(Kel_WidgetConnectInterface);
}
