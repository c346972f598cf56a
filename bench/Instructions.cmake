# The count of instructions, and the test that it does not grow.

find_path(LIBSCHEMA_VALGRIND_INCLUDE valgrind/callgrind.h)
find_program(LIBSCHEMA_VALGRIND valgrind)
if(NOT LIBSCHEMA_VALGRIND_INCLUDE OR NOT LIBSCHEMA_VALGRIND)
  message(NOTICE "valgrind is not installed: no count of instructions")
  return()
endif()

add_executable(instructions Instructions.cpp)
libschema_target(instructions)
target_include_directories(
  instructions SYSTEM PRIVATE "${LIBSCHEMA_VALGRIND_INCLUDE}")
target_compile_definitions(
  instructions
  PRIVATE
    LIBSCHEMA_COMPILER="${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} ${CMAKE_SYSTEM_PROCESSOR}")
target_link_libraries(instructions PRIVATE libschema::schema bench_generator)

# The counts are those of one kind of build.
if(LIBSCHEMA_BUILD_TESTS
   AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"
   AND CMAKE_BUILD_TYPE STREQUAL "Release"
   AND CMAKE_CXX_FLAGS STREQUAL ""
   AND NOT BUILD_SHARED_LIBS)
  add_test(NAME bench.Instructions
           COMMAND "${PROJECT_SOURCE_DIR}/script/instructions" --program
                   "$<TARGET_FILE:instructions>")
  set_tests_properties(
    bench.Instructions PROPERTIES LABELS bench TIMEOUT 120 SKIP_RETURN_CODE 77)
endif()
