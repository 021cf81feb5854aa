# kelcore_add_menus(<target> FILES <menu file>...)
#
# Compiles menu files (root <Menu> or <MenuBar>) into generated C++ sources at
# build time and adds them to <target>, so that the application ships its
# menus compiled in: each file registers a factory under its file name
# without the extension (MainMenuBar.xml -> "MainMenuBar"), which
# Kel_MenuBar and Mnu_QtManager find by that name before looking for a file.
# The name must be a C++ identifier. Relative paths are taken from the
# current source folder. <target> must link KelCore::KelCore (KelCore in
# KelCore's own build).
#
# The compiler is the program KELCORE_MENU_COMPILER names (kel_menucompiler,
# or KelCore::kel_menucompiler from an installed package).
function(kelcore_add_menus target)
  cmake_parse_arguments(PARSE_ARGV 1 _menus "" "" "FILES")
  if(NOT TARGET ${target})
    message(FATAL_ERROR "kelcore_add_menus: ${target} is not a target")
  endif()
  if(NOT _menus_FILES)
    message(FATAL_ERROR "kelcore_add_menus: no FILES given for ${target}")
  endif()
  if(_menus_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "kelcore_add_menus: unexpected arguments ${_menus_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT KELCORE_MENU_COMPILER)
    message(FATAL_ERROR "kelcore_add_menus: the menu compiler is not available (KelCore built without its tools?)")
  endif()
  set(_dir ${CMAKE_CURRENT_BINARY_DIR}/${target}_menus)
  set(_outputs)
  foreach(_file IN LISTS _menus_FILES)
    get_filename_component(_path ${_file} ABSOLUTE BASE_DIR ${CMAKE_CURRENT_SOURCE_DIR})
    get_filename_component(_name ${_file} NAME_WE)
    set(_out ${_dir}/${_name}.cpp)
    add_custom_command(OUTPUT ${_out}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${_dir}
      COMMAND ${KELCORE_MENU_COMPILER} --source --name ${_name} -o ${_out} ${_path}
      DEPENDS ${_path} ${KELCORE_MENU_COMPILER}
      COMMENT "Compiling menu ${_file}"
      VERBATIM)
    list(APPEND _outputs ${_out})
  endforeach()
  set(_properties GENERATED ON SKIP_AUTOMOC ON SKIP_AUTOUIC ON SKIP_AUTORCC ON)
  get_target_property(_target_dir ${target} SOURCE_DIR)
  if(_target_dir STREQUAL CMAKE_CURRENT_SOURCE_DIR)
    set_source_files_properties(${_outputs} PROPERTIES ${_properties})
  else()
    # Called from another folder than the target's: the rules that make the
    # sources live here, in a target of their own that the target waits for.
    if(CMAKE_VERSION VERSION_LESS 3.18)
      message(FATAL_ERROR "kelcore_add_menus: call it in the folder that defines ${target} (or use CMake 3.18)")
    endif()
    add_custom_target(${target}_menus DEPENDS ${_outputs})
    add_dependencies(${target} ${target}_menus)
    set_source_files_properties(${_outputs} TARGET_DIRECTORY ${target} PROPERTIES ${_properties})
  endif()
  target_sources(${target} PRIVATE ${_outputs})
endfunction()
