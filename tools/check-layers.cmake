# check-layers.cmake - fails when a library file includes a header of a
# folder above its own (docs/architecture.md draws the layers).
#
#   cmake -DROOT=<source tree> -P tools/check-layers.cmake
#
# Every folder has a rank; a file may include headers of its own folder and
# of folders of lower rank. Folders of equal rank know nothing of each other
# (menu/ and keymap/, say). Headers that no library folder holds (Qt, the
# standard library, generated export headers) are not checked.
if(NOT ROOT)
  message(FATAL_ERROR "usage: cmake -DROOT=<source tree> -P check-layers.cmake")
endif()

set(KEL_LAYERS
  "platform/services"
  "platform/scheduler platform/model platform/editmenu"
  "platform/kinds"
  "core"
  "binding poi"
  "script"
  "views"
  "menu keymap"
  "widgets"
  "factory"
  "media lists dialogs")

# Rank of every folder, and the folder of every header.
set(_rank 0)
set(_folders)
foreach(layer IN LISTS KEL_LAYERS)
  string(REPLACE " " ";" _layer_folders "${layer}")
  foreach(folder IN LISTS _layer_folders)
    set(RANK_${folder} ${_rank})
    list(APPEND _folders ${folder})
    file(GLOB _headers RELATIVE ${ROOT}/${folder} ${ROOT}/${folder}/*.h)
    foreach(header IN LISTS _headers)
      set(FOLDER_OF_${header} ${folder})
    endforeach()
  endforeach()
  math(EXPR _rank "${_rank} + 1")
endforeach()

set(_violations 0)
foreach(folder IN LISTS _folders)
  file(GLOB _files ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp ${ROOT}/${folder}/*.in)
  foreach(path IN LISTS _files)
    file(STRINGS ${path} _includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS _includes)
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([^\"]+)\".*" "\\1" _header "${line}")
      get_filename_component(_header ${_header} NAME)
      set(_target ${FOLDER_OF_${_header}})
      if(NOT _target OR _target STREQUAL folder)
        continue()
      endif()
      if(NOT RANK_${_target} LESS RANK_${folder})
        file(RELATIVE_PATH _rel ${ROOT} ${path})
        message(SEND_ERROR "${_rel} includes ${_header} of ${_target}/, which is not below ${folder}/")
        math(EXPR _violations "${_violations} + 1")
      endif()
    endforeach()
  endforeach()
endforeach()

if(_violations GREATER 0)
  message(FATAL_ERROR "${_violations} include(s) cross the layers upwards")
endif()
message(STATUS "layers: every include goes downwards")
