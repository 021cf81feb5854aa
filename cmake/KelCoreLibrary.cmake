# The KelCore library: every source and header of the subsystem folders.
# Sources are collected by folder so that a new class is one new pair of files.
set(KELCORE_SUBSYSTEMS core binding script factory menu keymap widgets media lists views)

set(KELCORE_SOURCES)
set(KELCORE_HEADERS)
set(KELCORE_PRIVATE_HEADERS)
set(KELCORE_INCLUDE_DIRS)
foreach(dir IN LISTS KELCORE_SUBSYSTEMS)
  file(GLOB _src CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.cpp)
  file(GLOB _hdr CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.h)
  file(GLOB _res CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/*.qrc)
  list(APPEND KELCORE_SOURCES ${_src} ${_res})
  set(_public ${_hdr})
  list(FILTER _public EXCLUDE REGEX "_p\\.h$")
  list(APPEND KELCORE_HEADERS ${_public})
  list(APPEND KELCORE_PRIVATE_HEADERS ${_hdr})
  list(APPEND KELCORE_INCLUDE_DIRS $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/${dir}>)
endforeach()

add_library(KelCore SHARED ${KELCORE_SOURCES} ${KELCORE_PRIVATE_HEADERS})
add_library(KelCore::KelCore ALIAS KelCore)
set_target_properties(KelCore PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  EXPORT_NAME KelCore)
# Only what carries KELCORE_EXPORT leaves the library, as in a DLL.
include(GenerateExportHeader)
generate_export_header(KelCore BASE_NAME KelCore EXPORT_FILE_NAME ${CMAKE_CURRENT_BINARY_DIR}/kelcore_export.h)
set_target_properties(KelCore PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
list(APPEND KELCORE_HEADERS ${CMAKE_CURRENT_BINARY_DIR}/kelcore_export.h)
kel_library_rpath(KelCore)
target_include_directories(KelCore PUBLIC
  $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>
  ${KELCORE_INCLUDE_DIRS}
  $<INSTALL_INTERFACE:${KELCORE_INSTALL_INCLUDEDIR}>)
target_link_libraries(KelCore PUBLIC KelPlatform Qt5::Widgets Qt5::Xml Qt5::UiTools)
