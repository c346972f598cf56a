# cpack makes three Debian packages: the shared libraries, what a program needs
# to be built with them, and the command.

set(maintainer "libschema maintainers <maintainers@libschema.invalid>")
set(library libschema${LIBSCHEMA_SOVERSION})
set(release 1)

# What every package has in its folder for documentation. It is no part of an
# ordinary installation.
configure_file(
  packaging/debian/changelog.in "${PROJECT_BINARY_DIR}/debian/changelog" @ONLY)
execute_process(
  COMMAND gzip -9nc "${PROJECT_BINARY_DIR}/debian/changelog"
  OUTPUT_FILE "${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz"
  COMMAND_ERROR_IS_FATAL ANY)
foreach(pair library:${library} development:libschema-dev tool:schema-migrate)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 component)
  list(GET pair 1 package)
  install(
    FILES "${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz"
          packaging/debian/copyright
    DESTINATION share/doc/${package}
    COMPONENT ${component}
    EXCLUDE_FROM_ALL)
  string(TOUPPER ${component} component)
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${component}_FILE_NAME DEB-DEFAULT)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development tool)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE libschema)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${release})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    "${PROJECT_BINARY_DIR}/src/platform"
    "${PROJECT_BINARY_DIR}/src/libraries/libschema")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
    "schema library of a directory server's migration tool
Reads, compares, merges and writes the schema files of a directory server:
attribute types, object classes and storage definitions.
.
This package holds the shared libraries.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}-${release})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "schema library of a directory server's migration tool (development)
Reads, compares, merges and writes the schema files of a directory server:
attribute types, object classes and storage definitions.
.
This package holds the headers, the static libraries, what CMake and pkg-config
need to find them, and three programs to start from.")

set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION admin)
if(BUILD_SHARED_LIBS)
  set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS
      "${library} (>= ${PROJECT_VERSION}-${release})")
endif()
set(CPACK_COMPONENT_TOOL_DESCRIPTION
    "carry a directory server's LDAP schema into a new release
Compares the schema files of an old installation with those of a new release,
says what would happen to each definition, and writes the result: what the
administrator added is kept, and what the release defines.")

include(CPack)
