#pragma once

#include <cstddef>

#include "input/chunk.h"

namespace vyn::profiling {

/// A chunk with room for `size` bytes; null, with an error among the log lines, when there is no
/// memory for it. When memory is gone for good the line is missing.
ChunkBuffer makeChunkOrLog(std::size_t size);

}  // namespace vyn::profiling
