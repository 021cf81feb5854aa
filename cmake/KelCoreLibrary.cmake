# The KelCore library. Each folder lists its files; a new class adds its own
# here. Public headers are what gets installed; _p.h headers stay inside.
# The folders are layered as docs/architecture.md draws them, lowest first.

# core/: library frame: initialisation, application, fonts, language chooser
set(KELCORE_CORE_SOURCES
  Kel_Application.cpp
  Kel_FontManager.cpp
  Kel_Initialize.cpp
  Kel_LanguageDialog.cpp
  Kel_Logging.cpp
)
set(KELCORE_CORE_HEADERS
  Kel_Application.h
  Kel_FontManager.h
  Kel_Initialize.h
  Kel_LanguageDialog.h
  Kel_QtCompat.h
  Kel_Version.h
)
set(KELCORE_CORE_PRIVATE_HEADERS
  Kel_Initialize_p.h
  Kel_Logging_p.h
)

# binding/: binding contracts, view base, containers, connection utilities, bound properties
set(KELCORE_BINDING_SOURCES
  Kel_BoundFont.cpp
  Kel_BoundPropertyBase.cpp
  Kel_ConnectionUtils.cpp
  Kel_ContainerViewBase.cpp
  Kel_MenuCommandInterface.cpp
  Kel_ViewBase.cpp
  Kel_ViewContainerInterface.cpp
  Kel_ViewInterface.cpp
  Kel_WidgetConnectInterface.cpp
  Kel_BoundText.cpp
)
set(KELCORE_BINDING_HEADERS
  Kel_BoundFont.h
  Kel_BoundProperty.h
  Kel_BoundPropertyBase.h
  Kel_ConnectionUtils.h
  Kel_ContainerViewBase.h
  Kel_MenuCommandInterface.h
  Kel_ViewBase.h
  Kel_ViewContainerInterface.h
  Kel_ViewInterface.h
  Kel_WidgetConnectInterface.h
  Kel_BoundText.h
  Kel_DeletionGuard.h
)

# poi/: point-of-interest lookup and what's-this names
set(KELCORE_POI_SOURCES
  Kel_IPointOfInterestFinder.cpp
  Kel_PoiLookup.cpp
  Kel_WhatsThis.cpp
)
set(KELCORE_POI_HEADERS
  Kel_IPointOfInterestFinder.h
  Kel_PoiLookup.h
  Kel_WhatsThis.h
)

# script/: the action-script parser and evaluation
set(KELCORE_SCRIPT_SOURCES
  Kel_SubscriptionIdentifierSubstitution.cpp
  Uip_Assign_ParseNode.cpp
  Uip_BooleanLiteral_ParseNode.cpp
  Uip_CloneParseTree.cpp
  Uip_FunctionCall_ParseNode.cpp
  Uip_Identifier_ParseNode.cpp
  Uip_ParseError.cpp
  Uip_ParseNode.cpp
  Uip_ParseScript.cpp
  Uip_Parser.cpp
  Uip_RunScript.cpp
  Uip_StatementBlock_ParseNode.cpp
  Uip_StringLiteral_ParseNode.cpp
)
set(KELCORE_SCRIPT_HEADERS
  Kel_SubscriptionIdentifierSubstitution.h
  Uip_Assign_ParseNode.h
  Uip_BooleanLiteral_ParseNode.h
  Uip_CloneParseTree.h
  Uip_FunctionCall_ParseNode.h
  Uip_Identifier_ParseNode.h
  Uip_ParseError.h
  Uip_ParseNode.h
  Uip_ParseScript.h
  Uip_RunScript.h
  Uip_StatementBlock_ParseNode.h
  Uip_StringLiteral_ParseNode.h
)
set(KELCORE_SCRIPT_PRIVATE_HEADERS
  Uip_Parser_p.h
)

# views/: light-weight value views and the bridge widgets
set(KELCORE_VIEWS_SOURCES
  Kel_BlankView.cpp
  Kel_BoolTextView.cpp
  Kel_BridgeBase.cpp
  Kel_BridgeQScrollArea.cpp
  Kel_BridgeQWidget.cpp
  Kel_HStackView.cpp
  Kel_LongIntView.cpp
  Kel_StringView.cpp
  Kel_TextView.cpp
  Kel_ValueViewBase.cpp
  Kel_DateTimeView.cpp
  Kel_IconView.cpp
  Kel_RevealView.cpp
  Kel_SelectableView.cpp
  Kel_StackViewBase.cpp
  Kel_VStackView.cpp
  Kel_ViewAccessibility.cpp
  Kel_ViewAccessible.cpp
)
set(KELCORE_VIEWS_HEADERS
  Kel_BlankView.h
  Kel_BoolTextView.h
  Kel_BridgeBase.h
  Kel_BridgeQScrollArea.h
  Kel_BridgeQWidget.h
  Kel_HStackView.h
  Kel_LongIntView.h
  Kel_StringView.h
  Kel_TextView.h
  Kel_ValueViewBase.h
  Kel_DateTimeView.h
  Kel_IconView.h
  Kel_RevealView.h
  Kel_SelectableView.h
  Kel_StackViewBase.h
  Kel_VStackView.h
  Kel_ViewAccessibility.h
)
set(KELCORE_VIEWS_PRIVATE_HEADERS
  Kel_ViewAccessible_p.h
)

