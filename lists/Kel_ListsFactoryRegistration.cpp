// Registers the list widgets with the widget factory when the library is
// loaded, so that forms can name them. The factory cannot know this folder,
// so the lists register themselves from here.
#include "Kel_SimpleFactoryEntry.h"

#include "Kel_ListViewWidget.h"
#include "Kel_ListWithColumnsWidget.h"

namespace {

// One line per class.
void registerListWidgets()
{
    Kel_SimpleFactoryEntry<Kel_ListViewWidget, false>::registerClass("Kel_ListViewWidget", "List of the rows of an array model, with published selection");
    Kel_SimpleFactoryEntry<Kel_ListWithColumnsWidget, false>::registerClass("Kel_ListWithColumnsWidget", "List of the rows of an array model, one cell per column of a column data model");
}

const struct Registration
{
    Registration() { registerListWidgets(); }
} registration;

} // namespace
