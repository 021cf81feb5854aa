# Installs both libraries, their headers (flat, one per class) and the CMake
# package, so that an application writes find_package(KelCore) and links
# KelCore::KelCore. (The Qt 6 build's package is KelCore6, with the same
# target names.)
include(CMakePackageConfigHelpers)

install(TARGETS KelPlatform KelCore EXPORT ${KELCORE_PACKAGE_NAME}Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${KELCORE_INSTALL_INCLUDEDIR})
install(FILES ${KELPLATFORM_HEADERS} ${KELCORE_HEADERS} DESTINATION ${KELCORE_INSTALL_INCLUDEDIR})
install(EXPORT ${KELCORE_PACKAGE_NAME}Targets NAMESPACE KelCore:: DESTINATION ${KELCORE_INSTALL_CMAKEDIR})

configure_package_config_file(${CMAKE_CURRENT_SOURCE_DIR}/cmake/KelCoreConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/${KELCORE_PACKAGE_NAME}Config.cmake
  INSTALL_DESTINATION ${KELCORE_INSTALL_CMAKEDIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/${KELCORE_PACKAGE_NAME}ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${KELCORE_PACKAGE_NAME}Config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/${KELCORE_PACKAGE_NAME}ConfigVersion.cmake
  DESTINATION ${KELCORE_INSTALL_CMAKEDIR})
# kelcore_add_menus for applications (the package config includes it).
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/cmake/KelCoreMenus.cmake DESTINATION ${KELCORE_INSTALL_CMAKEDIR})
