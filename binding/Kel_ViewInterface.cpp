#include "Kel_ViewInterface.h"

Kel_ViewInterface::~Kel_ViewInterface() = default;
