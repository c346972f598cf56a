# libschema_warnings(<target>) gives a target this project's warnings. They are
# for the people who work on this project: a tree that only embeds the library
# gets none of them, unless it sets LIBSCHEMA_STRICT, which also makes each an
# error.

include_guard()

function(libschema_warnings target)
  if(NOT LIBSCHEMA_STRICT AND NOT PROJECT_IS_TOP_LEVEL)
    return()
  endif()

  target_compile_options(
    ${target}
    PRIVATE -Wall
            -Wextra
            -Wpedantic
            -Wcast-align
            -Wcast-qual
            -Wconversion
            -Wextra-semi
            -Wformat=2
            -Wimplicit-fallthrough
            -Wmissing-declarations
            -Wnon-virtual-dtor
            -Wold-style-cast
            -Woverloaded-virtual
            -Wshadow
            -Wsign-conversion
            -Wundef
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-branches>
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
            $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
            $<$<BOOL:${LIBSCHEMA_STRICT}>:-Werror>)
endfunction()
