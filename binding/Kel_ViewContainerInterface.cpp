#include "Kel_ViewContainerInterface.h"

Kel_ViewContainerInterface::~Kel_ViewContainerInterface() = default;
