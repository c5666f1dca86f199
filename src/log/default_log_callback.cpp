#include <array>
#include <cstddef>
#include <cstdio>

#include "log/logger.h"
#include "log/plain_number_locale.h"

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

}  // namespace

[[gnu::format(printf, 1, 0)]] void defaultLogCallback(const char* format, std::uint32_t level,
                                                      std::uint64_t elapsedNs,
                                                      std::va_list arguments) {
  const PlainNumberLocale plainNumbers;
  std::array<char, kLineSize> line{};
  const double elapsedMs = static_cast<double>(elapsedNs) / 1000000.0;
  // The longest prefix, with 2^64 - 1 nanoseconds, is far shorter than the line.
  const int prefixLength =
      std::snprintf(line.data(), line.size(), "%8.1fms [%-7s] ", elapsedMs, levelLabel(level));
  const auto used = static_cast<std::size_t>(prefixLength);
  std::vsnprintf(line.data() + used, line.size() - used, format, arguments);
  std::puts(line.data());
}

}  // namespace vyn::log
