#pragma once

#include <cstddef>

namespace vyn::fuzz {

/// True when the document takes no more memory, in bytes, than a log of that size may make it take:
/// every four bytes of a log can name one event, an event takes at most 176 bytes, and each text
/// is copied once. The pool's own chunks of 64 KiB do not count.
inline bool isInProportion(std::size_t documentSize, std::size_t logSize) {
  constexpr std::size_t kBytesPerByte = 45;
  constexpr std::size_t kSmallChange = 4096;  // for metadata and an empty document
  return documentSize <= kSmallChange + kBytesPerByte * logSize;
}

}  // namespace vyn::fuzz
