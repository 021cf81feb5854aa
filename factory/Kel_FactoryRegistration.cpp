// Registers the library's widget classes with the widget factory when the
// library is loaded, so that forms can name them.
#include "Kel_SimpleFactoryEntry.h"

#include "Kel_ActionButton.h"
#include "Kel_ActionDialog.h"
#include "Kel_AutoSizeTextEdit.h"
#include "Kel_Bitmap.h"
#include "Kel_Busy.h"
#include "Kel_CheckBox.h"
#include "Kel_CheckBoxList.h"
#include "Kel_Double.h"
#include "Kel_DropdownList.h"
#include "Kel_EnhancedCheckBoxList.h"
#include "Kel_ImageMappedButtons.h"
#include "Kel_ImmediateActionButton.h"
#include "Kel_KeyEdit.h"
#include "Kel_Label.h"
#include "Kel_LineEdit.h"
#include "Kel_LongLabel.h"
#include "Kel_PlayButton.h"
#include "Kel_PopupDisplay.h"
#include "Kel_RadioGroupListBox.h"
#include "Kel_RevealBody.h"
#include "Kel_RevealButton.h"
#include "Kel_RevealHeader.h"
#include "Kel_ScrollView.h"
#include "Kel_Slider.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_TCLabel.h"
#include "Kel_TextEdit.h"

namespace {

// The description is both the tool tip and the what's-this text. The entry
// registers itself and lives until the process ends.
template <class T, bool Container>
void add(const char* key, const char* description)
{
    new Kel_SimpleFactoryEntry<T, Container>(QString::fromLatin1(key), QString::fromLatin1(description), QString());
}

// One line per class, in this order. The commented lines are the classes
// that forms may name once they exist in the library; a new class takes the
// place of its comment.
void registerLibraryWidgets()
{
    add<Kel_ActionButton, false>("Kel_ActionButton", "Action model connected button");
    add<Kel_ActionDialog, false>("Kel_ActionDialog", "Dialog box with action script on accept");
    add<Kel_AutoSizeTextEdit, false>("Kel_AutoSizeTextEdit",
        "Text edit that grows with its text, for the in-place editors");
    add<Kel_Bitmap, false>("Kel_Bitmap", "model driven bitmap");
    add<Kel_Busy, false>("Kel_Busy", "Animated busy indicator connected to Mvt_bool");
    add<Kel_CheckBox, false>("Kel_CheckBox", "Model/View connected check box control");
    add<Kel_CheckBoxList, false>("Kel_CheckBoxList", "List of checkboxes determined through model/view connections");
    add<Kel_Double, false>("Kel_Double", "A Widget to display a double value");
    add<Kel_DropdownList, false>("Kel_DropdownList", "model driven drop down item list");
    add<Kel_EnhancedCheckBoxList, false>("Kel_EnhancedCheckBoxList",
        "List of checkboxes determined through model/view connections, with additional controls");
    add<Kel_ImageMappedButtons, false>("Kel_ImageMappedButtons", "model driven collection of non-rectangular buttons");
    add<Kel_ImmediateActionButton, false>("Kel_ImmediateActionButton", "Immediate action button for transport control");
    add<Kel_Label, false>("Kel_Label", "QLabel with Model/View connection for label text");
    add<Kel_KeyEdit, false>("Kel_KeyEdit", "QLineEdit that handles key sequences");
    add<Kel_LineEdit, false>("Kel_LineEdit", "QLineEdit connected to or published as string data model");
    add<Kel_LongLabel, false>("Kel_LongLabel", "QLabel that displays a Model/View connection long value as text");
    // Kel_Placard, false: "Placard widget for place-holding"
    add<Kel_PlayButton, false>("Kel_PlayButton", "Immediate action play button for transport control");
    add<Kel_PopupDisplay, false>("Kel_PopupDisplay", "A combobox");
    add<Kel_RadioGroupListBox, false>("Kel_RadioGroupListBox", "Radio Group-style List Box");
    add<Kel_RevealButton, false>("Kel_RevealButton", "Contains reveal button that shows/hides body widget");
    add<Kel_RevealHeader, false>("Kel_RevealHeader",
        "Header for reveal widget, contains reveal button and display text field");
    add<Kel_RevealBody, true>("Kel_RevealBody", "Body of the reveal widget, contains widget that will be hidden/shown");
    add<Kel_ScrollView, true>("Kel_ScrollView", "Kel ScrollView");
    add<Kel_Slider, false>("Kel_Slider", "model driven slider control");
    // Kel_Sprite, false: "Animated bitmap"
    add<Kel_StandardBistateButton, false>("Kel_StandardBistateButton",
        "A dual-state button that allows customization via image properties");
    add<Kel_TCLabel, false>("Kel_TCLabel", "Timecode widget for monitor pane");
    add<Kel_TextEdit, false>("Kel_TextEdit", "QTextEdit connected to or published as string data model");
}

const struct Registration
{
    Registration() { registerLibraryWidgets(); }
} registration;

} // namespace
