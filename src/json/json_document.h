#pragma once

#include <rapidjson/document.h>

namespace vyn::profiling {

/// All completed reads of the process, one root object each. Every JSON value that a reader builds
/// lives in its pool allocator; nothing is freed before the library is unloaded.
extern rapidjson::Document g_jsonDocument;

/// True until the first output of the process: that one writes one object, later ones the array.
extern bool g_writeSingleObject;

}  // namespace vyn::profiling
