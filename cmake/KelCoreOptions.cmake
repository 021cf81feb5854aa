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
