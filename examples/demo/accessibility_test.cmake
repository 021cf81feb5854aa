# Reads the accessibility tree of demo panels as a screen reader would
# (kelcore_demo --accessibility-tree) and checks that their views are there
# with the right role, name, value and states. The states' brackets are
# matched with "." in the patterns: an unbalanced bracket would join list
# elements in CMake.
function(expect_in_tree panel)
  execute_process(COMMAND ${DEMO} --panel "${panel}" --accessibility-tree
                  OUTPUT_VARIABLE _tree RESULT_VARIABLE _rc ERROR_QUIET)
  if(NOT _rc EQUAL 0)
    message(FATAL_ERROR "accessibility tree of panel '${panel}' failed (${_rc})")
  endif()
  foreach(pattern IN LISTS ARGN)
    if(NOT _tree MATCHES "${pattern}")
      message(FATAL_ERROR "panel '${panel}': nothing matches ${pattern} in\n${_tree}")
    endif()
  endforeach()
endfunction()

expect_in_tree("Views"
  "StaticText name=\"Mixer.Volume, a long model shown as decimal text\" value=\"[0-9]+\" .readOnly."
  "StaticText name=\"Muted\" value=\"(Yes|No)\" .readOnly checkable"
  "StaticText name=\"Not published\" .disabled readOnly."
  "Client name=\"ViewsBridge\"[^\n]*\n +Grouping name=\"ViewsPanel\"")
expect_in_tree("View gallery"
  "Client name=\"galleryBridge\" .focusable."
  "Grouping name=\"Interview, take 2\" .focusable expandable expanded."
  "ListItem name=\"Row\" value=\"[^\"]*Harbour at dawn\" .focusable selectable selected."
  "Grouping name=\"Crowd noise\" .focusable expandable collapsed.")
expect_in_tree("Clip bin"
  "Grouping name=\"Clip columns\" .focusable.\n +ColumnHeader name=\"Colour\"[^\n]*\n +ColumnHeader name=\"Name\"[^\n]*\n +ColumnHeader name=\"Duration\""
  "Client name=\"Clips\" .focusable."
  "Table name=\"Clips\"[^\n]*\n +ColumnHeader name=\"Colour\"[^\n]*\n +ColumnHeader name=\"Name\"[^\n]*\n +ColumnHeader name=\"Duration\""
  "\\.\\.\\. [0-9]+ rows")
expect_in_tree("Monitor"
  "RadioButton name=\"Play\" .focusable checkable"
  "Button name=\"Mute\" .focusable checkable"
  "Slider name=\"Volume\" value=\"[0-9]+\" .focusable.")
