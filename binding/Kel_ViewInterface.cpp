#include "Kel_ViewInterface.h"

namespace {

Kel_ViewInterface::DestructionObserver sDestructionObserver = nullptr;

} // namespace

Kel_ViewInterface::~Kel_ViewInterface()
{
    if (sDestructionObserver)
        sDestructionObserver(this);
}

void Kel_ViewInterface::setDestructionObserver(DestructionObserver observer)
{
    sDestructionObserver = observer;
}
