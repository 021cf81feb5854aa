// Registers the list widgets with the widget factory when the library is
// loaded, so that forms can name them. The factory cannot know this folder,
// so the lists register themselves from here.
#include "Kel_SimpleFactoryEntry.h"

#include "Kel_ListViewWidget.h"

namespace {

// The description is both the tool tip and the what's-this text. The entry
// registers itself and lives until the process ends.
template <class T, bool Container>
void add(const char* key, const char* description)
{
    new Kel_SimpleFactoryEntry<T, Container>(QString::fromLatin1(key), QString::fromLatin1(description), QString());
}

// One line per class.
void registerListWidgets()
{
    add<Kel_ListViewWidget, false>("Kel_ListViewWidget", "List of the rows of an array model, with published selection");
}

const struct Registration
{
    Registration() { registerListWidgets(); }
} registration;

} // namespace
