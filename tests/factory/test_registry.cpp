// Kel_QtWidgetFactoryRegistry and its entries: the table, the library's own
// classes, and creation by class name.
#include "Kel_Label.h"
#include "Kel_QtWidgetFactoryRegistry.h"
#include "Kel_SimpleFactoryEntry.h"
#include "Kel_UIFileFactoryEntry.h"
#include "TestSupport.h"

#include <QFrame>
#include <QPushButton>
#include <QRegularExpression>
#include <iterator>
#include <gtest/gtest.h>

namespace {

class TestPanel : public QFrame
{
public:
    TestPanel(QWidget* parent, const char* name) : QFrame(parent) { setObjectName(QString::fromLatin1(name)); }
};

} // namespace

TEST(FactoryRegistry, LibraryClassesAreRegisteredAtLoad)
{
    const std::pair<const char*, const char*> library[] = {
        {"Kel_ActionButton", "Action model connected button"},
        {"Kel_ActionDialog", "Dialog box with action script on accept"},
        {"Kel_AutoSizeTextEdit", "Text edit that grows with its text, for the in-place editors"},
        {"Kel_Bitmap", "model driven bitmap"},
        {"Kel_Busy", "Animated busy indicator connected to Mvt_bool"},
        {"Kel_CheckBox", "Model/View connected check box control"},
        {"Kel_CheckBoxList", "List of checkboxes determined through model/view connections"},
        {"Kel_Double", "A Widget to display a double value"},
        {"Kel_DropdownList", "model driven drop down item list"},
        {"Kel_EnhancedCheckBoxList",
         "List of checkboxes determined through model/view connections, with additional controls"},
        {"Kel_ImageMappedButtons", "model driven collection of non-rectangular buttons"},
        {"Kel_ImmediateActionButton", "Immediate action button for transport control"},
        {"Kel_KeyEdit", "QLineEdit that handles key sequences"},
        {"Kel_Label", "QLabel with Model/View connection for label text"},
        {"Kel_LineEdit", "QLineEdit connected to or published as string data model"},
        {"Kel_LongLabel", "QLabel that displays a Model/View connection long value as text"},
        {"Kel_Placard", "Placard widget for place-holding"},
        {"Kel_PlayButton", "Immediate action play button for transport control"},
        {"Kel_PopupDisplay", "A combobox"},
        {"Kel_RadioGroupListBox", "Radio Group-style List Box"},
        {"Kel_RevealBody", "Body of the reveal widget, contains widget that will be hidden/shown"},
        {"Kel_RevealButton", "Contains reveal button that shows/hides body widget"},
        {"Kel_RevealHeader", "Header for reveal widget, contains reveal button and display text field"},
        {"Kel_ScrollView", "Kel ScrollView"},
        {"Kel_Slider", "model driven slider control"},
        {"Kel_Sprite", "Animated bitmap"},
        {"Kel_StandardBistateButton", "A dual-state button that allows customization via image properties"},
        {"Kel_TCLabel", "Timecode widget for monitor pane"},
        {"Kel_TextEdit", "QTextEdit connected to or published as string data model"},
    };
    // The whole table, in ascending order, and the classes forms use beyond
    // it.
    QStringList expected{"Kel_ListViewWidget", "Kel_ListWithColumnsWidget", "Kel_StandardRadioButton"};
    for (const auto& c : library)
        expected.append(QString::fromLatin1(c.first));
    expected.sort();
    EXPECT_EQ(std::size(library), 29u);
    EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getAllKeys().filter(QRegularExpression("^Kel_")), expected);

    Kel_QtWidgetFactoryRegistry loader;
    QWidget parent;
    for (const auto& c : library) {
        SCOPED_TRACE(c.first);
        const QString key = QString::fromLatin1(c.first);
        Kel_FactoryEntryInterface* entry = Kel_QtWidgetFactoryRegistry::getEntry(key);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->getToolTip(), QString::fromLatin1(c.second));
        EXPECT_EQ(entry->getWhatsThis(), QString::fromLatin1(c.second));
        EXPECT_EQ(entry->getIncludeFile(), key + QStringLiteral(".h"));
        // Only the reveal body and the scroll view hold other widgets of a form.
        const bool container = key == QLatin1String("Kel_RevealBody") || key == QLatin1String("Kel_ScrollView");
        EXPECT_EQ(entry->isContainer(), container);
        QWidget* made = loader.createWidget(key, &parent, QStringLiteral("made"));
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(QString::fromLatin1(made->metaObject()->className()), key);
        EXPECT_EQ(made->parent(), &parent);
        EXPECT_EQ(made->objectName(), QStringLiteral("made"));
    }
    EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Kel_NeverRegistered")), nullptr);

    // Other names are Qt's: its own classes, and nothing for names it does not know.
    EXPECT_NE(qobject_cast<QPushButton*>(loader.createWidget(QStringLiteral("QPushButton"), &parent)), nullptr);
    DebugMessageCollector messages;
    EXPECT_EQ(loader.createWidget(QStringLiteral("Kel_NeverRegistered"), &parent), nullptr);
}

TEST(FactoryRegistry, EntriesRegisterReplaceAndLeaveTheTable)
{
    // Empty texts fall back: what's-this to tool tip, tool tip to key.
    auto* first = new Kel_SimpleFactoryEntry<TestPanel, true>(QStringLiteral("Test_Panel"), QString(), QString());
    EXPECT_EQ(first->getWhatsThis(), QStringLiteral("Test_Panel"));
    EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Test_Panel")), first);
    {
        Kel_SimpleFactoryEntry<TestPanel, false> second(QStringLiteral("Test_Panel"), QStringLiteral("A panel"),
                                                        QString());
        EXPECT_EQ(second.getWhatsThis(), QStringLiteral("A panel"));
        EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Test_Panel")), &second);
        EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getAllKeys().count(QStringLiteral("Test_Panel")), 1);

        // The replaced entry was not deleted and still works.
        QWidget parent;
        EXPECT_NE(dynamic_cast<TestPanel*>(first->create(&parent, QStringLiteral("p"), false)), nullptr);
        delete first; // not registered any more: the table is untouched
        EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Test_Panel")), &second);
    }
    // A destroyed entry never stays behind in the table.
    EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Test_Panel")), nullptr);

    Kel_UIFileFactoryEntry inspector(QStringLiteral("Inspector"));
    EXPECT_EQ(Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Inspector")), &inspector);
    EXPECT_EQ(inspector.getWhatsThis(), QStringLiteral("Inspector.ui file include"));
    EXPECT_EQ(inspector.getToolTip(), QStringLiteral("Inspector.ui file include"));
    EXPECT_TRUE(inspector.getIncludeFile().isEmpty());
    EXPECT_FALSE(inspector.isContainer());
}
