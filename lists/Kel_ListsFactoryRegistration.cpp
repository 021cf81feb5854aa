// Registers the list widget classes with the widget factory when the
// library is loaded, so that forms can name them.
#include "Kel_SimpleFactoryEntry.h"

#include "Kel_Placard.h"

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
    add<Kel_Placard, false>("Kel_Placard", "Placard widget for place-holding");
}

const struct Registration
{
    Registration() { registerListWidgets(); }
} registration;

} // namespace
