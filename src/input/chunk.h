#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vyn::profiling {

/// The bytes of one chunk. They fill the vector's capacity exactly while its size stays 0: memory
/// that is reserved but not sized costs nothing until the file's bytes are read into it.
using ChunkBuffer = std::shared_ptr<std::vector<std::uint8_t>>;

/// A chunk with room for `size` bytes, not filled. Throws std::bad_alloc or std::length_error.
inline ChunkBuffer makeChunk(std::size_t size) {
  auto chunk = std::make_shared<std::vector<std::uint8_t>>();
  chunk->reserve(size);
  return chunk;
}

inline std::span<const std::uint8_t> bytesOf(const std::vector<std::uint8_t>& chunk) {
  return {chunk.data(), chunk.capacity()};
}

}  // namespace vyn::profiling