# menu/: menus, menu bars and their segments
set(KELCORE_MENU_SOURCES
  Kel_MenuBar.cpp
  Kel_PopupMenu.cpp
  Mnu_BooleanSegment.cpp
  Mnu_CommandSegment.cpp
  Mnu_ListSegment.cpp
  Mnu_Manager.cpp
  Mnu_Menu.cpp
  Mnu_MenuID.cpp
  Mnu_QtManager.cpp
  Mnu_QtMenuBarEventFilter.cpp
  Mnu_QtMenuBarManager.cpp
  Mnu_RadioItemsSegment.cpp
  Mnu_RadioListSegment.cpp
  Mnu_Segment.cpp
  Mnu_SeparatorSegment.cpp
  Mnu_SubmenuSegment.cpp
  Kel_EditMenuCommands.cpp
)
set(KELCORE_MENU_HEADERS
  Kel_MenuBar.h
  Kel_PopupMenu.h
  Mnu_BooleanSegment.h
  Mnu_CommandSegment.h
  Mnu_ListSegment.h
  Mnu_Manager.h
  Mnu_Menu.h
  Mnu_MenuID.h
  Mnu_QtManager.h
  Mnu_QtMenuBarEventFilter.h
  Mnu_QtMenuBarManager.h
  Mnu_RadioItemsSegment.h
  Mnu_RadioListSegment.h
  Mnu_Segment.h
  Mnu_SeparatorSegment.h
  Mnu_SubmenuSegment.h
  Kel_EditMenuCommands.h
)
set(KELCORE_MENU_PRIVATE_HEADERS
  Mnu_Writer_p.h
)

# keymap/: keymaps and keys
set(KELCORE_KEYMAP_SOURCES
  Kel_KeyboardLanguage.cpp
  Kel_KeymapMgr.cpp
  Kel_KeyEdit.cpp
)
set(KELCORE_KEYMAP_HEADERS
  Kel_KeyboardLanguage.h
  Kel_KeymapMgr.h
  Kel_KeyEdit.h
)

# widgets/: value and button widgets
set(KELCORE_WIDGETS_SOURCES
  Kel_ActionButton.cpp
  Kel_ActionScriptRunner.cpp
  Kel_AnimationTimer.cpp
  Kel_CheckBox.cpp
  Kel_ImmediateActionButton.cpp
  Kel_Label.cpp
  Kel_LongLabel.cpp
  Kel_Placard.cpp
  Kel_ModelInspector.cpp
  Kel_TCLabel.cpp
  Kel_Time.cpp
  Kel_TextAlignment.cpp
  Kel_AutoAlignLineEdit.cpp
  Kel_LineEdit.cpp
  Kel_LineEditPopup.cpp
  Kel_AutoAlignTextEdit.cpp
  Kel_TextEdit.cpp
  Kel_AutoSizeTextEdit.cpp
  Kel_ResourceImage.cpp
  Kel_Slider.cpp
  Kel_Sprite.cpp
  Kel_StandardBistateButton.cpp
  Kel_StandardRadioButton.cpp
  Kel_TransparentOverlay.cpp
  Kel_ActionDialog.cpp
  Kel_Bitmap.cpp
  Kel_Busy.cpp
  Kel_CheckBoxList.cpp
  Kel_Double.cpp
  Kel_DropdownList.cpp
  Kel_EnhancedCheckBoxList.cpp
  Kel_ImageMappedButtons.cpp
  Kel_PlayButton.cpp
  Kel_PopupDisplay.cpp
  Kel_RadioGroupListBox.cpp
  Kel_RevealBody.cpp
  Kel_RevealButton.cpp
  Kel_RevealHeader.cpp
  Kel_ScrollView.cpp
  Kel_RelativeMotionSource.cpp
  Kel_RelativeMotionSource_win.cpp
  Kel_RelativeMouseTracker.cpp
  Kel_TreeWidget.cpp
  Kel_KeyboardClick.cpp
  Kel_WidgetsAccessibility.cpp
)
set(KELCORE_WIDGETS_HEADERS
  Kel_ActionButton.h
  Kel_ActionScriptRunner.h
  Kel_CheckBox.h
  Kel_ImmediateActionButton.h
  Kel_Label.h
  Kel_LongLabel.h
  Kel_Placard.h
  Kel_ModelInspector.h
  Kel_TCLabel.h
  Kel_Time.h
  Kel_TextAlignment.h
  Kel_AutoAlignLineEdit.h
  Kel_LineEdit.h
  Kel_LineEditPopup.h
  Kel_AutoAlignTextEdit.h
  Kel_TextEdit.h
  Kel_AutoSizeTextEdit.h
  Kel_ResourceImage.h
  Kel_Slider.h
  Kel_Sprite.h
  Kel_StandardBistateButton.h
  Kel_StandardRadioButton.h
  Kel_TransparentOverlay.h
  Kel_ActionDialog.h
  Kel_Bitmap.h
  Kel_Busy.h
  Kel_CheckBoxList.h
  Kel_Double.h
  Kel_DropdownList.h
  Kel_EnhancedCheckBoxList.h
  Kel_ImageMappedButtons.h
  Kel_PlayButton.h
  Kel_PopupDisplay.h
  Kel_RadioGroupListBox.h
  Kel_RevealBody.h
  Kel_RevealButton.h
  Kel_RevealHeader.h
  Kel_ScrollView.h
  Kel_RelativeMouseTracker.h
  Kel_TreeWidget.h
)
set(KELCORE_WIDGETS_PRIVATE_HEADERS
  Kel_AnimationTimer_p.h
  Kel_RelativeMotionSource_p.h
  Kel_KeyboardClick_p.h
)

