# Libraries that are called, each as an interface target whose headers count as system headers.

function(vyn_header_only_dependency name header)
  find_path(${name}_INCLUDE_DIR ${header} REQUIRED)
  add_library(${name} INTERFACE IMPORTED)
  target_include_directories(${name} SYSTEM INTERFACE "${${name}_INCLUDE_DIR}")
endfunction()

vyn_header_only_dependency(vyn_flatbuffers flatbuffers/flatbuffers.h)
vyn_header_only_dependency(vyn_rapidjson rapidjson/document.h)
vyn_header_only_dependency(vyn_xxhash xxhash.h)
vyn_header_only_dependency(vyn_cli11 CLI/CLI.hpp)
find_program(VYN_FLATC flatc REQUIRED)
