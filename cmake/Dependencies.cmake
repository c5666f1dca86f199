# Libraries that are called. Their headers count as system headers, for the targets are imported.

find_package(CLI11 2 REQUIRED)
find_package(FlatBuffers 2 REQUIRED)
find_program(VYN_FLATC flatc REQUIRED)

# These two come without a target.
function(vyn_header_only_dependency name directory)
  add_library(${name} INTERFACE IMPORTED)
  target_include_directories(${name} SYSTEM INTERFACE "${directory}")
endfunction()

find_package(RapidJSON 1.1 REQUIRED)
vyn_header_only_dependency(vyn_rapidjson "${RAPIDJSON_INCLUDE_DIRS}")

find_path(XXHASH_INCLUDE_DIR xxhash.h REQUIRED)
vyn_header_only_dependency(vyn_xxhash "${XXHASH_INCLUDE_DIR}")
