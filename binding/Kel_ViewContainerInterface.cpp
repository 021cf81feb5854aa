#include "Kel_ViewContainerInterface.h"

Kel_ViewContainerInterface::~Kel_ViewContainerInterface() = default;

bool Kel_ViewContainerInterface::releaseView(Kel_ViewInterface*)
{
    return false;
}
