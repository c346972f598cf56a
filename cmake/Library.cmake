# libschema_library(<name>
#   OUTPUT_NAME <name of the files>
#   SYMBOLS <file>
#   LINK_STATIC <target>... LINK_SHARED <target>...
#   HEADERS <file>... INTERNAL_HEADERS <file>... SOURCES <file>...)
#
# Makes libschema::<name>_static and libschema::<name>_shared from the same
# objects, and libschema::<name>, which is one of them, as BUILD_SHARED_LIBS
# says. With LIBSCHEMA_INSTALL both are built and installed, and the installed
# libschema::<name> is the shared one.
#
# The shared library exports what SYMBOLS lists and nothing else, under a
# version that changes with every incompatible change of the interface.
# INTERNAL_HEADERS are what the headers include but is not for embedders.

include_guard()
include(GNUInstallDirs)
include("${CMAKE_CURRENT_LIST_DIR}/Target.cmake")

# 0.1 is compatible with 0.1.1, but not with 0.2; from 1.0 on, 1.0 is with 1.1.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(LIBSCHEMA_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(LIBSCHEMA_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

function(libschema_library name)
  cmake_parse_arguments(
    PARSE_ARGV 1 arg "" "OUTPUT_NAME;SYMBOLS"
    "LINK_STATIC;LINK_SHARED;HEADERS;INTERNAL_HEADERS;SOURCES")
  set(objects libschema_${name}_objects)
  set(static libschema_${name}_static)
  set(shared libschema_${name}_shared)

  # Position independent also for the static library, so that a server can link
  # it into a shared library of its own. Calls from one function of the library
  # to another are compiled as such all the same.
  add_library(${objects} OBJECT ${arg_SOURCES})
  libschema_target(${objects})
  target_compile_options(${objects} PRIVATE -fno-semantic-interposition)
  set_target_properties(${objects} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_include_directories(
    ${objects} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}"
                      "${PROJECT_BINARY_DIR}/include")
  target_link_libraries(${objects} PUBLIC ${arg_LINK_STATIC})

  add_library(${static} STATIC $<TARGET_OBJECTS:${objects}>)
  target_link_libraries(${static} PUBLIC ${arg_LINK_STATIC})

  libschema_version_script(${arg_SYMBOLS} ${arg_OUTPUT_NAME} map)
  add_library(${shared} SHARED $<TARGET_OBJECTS:${objects}>)
  target_link_libraries(${shared} PUBLIC ${arg_LINK_SHARED})
  target_link_options(${shared} PRIVATE "-Wl,--version-script=${map}")
  set_target_properties(
    ${shared} PROPERTIES VERSION ${PROJECT_VERSION}
                         SOVERSION ${LIBSCHEMA_SOVERSION}
                         LINK_DEPENDS "${map}"
                         EXPORT_NAME ${name})

  set(headers "${CMAKE_INSTALL_INCLUDEDIR}/libschema")
  foreach(target ${static} ${shared})
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_include_directories(
      ${target}
      INTERFACE "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>"
                "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
                "$<INSTALL_INTERFACE:${headers}>"
                "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    set_target_properties(
      ${target} PROPERTIES OUTPUT_NAME ${arg_OUTPUT_NAME}
                           LINKER_LANGUAGE CXX)
  endforeach()
  set_target_properties(${static} PROPERTIES EXPORT_NAME ${name}_static)
  libschema_find_beside(${shared} "")

  add_library(libschema::${name}_static ALIAS ${static})
  add_library(libschema::${name}_shared ALIAS ${shared})
  if(BUILD_SHARED_LIBS)
    add_library(libschema::${name} ALIAS ${shared})
    set(other ${static})
  else()
    add_library(libschema::${name} ALIAS ${static})
    set(other ${shared})
  endif()
  if(NOT LIBSCHEMA_INSTALL)
    set_target_properties(${other} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()

  install(
    TARGETS ${static} ${shared}
    EXPORT libschema
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT library
            NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(
    FILES ${arg_HEADERS}
    DESTINATION ${headers}
    COMPONENT development)
  install(
    FILES ${arg_INTERNAL_HEADERS}
    DESTINATION ${headers}/internal
    COMPONENT development)
endfunction()

# Lets the installed file of a target find the shared libraries that were
# installed with it, in `folder` below its own, wherever that is. In /usr the
# system finds them.
function(libschema_find_beside target folder)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set_target_properties(
      ${target} PROPERTIES INSTALL_RPATH "$ORIGIN${folder}")
  endif()
endfunction()

# Writes the linker's version script for the symbols listed in the file
# `symbols`, and sets `result` to its path. The list has a symbol a line, as nm
# --demangle prints it, but for the standard library's long names.
function(libschema_version_script symbols output_name result)
  set(string "std::__cxx11::basic_string<char, std::char_traits<char>, \
std::allocator<char> >")
  set_property(
    DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
                              "${CMAKE_CURRENT_SOURCE_DIR}/${symbols}")
  file(STRINGS "${symbols}" lines REGEX "^[^#]")
  set(patterns "")
  foreach(line IN LISTS lines)
    string(REPLACE "std::set<std::string>"
                   "std::set<std::string, std::less<std::string >, \
std::allocator<std::string > >" line "${line}")
    foreach(stream ofstream streambuf)
      string(REPLACE "std::${stream}"
                     "std::basic_${stream}<char, std::char_traits<char> >" line
                     "${line}")
    endforeach()
    string(REPLACE "std::string" "${string}" line "${line}")
    string(APPEND patterns "      \"${line}\";\n")
  endforeach()
  string(TOUPPER "${output_name}_${LIBSCHEMA_SOVERSION}" version)
  string(REPLACE "-" "_" version "LIB${version}")
  set(path "${CMAKE_CURRENT_BINARY_DIR}/${output_name}.map")
  file(CONFIGURE OUTPUT "${path}" @ONLY
       CONTENT "@version@ {
  global:
    extern \"C++\" {
@patterns@    };
  local:
    *;
};
")
  set(${result} "${path}" PARENT_SCOPE)
endfunction()
