# libschema_target(<target>) gives a target what all targets of this project
# share: the language, without a compiler's extensions, and the warnings.

include_guard()
include("${CMAKE_CURRENT_LIST_DIR}/Warnings.cmake")

function(libschema_target target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  libschema_warnings(${target})
endfunction()
