#pragma once

#include <cstddef>
#include <string_view>

#include "analysis/log_facts.h"

namespace vyn::profiling {

/// Bytes of a text that are kept at most.
inline constexpr std::size_t kMaxKeptText = 200;

/// The text as it is kept: a longer one ends before the character that would go too far.
inline KeptText keepText(std::string_view text) {
  const auto isContinuation = [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
  };
  std::size_t size = text.size();
  if (size > kMaxKeptText) {
    constexpr std::size_t kMaxContinuations = 3;  // of a character in UTF-8
    size = kMaxKeptText;
    while (size > kMaxKeptText - kMaxContinuations && isContinuation(text[size])) {
      --size;
    }
  }
  return {std::string(text.substr(0, size)), text.size()};
}

}  // namespace vyn::profiling
