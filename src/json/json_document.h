#pragma once

#include <rapidjson/document.h>

#include "json/throwing_allocator.h"

namespace vyn::profiling {

using JsonDocument =
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<ThrowingAllocator>,
                               ThrowingAllocator>;
using JsonValue = JsonDocument::ValueType;

/// All completed reads of the process, one root object each. Every JSON value that a reader builds
/// lives in its pool allocator; nothing is freed before the library is unloaded.
extern JsonDocument g_jsonDocument;

/// True until the first output of the process: that one writes one object, later ones the array.
extern bool g_writeSingleObject;

}  // namespace vyn::profiling