# factory/: the widget factory and form loading
set(KELCORE_FACTORY_SOURCES
  Kel_CreateWidgetFromUILayout.cpp
  Kel_FactoryEntryInterface.cpp
  Kel_FactoryRegistration.cpp
  Kel_QtWidgetFactoryRegistry.cpp
  Kel_UIFileFactoryEntry.cpp
  Kel_EditMenuTestWindow.cpp
)
set(KELCORE_FACTORY_HEADERS
  Kel_CreateWidgetFromUILayout.h
  Kel_FactoryEntryInterface.h
  Kel_QtWidgetFactoryRegistry.h
  Kel_SimpleFactoryEntry.h
  Kel_UIFileFactoryEntry.h
  Kel_EditMenuTestWindow.h
)

# media/: the video monitor and its play-rate overlay
set(KELCORE_MEDIA_SOURCES
  Kel_Monitor.cpp
)
set(KELCORE_MEDIA_HEADERS
  Kel_Monitor.h
)

# dialogs/: status window and progress thermometer
set(KELCORE_DIALOGS_SOURCES
  Kel_ListSelectionDialog.cpp
  Kel_ProgressThermometer.cpp
  Kel_StatusWindow.cpp
)
set(KELCORE_DIALOGS_HEADERS
  Kel_ListSelectionDialog.h
  Kel_ProgressThermometer.h
  Kel_StatusWindow.h
)

# lists/: the list view, widget lists and stacks
set(KELCORE_LISTS_SOURCES
  Kel_ColumnDataModel.cpp
  Kel_ColumnDragView.cpp
  Kel_ColumnSeparatorView.cpp
  Kel_ListView.cpp
  Kel_ListViewCell.cpp
  Kel_ListViewWidget.cpp
  Kel_ListWithColumns.cpp
  Kel_ListWithColumnsWidget.cpp
  Kel_ListsFactoryRegistration.cpp
  Kel_WidgetList.cpp
  Kel_WidgetStack.cpp
  Kel_Header.cpp
  Kel_ListViewAccessible.cpp
  Kel_ListsAccessibility.cpp
  Kel_ListWithColumnsAccessible.cpp
  Kel_HeaderAccessible.cpp
)
set(KELCORE_LISTS_HEADERS
  Kel_ColumnDataModel.h
  Kel_ColumnDragView.h
  Kel_ColumnSeparatorView.h
  Kel_ListView.h
  Kel_ListViewCell.h
  Kel_ListViewWidget.h
  Kel_ListWithColumns.h
  Kel_ListWithColumnsWidget.h
  Kel_WidgetList.h
  Kel_WidgetStack.h
  Kel_Header.h
)
set(KELCORE_LISTS_PRIVATE_HEADERS
  Kel_ListViewAccessible_p.h
  Kel_ListWithColumnsAccessible_p.h
  Kel_HeaderAccessible_p.h
)

kel_collect_folders(KELCORE core binding poi script views menu keymap widgets factory media lists dialogs)
set(_sources ${KELCORE_ALL_SOURCES})
set(_headers ${KELCORE_PUBLIC_HEADERS})
set(_private_dirs ${KELCORE_FOLDER_DIRS})

# The version the library reports is the project's.
configure_file(${CMAKE_CURRENT_SOURCE_DIR}/core/Kel_Version.cpp.in ${CMAKE_CURRENT_BINARY_DIR}/Kel_Version.cpp @ONLY)
list(APPEND _sources ${CMAKE_CURRENT_BINARY_DIR}/Kel_Version.cpp)

kel_add_shared_library(KelCore
  SOURCES ${_sources}
  PUBLIC_HEADERS ${_headers}
  PRIVATE_DIRS ${_private_dirs} ${KELPLATFORM_PRIVATE_INCLUDE_DIRS})
# Public: KelPlatform's models and Qt's widgets, XML and form loader appear
# in the public headers.
target_link_libraries(KelCore PUBLIC KelPlatform Qt::Widgets Qt::Xml Qt::UiTools)
set(KELCORE_HEADERS ${_headers} ${KelCore_EXPORT_HEADER})

# White-box tests and fuzz targets may include the libraries' private headers;
# applications cannot (this target is not installed).
add_library(KelCore_private_headers INTERFACE)
target_include_directories(KelCore_private_headers INTERFACE ${_private_dirs} ${KELPLATFORM_PRIVATE_INCLUDE_DIRS})
