#include "Mv_MessageInterface.h"

Mv_MessageInterface::~Mv_MessageInterface() = default;
