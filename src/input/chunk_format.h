#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace vyn::profiling {

// A profiling log is chunks back to back, each a length and that many bytes (docs/log-format.md).

/// The length before each chunk: unsigned, in the little-endian order of the machines that this
/// runs on.
using ChunkLength = std::uint32_t;

/// The bytes of a length, as they stand before the chunk.
inline std::array<std::uint8_t, sizeof(ChunkLength)> lengthBytes(ChunkLength length) {
  return std::bit_cast<std::array<std::uint8_t, sizeof(ChunkLength)>>(length);
}

/// Shortest chunk, in bytes, that can hold a FlatBuffers buffer.
inline constexpr std::size_t kMinChunkSize = 12;

/// Chunks are shorter than this many bytes: FlatBuffers offsets are signed 32-bit numbers.
inline constexpr std::size_t kChunkSizeLimit = 0x7FFFFFFF;

inline constexpr bool isPlausibleChunkSize(std::size_t size) {
  return size >= kMinChunkSize && size < kChunkSizeLimit;
}

}  // namespace vyn::profiling
