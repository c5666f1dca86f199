#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>

#include "log/logger.h"

namespace vyn::log {
namespace {

constexpr std::size_t kLineSize = 1024;  // bytes, with the terminating zero

// Every label is seven characters wide.
const char* levelLabel(std::uint32_t level) {
  switch (level) {
    case kError:
      return " ERROR ";
    case kWarning:
      return "WARNING";
    case kInfo:
      return "  INFO ";
    case kVerbose:
      return "VERBOSE";
    case kDebug:
      return " DEBUG ";
    case static_cast<std::uint32_t>(kUnknownLevel):
      return "UNKNOWN";
    default:
      return "";
  }
}

// Milliseconds with one decimal, whatever locale the host has set.
std::array<char, 32> elapsedText(std::uint64_t elapsedNs) {
  std::array<char, 32> text{};
  const double elapsedMs = static_cast<double>(elapsedNs) / 1000000.0;
  // Room for the longest time, 2^64 - 1 nanoseconds, and the terminating zero.
  std::to_chars(text.data(), text.data() + text.size() - 1, elapsedMs, std::chars_format::fixed, 1);
  return text;
}

}  // namespace

[[gnu::format(printf, 1, 0)]] void defaultLogCallback(const char* format, std::uint32_t level,
                                                      std::uint64_t elapsedNs,
                                                      std::va_list arguments) {
  std::array<char, kLineSize> line{};
  // The longest prefix is far shorter than the line.
  const int prefixLength = std::snprintf(line.data(), line.size(), "%8sms [%-7s] ",
                                         elapsedText(elapsedNs).data(), levelLabel(level));
  const auto used = static_cast<std::size_t>(prefixLength);
  std::vsnprintf(line.data() + used, line.size() - used, format, arguments);
  std::puts(line.data());
}

}  // namespace vyn::log
