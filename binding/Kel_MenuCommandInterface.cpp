#include "Kel_MenuCommandInterface.h"

Kel_MenuCommandInterface::~Kel_MenuCommandInterface() = default;
