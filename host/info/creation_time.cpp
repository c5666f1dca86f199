#include "host/info/creation_time.h"

#include <array>
#include <ctime>

namespace vyn::host {
namespace {

std::string formatted(std::tm* (*convert)(const std::time_t*, std::tm*), std::uint64_t epochTime,
                      const char* format) {
  constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;
  constexpr std::size_t kMaxText = 40;  // bytes; the latest year has six digits
  const auto seconds = static_cast<std::time_t>(epochTime / kMicrosecondsPerSecond);
  std::tm calendar{};
  if (convert(&seconds, &calendar) == nullptr) {
    return "";
  }
  std::array<char, kMaxText> text{};
  return {text.data(), std::strftime(text.data(), text.size(), format, &calendar)};
}

}  // namespace

std::string utcTime(std::uint64_t epochTime) {
  return formatted(gmtime_r, epochTime, "%Y-%m-%dT%H:%M:%SZ");
}

std::string localTime(std::uint64_t epochTime) {
  return formatted(localtime_r, epochTime, "%Y-%m-%d %H:%M:%S %z");
}

}  // namespace vyn::host
