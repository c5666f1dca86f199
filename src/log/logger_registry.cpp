#include "log/logger_registry.h"

#include <new>
#include <utility>

namespace vyn::log {
namespace {

// Its lowest byte meets the highest byte of an address, which is 0: no handle is ever 0.
constexpr std::uint64_t kHandleMask = 0x9D4B7A31C65F20E7;

std::uint64_t handleOf(const Logger* logger) {
  return __builtin_bswap64(reinterpret_cast<std::uintptr_t>(logger)) ^ kHandleMask;
}

void eraseLogger(std::uint64_t handle) {
  const std::lock_guard lock(g_loggerRegistry.mutex);
  g_loggerRegistry.loggers.erase(handle);
}

}  // namespace

bool initializeLogging(LogCallback callback, std::int32_t maxLevel) {
  if (g_currentLogger != 0) {
    eraseLogger(g_currentLogger);
  }
  std::uint64_t status = 0;
  const std::shared_ptr<Logger> logger(new (std::nothrow) Logger(callback, maxLevel, &status));
  if (status != 0) {
    g_currentLogger = 0;
    return false;
  }
  // Without memory for a logger, logging stays off and callers go on as if it were on.
  if (logger == nullptr) {
    return true;
  }
  const std::uint64_t handle = handleOf(logger.get());
  {
    const std::lock_guard lock(g_loggerRegistry.mutex);
    g_loggerRegistry.loggers[handle] = logger;
  }
  g_currentLogger = handle;
  return true;
}

void terminateLogging() { eraseLogger(g_currentLogger); }

std::shared_ptr<Logger> getLogger(std::uint64_t handle) {
  const std::lock_guard lock(g_loggerRegistry.mutex);
  const auto found = g_loggerRegistry.loggers.find(handle);
  return found != g_loggerRegistry.loggers.end() ? found->second : nullptr;
}

LogCallback getLogCallback() {
  const auto logger = getLogger(g_currentLogger);
  return logger != nullptr ? logger->callback() : nullptr;
}

std::int32_t getMaxLogLevel() {
  const auto logger = getLogger(g_currentLogger);
  return logger != nullptr ? logger->maxLevel() : kUnknownLevel;
}

bool isLoggingInitialized() { return getLogger(g_currentLogger) != nullptr; }

bool setMaxLogLevel(std::int32_t level) {
  const auto logger = getLogger(g_currentLogger);
  return logger != nullptr && logger->setMaxLevel(level);
}

void log(std::uint32_t level, const char* format, ...) {
  const auto logger = getLogger(g_currentLogger);
  if (logger == nullptr || std::cmp_less(logger->maxLevel(), level)) {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  try {
    logger->logV(level, "", 0, format, arguments);
  } catch (...) {
    va_end(arguments);
    throw;
  }
  va_end(arguments);
}

}  // namespace vyn::log
