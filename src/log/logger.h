#pragma once

#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdint>
#include <limits>

namespace vyn::log {

/// Receives each admitted message: printf format, level, nanoseconds since the logger was made, and
/// the format's arguments.
using LogCallback = void (*)(const char* format, std::uint32_t level, std::uint64_t elapsedNs,
                             std::va_list arguments);

inline constexpr std::uint32_t kError = 1;
inline constexpr std::uint32_t kWarning = 2;
inline constexpr std::uint32_t kInfo = 3;
inline constexpr std::uint32_t kVerbose = 4;
inline constexpr std::uint32_t kDebug = 5;

/// Stands for the maximum level where there is no logger.
inline constexpr std::int32_t kUnknownLevel = std::numeric_limits<std::int32_t>::max();

/// Written to a logger's status when its maximum level is out of range.
inline constexpr std::uint64_t kInvalidLevelStatus = 11003;

/// Writes one line to standard output: elapsed milliseconds, the level's label, the message. The
/// whole line is cut at 1023 characters.
void defaultLogCallback(const char* format, std::uint32_t level, std::uint64_t elapsedNs,
                        std::va_list arguments);

/// Passes messages up to a maximum level to a callback.
class Logger {
 public:
  /// A null callback stands for defaultLogCallback. `status`, when given, receives 0 for a maximum
  /// level of 1 to 5 and kInvalidLevelStatus otherwise; the level is stored all the same.
  Logger(LogCallback logCallback, std::int32_t maximumLevel, std::uint64_t* status = nullptr);

  /// Returns false and keeps the old level when `level` is not within 1 to 5.
  bool setMaxLevel(std::int32_t level);

  std::int32_t maxLevel() const { return m_maxLevel.load(); }
  LogCallback callback() const { return m_callback; }

  /// Calls the callback when `level` is admitted. `file` and `line` are ignored. A null `format`
  /// throws std::logic_error.
  [[gnu::format(printf, 5, 6)]] void log(std::uint32_t level, const char* file, std::uint32_t line,
                                         const char* format, ...);

  /// The same for callers that hold a va_list and have tested the level themselves.
  [[gnu::format(printf, 5, 0)]] void logV(std::uint32_t level, const char* file, std::uint32_t line,
                                          const char* format, std::va_list arguments);
  [[gnu::format(printf, 3, 0)]] void logV(std::uint32_t level, const char* format,
                                          std::va_list arguments);

 private:
  LogCallback m_callback;
  std::atomic<std::int32_t> m_maxLevel;
  std::chrono::system_clock::time_point m_startTime;
};

}  // namespace vyn::log
