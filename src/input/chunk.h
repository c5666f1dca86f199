#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace vyn::profiling {

/// Memory for the bytes of one chunk. They stand in the vector's capacity while its size stays 0:
/// memory that is reserved but not sized costs nothing until the file's bytes are read into it.
using ChunkBuffer = std::shared_ptr<std::vector<std::uint8_t>>;

/// A buffer with room for `size` bytes, not filled. Throws std::bad_alloc or std::length_error.
inline ChunkBuffer makeChunk(std::size_t size) {
  auto buffer = std::make_shared<std::vector<std::uint8_t>>();
  buffer->reserve(size);
  return buffer;
}

/// The bytes of one chunk, with what keeps them alive.
struct Chunk {
  ChunkBuffer buffer;
  std::size_t size = 0;  ///< in bytes; less than the buffer has room for where the log is cut short

  const std::uint8_t* data() const { return buffer->data(); }
  std::span<const std::uint8_t> bytes() const { return {data(), size}; }
};

}  // namespace vyn::profiling
