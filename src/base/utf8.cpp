#include "base/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vyn::profiling {
namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD";  // U+FFFD

std::uint8_t byteAt(std::string_view bytes, std::size_t position) {
  return static_cast<std::uint8_t>(bytes[position]);
}

// Of the character that begins with that byte; 0 when none does.
std::size_t lengthFrom(std::uint8_t first) {
  if (first < 0x80) {
    return 1;
  }
  if (first < 0xC2 || first > 0xF4) {
    return 0;
  }
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// The second byte rules out overlong forms, surrogates and what lies above U+10FFFF.
bool fits(std::uint8_t first, std::uint8_t second) {
  const std::uint8_t low = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const std::uint8_t high = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  return second >= low && second <= high;
}

// Of the well-formed character at the front of the bytes, which are not empty; 0 for none.
std::size_t characterLength(std::string_view bytes) {
  const std::uint8_t first = byteAt(bytes, 0);
  const std::size_t length = lengthFrom(first);
  if (length == 0 || length > bytes.size() || (length > 1 && !fits(first, byteAt(bytes, 1)))) {
    return 0;
  }
  for (std::size_t i = 2; i < length; ++i) {
    if ((byteAt(bytes, i) & 0xC0) != 0x80) {
      return 0;
    }
  }
  return length;
}

std::size_t asciiLength(std::string_view bytes) {
  const auto* end =
      std::find_if(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
  return static_cast<std::size_t>(end - bytes.begin());
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  for (bytes.remove_prefix(asciiLength(bytes)); !bytes.empty();
       bytes.remove_prefix(asciiLength(bytes))) {
    const std::size_t length = characterLength(bytes);
    if (length == 0) {
      return false;
    }
    bytes.remove_prefix(length);
  }
  return true;
}

std::string withoutInvalidUtf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = characterLength(bytes);
    if (length == 0) {
      text += kReplacement;
      bytes.remove_prefix(1);
    } else {
      text += bytes.substr(0, length);
      bytes.remove_prefix(length);
    }
  }
  return text;
}

}  // namespace vyn::profiling
