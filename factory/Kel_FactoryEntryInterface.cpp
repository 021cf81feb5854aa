#include "Kel_FactoryEntryInterface.h"

#include "Kel_QtWidgetFactoryRegistry.h"

Kel_FactoryEntryInterface::~Kel_FactoryEntryInterface()
{
    // The table does not own its entries; never leave it pointing at a dead one.
    Kel_QtWidgetFactoryRegistry::unregisterEntry(this);
}
