#pragma once

#include <string_view>

namespace vyn::profiling {

/// Whether a JSON string must not hold all bytes of the text as they are.
inline bool needsEscaping(std::string_view text) {
  bool found = false;
  // No early exit, so that the compiler can vectorise the loop.
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    found |= byte < 0x20 || byte == '"' || byte == '\\';
  }
  return found;
}

}  // namespace vyn::profiling
