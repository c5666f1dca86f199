#pragma once

#include <cstddef>
#include <cstdint>

namespace vyn::fuzz {

/// True when the document takes no more memory, in bytes, than a log of that size which names that
/// many tables may make it take: a table becomes at most 176 bytes, and each text is copied once.
/// The pool's own chunks of 64 KiB do not count.
inline bool isInProportion(std::size_t documentSize, std::size_t logSize, std::uint64_t tables) {
  constexpr std::uint64_t kBytesPerTable = 176;
  constexpr std::size_t kSmallChange = 4096;  // for metadata and an empty document
  return documentSize <= kSmallChange + logSize + kBytesPerTable * tables;
}

}  // namespace vyn::fuzz
