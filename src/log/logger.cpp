#include "log/logger.h"

#include <string>
#include <utility>

#include "base/copied_text.h"

namespace vyn::log {
namespace {

bool isValidLevel(std::int32_t level) {
  return std::cmp_greater_equal(level, kError) && std::cmp_less_equal(level, kDebug);
}

}  // namespace

Logger::Logger(LogCallback logCallback, std::int32_t maximumLevel, std::uint64_t* status)
    : m_callback(logCallback != nullptr ? logCallback : defaultLogCallback),
      m_maxLevel(maximumLevel),
      m_startTime(std::chrono::system_clock::now()) {
  if (status != nullptr) {
    *status = isValidLevel(maximumLevel) ? 0 : kInvalidLevelStatus;
  }
}

bool Logger::setMaxLevel(std::int32_t level) {
  if (!isValidLevel(level)) {
    return false;
  }
  m_maxLevel.store(level);
  return true;
}

void Logger::log(std::uint32_t level, const char* file, std::uint32_t line, const char* format,
                 ...) {
  if (m_callback == nullptr || std::cmp_less(m_maxLevel.load(), level)) {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  try {
    logV(level, file, line, format, arguments);
  } catch (...) {
    va_end(arguments);
    throw;
  }
  va_end(arguments);
}

void Logger::logV(std::uint32_t level, const char* /*file*/, std::uint32_t /*line*/,
                  const char* format, std::va_list arguments) {
  logV(level, format, arguments);
}

void Logger::logV(std::uint32_t level, const char* format, std::va_list arguments) {
  const std::string formatCopy = copiedText(format);
  const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(
      std::chrono::system_clock::now() - m_startTime);
  m_callback(formatCopy.c_str(), level, static_cast<std::uint64_t>(elapsed.count()), arguments);
}

}  // namespace vyn::log
