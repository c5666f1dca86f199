#pragma once

#include <cstddef>
#include <cstdint>

namespace vyn::profiling {

/// True when the chunk of `size` bytes is a sound buffer of the log's schema: every table, string
/// and vector lies inside it, required fields are there, and events nest at most 64 tables deep
/// (which also bounds every recursion over events). Unaligned data is accepted.
bool isSoundChunk(const std::uint8_t* bytes, std::size_t size);

}  // namespace vyn::profiling
