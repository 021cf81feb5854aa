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
#include "Kel_Placard.h"
#include "Kel_PlayButton.h"
#include "Kel_PopupDisplay.h"
#include "Kel_RadioGroupListBox.h"
#include "Kel_RevealBody.h"
#include "Kel_RevealButton.h"
#include "Kel_RevealHeader.h"
#include "Kel_ScrollView.h"
#include "Kel_Slider.h"
#include "Kel_Sprite.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_StandardRadioButton.h"
#include "Kel_TCLabel.h"
#include "Kel_TextEdit.h"

namespace {

// One line per class, in this order.
void registerLibraryWidgets()
{
    Kel_SimpleFactoryEntry<Kel_ActionButton, false>::registerClass("Kel_ActionButton", "Action model connected button");
    Kel_SimpleFactoryEntry<Kel_ActionDialog, false>::registerClass("Kel_ActionDialog", "Dialog box with action script on accept");
    Kel_SimpleFactoryEntry<Kel_AutoSizeTextEdit, false>::registerClass("Kel_AutoSizeTextEdit",
        "Text edit that grows with its text, for the in-place editors");
    Kel_SimpleFactoryEntry<Kel_Bitmap, false>::registerClass("Kel_Bitmap", "model driven bitmap");
    Kel_SimpleFactoryEntry<Kel_Busy, false>::registerClass("Kel_Busy", "Animated busy indicator connected to Mvt_bool");
    Kel_SimpleFactoryEntry<Kel_CheckBox, false>::registerClass("Kel_CheckBox", "Model/View connected check box control");
    Kel_SimpleFactoryEntry<Kel_CheckBoxList, false>::registerClass("Kel_CheckBoxList", "List of checkboxes determined through model/view connections");
    Kel_SimpleFactoryEntry<Kel_Double, false>::registerClass("Kel_Double", "A Widget to display a double value");
    Kel_SimpleFactoryEntry<Kel_DropdownList, false>::registerClass("Kel_DropdownList", "model driven drop down item list");
    Kel_SimpleFactoryEntry<Kel_EnhancedCheckBoxList, false>::registerClass("Kel_EnhancedCheckBoxList",
        "List of checkboxes determined through model/view connections, with additional controls");
    Kel_SimpleFactoryEntry<Kel_ImageMappedButtons, false>::registerClass("Kel_ImageMappedButtons", "model driven collection of non-rectangular buttons");
    Kel_SimpleFactoryEntry<Kel_ImmediateActionButton, false>::registerClass("Kel_ImmediateActionButton", "Immediate action button for transport control");
    Kel_SimpleFactoryEntry<Kel_Label, false>::registerClass("Kel_Label", "QLabel with Model/View connection for label text");
    Kel_SimpleFactoryEntry<Kel_KeyEdit, false>::registerClass("Kel_KeyEdit", "QLineEdit that handles key sequences");
    Kel_SimpleFactoryEntry<Kel_LineEdit, false>::registerClass("Kel_LineEdit", "QLineEdit connected to or published as string data model");
    Kel_SimpleFactoryEntry<Kel_LongLabel, false>::registerClass("Kel_LongLabel", "QLabel that displays a Model/View connection long value as text");
    Kel_SimpleFactoryEntry<Kel_Placard, false>::registerClass("Kel_Placard", "Placard widget for place-holding");
    Kel_SimpleFactoryEntry<Kel_PlayButton, false>::registerClass("Kel_PlayButton", "Immediate action play button for transport control");
    Kel_SimpleFactoryEntry<Kel_PopupDisplay, false>::registerClass("Kel_PopupDisplay", "A combobox");
    Kel_SimpleFactoryEntry<Kel_RadioGroupListBox, false>::registerClass("Kel_RadioGroupListBox", "Radio Group-style List Box");
    Kel_SimpleFactoryEntry<Kel_RevealButton, false>::registerClass("Kel_RevealButton", "Contains reveal button that shows/hides body widget");
    Kel_SimpleFactoryEntry<Kel_RevealHeader, false>::registerClass("Kel_RevealHeader",
        "Header for reveal widget, contains reveal button and display text field");
    Kel_SimpleFactoryEntry<Kel_RevealBody, true>::registerClass("Kel_RevealBody", "Body of the reveal widget, contains widget that will be hidden/shown");
    Kel_SimpleFactoryEntry<Kel_ScrollView, true>::registerClass("Kel_ScrollView", "Kel ScrollView");
    Kel_SimpleFactoryEntry<Kel_Slider, false>::registerClass("Kel_Slider", "model driven slider control");
    Kel_SimpleFactoryEntry<Kel_Sprite, false>::registerClass("Kel_Sprite", "Animated bitmap");
    Kel_SimpleFactoryEntry<Kel_StandardBistateButton, false>::registerClass("Kel_StandardBistateButton",
        "A dual-state button that allows customization via image properties");
    Kel_SimpleFactoryEntry<Kel_TCLabel, false>::registerClass("Kel_TCLabel", "Timecode widget for monitor pane");
    Kel_SimpleFactoryEntry<Kel_TextEdit, false>::registerClass("Kel_TextEdit", "QTextEdit connected to or published as string data model");
    // Not in the table above, but made by forms like the bistate button.
    Kel_SimpleFactoryEntry<Kel_StandardRadioButton, false>::registerClass("Kel_StandardRadioButton",
        "An image button that is on while a string model holds its state name");
}

const struct Registration
{
    Registration() { registerLibraryWidgets(); }
} registration;

} // namespace
