#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include "input/byte_source.h"

namespace vyn::profiling {

/// Looks at a source here and there, mostly forward, with a megabyte of it in memory.
class ByteWindow {
 public:
  /// `size` is how much of the source is looked at, in bytes.
  ByteWindow(SeekableSource& source, std::uint64_t size);

  std::uint64_t size() const { return m_size; }

  /// Bytes that `numberAt` read beyond the window so far.
  std::uint64_t strayBytes() const { return m_strayBytes; }

  /// The bytes from `offset` on, as many as are in memory: at least 16 KiB, or up to the end. The
  /// window moves there when it holds fewer. They live until it moves again.
  std::span<const std::uint8_t> ahead(std::uint64_t offset);

  /// The number that stands at `offset`. None where it would reach beyond the end, or where the
  /// source fails.
  template <typename Number>
  std::optional<Number> numberAt(std::uint64_t offset) {
    if (offset > m_size || m_size - offset < sizeof(Number)) {
      return std::nullopt;
    }
    const std::uint8_t* bytes = bytesAt(offset, sizeof(Number));
    if (bytes == nullptr) {
      return std::nullopt;
    }
    Number number;
    std::memcpy(&number, bytes, sizeof(Number));
    return number;
  }

 private:
  struct Block {
    std::vector<std::uint8_t> bytes;
    std::uint64_t offset = 0;
    std::size_t filled = 0;

    bool holds(std::uint64_t from, std::size_t count) const {
      return from >= offset && from - offset <= filled && filled - (from - offset) >= count;
    }
  };

  void fill(Block& block, std::uint64_t offset);
  const std::uint8_t* bytesAt(std::uint64_t offset, std::size_t count);

  SeekableSource& m_source;
  std::uint64_t m_size;
  Block m_window;
  Block m_stray;  // what was last looked at beyond the window
  std::uint64_t m_strayBytes = 0;
};

/// The `count` bytes of the source from `offset` on. None where the source has fewer.
std::optional<std::vector<std::uint8_t>> bytesFrom(SeekableSource& source, std::uint64_t offset,
                                                   std::size_t count);

}  // namespace vyn::profiling
