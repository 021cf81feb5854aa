# Warnings and sanitizer flags shared by every target of the project.
add_compile_options(-Wall -Wextra)

if(KELCORE_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "KELCORE_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
  endif()
  set(KELCORE_SANITIZE ON)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(KELCORE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# An installed library finds its sibling libraries (libKelCore needs
# libKelPlatform) in its own folder, whatever the program that loads it
# says: a program's RUNPATH does not serve the dependencies of its libraries.
function(kel_library_rpath target)
  if(NOT APPLE AND NOT WIN32)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
endfunction()

# Gathers a library's public headers in one folder of the build tree, as
# symbolic links (copies where links are not possible), so that users in the
# build tree include exactly what an installed package offers.
function(kel_public_header_folder folder)
  file(MAKE_DIRECTORY ${folder})
  foreach(header IN LISTS ARGN)
    get_filename_component(_name ${header} NAME)
    file(CREATE_LINK ${header} ${folder}/${_name} COPY_ON_ERROR SYMBOLIC)
  endforeach()
endfunction()

# Gathers the files a library lists per folder: for each folder name in
# ARGN, the variables <prefix>_<FOLDER>_SOURCES, _HEADERS and
# _PRIVATE_HEADERS (file names within the folder). Sets, in the caller,
# <prefix>_ALL_SOURCES (everything to compile, headers included),
# <prefix>_PUBLIC_HEADERS and <prefix>_FOLDER_DIRS (absolute paths).
macro(kel_collect_folders prefix)
  set(${prefix}_ALL_SOURCES)
  set(${prefix}_PUBLIC_HEADERS)
  set(${prefix}_FOLDER_DIRS)
  foreach(_folder ${ARGN})
    string(TOUPPER ${_folder} _FOLDER)
    foreach(_kind SOURCES HEADERS PRIVATE_HEADERS)
      list(TRANSFORM ${prefix}_${_FOLDER}_${_kind} PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/${_folder}/)
      list(APPEND ${prefix}_ALL_SOURCES ${${prefix}_${_FOLDER}_${_kind}})
    endforeach()
    list(APPEND ${prefix}_PUBLIC_HEADERS ${${prefix}_${_FOLDER}_HEADERS})
    list(APPEND ${prefix}_FOLDER_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/${_folder})
  endforeach()
endmacro()

# Adds one of the project's shared libraries, built as a DLL would be: only
# what carries <NAME>_EXPORT (from the generated <name>_export.h) leaves it.
# Its own sources see PRIVATE_DIRS; its users see its public headers only,
# gathered in one folder as they are installed. Sets <name>_EXPORT_HEADER.
function(kel_add_shared_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC_HEADERS;PRIVATE_DIRS" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  add_library(KelCore::${name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME ${name}
    OUTPUT_NAME ${name}${KELCORE_LIBRARY_SUFFIX}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  string(TOLOWER ${name} _lower)
  set(_public_dir ${CMAKE_BINARY_DIR}/include/${name})
  set(_export_header ${_public_dir}/${_lower}_export.h)
  include(GenerateExportHeader)
  generate_export_header(${name} BASE_NAME ${name} EXPORT_FILE_NAME ${_export_header})
  kel_library_rpath(${name})
  kel_public_header_folder(${_public_dir} ${ARG_PUBLIC_HEADERS})
  target_include_directories(${name}
    PRIVATE ${ARG_PRIVATE_DIRS}
    PUBLIC $<BUILD_INTERFACE:${_public_dir}> $<INSTALL_INTERFACE:${KELCORE_INSTALL_INCLUDEDIR}>)
  set(${name}_EXPORT_HEADER ${_export_header} PARENT_SCOPE)
endfunction()
