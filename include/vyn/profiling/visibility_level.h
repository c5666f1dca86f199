#pragma once

#include <cstdint>

namespace vyn::profiling {

/// Detail level of a message, and the threshold of a reader.
///
/// Any signed 8-bit number is a level: `static_cast<VisibilityLevel>(3)`. A reader that filters
/// takes a message only when its own level is strictly greater than the message's, compared as
/// signed numbers. A message without a level has level 0, so a reader of level 0 takes none of
/// those, and a reader of level 127 takes every message but those of level 127.
enum class VisibilityLevel : std::int8_t {};

}  // namespace vyn::profiling
