# What is installed besides the files of the targets: what find_package() and
# pkg-config read, and the programs to start from. The paths in it are relative,
# so that an installed tree can be moved. A rule that names no component belongs
# to the tool.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME tool)

set(cmake_dir "${CMAKE_INSTALL_LIBDIR}/cmake/libschema")
configure_package_config_file(
  cmake/libschemaConfig.cmake.in
  "${PROJECT_BINARY_DIR}/cmake/libschemaConfig.cmake"
  INSTALL_DESTINATION "${cmake_dir}")
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
else()
  set(compatibility SameMajorVersion)
endif()
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/cmake/libschemaConfigVersion.cmake"
  COMPATIBILITY ${compatibility})
install(
  FILES "${PROJECT_BINARY_DIR}/cmake/libschemaConfig.cmake"
        "${PROJECT_BINARY_DIR}/cmake/libschemaConfigVersion.cmake"
  DESTINATION "${cmake_dir}"
  COMPONENT development)
install(
  EXPORT libschema
  FILE libschemaTargets.cmake
  NAMESPACE libschema::
  DESTINATION "${cmake_dir}"
  COMPONENT development)

set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH prefix_from_pc "/prefix/${pc_dir}" "/prefix")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
foreach(module libschema libschema-platform)
  configure_file(
    cmake/${module}.pc.in "${PROJECT_BINARY_DIR}/cmake/${module}.pc" @ONLY)
  install(
    FILES "${PROJECT_BINARY_DIR}/cmake/${module}.pc"
    DESTINATION "${pc_dir}"
    COMPONENT development)
endforeach()

# Each package has its own folder for documents.
install(
  DIRECTORY examples/embed
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/libschema-dev/examples"
  COMPONENT development
  PATTERN build EXCLUDE)
