# The installed tree: programs, plug-ins, headers and a CMake package for foreign hosts.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vyn-profile-viewer")

install(EXPORT vyn-profile-viewer-targets NAMESPACE vyn:: DESTINATION "${package_dir}")
set(VYN_LOG_SCHEMA_INSTALL_PATH "${CMAKE_INSTALL_DATADIR}/vyn-profile-viewer/profile_log.fbs")
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/vyn-profile-viewer-config.cmake.in"
  "${PROJECT_BINARY_DIR}/vyn-profile-viewer-config.cmake"
  INSTALL_DESTINATION "${package_dir}"
  PATH_VARS VYN_PLUGIN_INSTALL_DIR VYN_LOG_SCHEMA_INSTALL_PATH)
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/vyn-profile-viewer-config-version.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vyn-profile-viewer-config.cmake"
              "${PROJECT_BINARY_DIR}/vyn-profile-viewer-config-version.cmake"
        DESTINATION "${package_dir}")
