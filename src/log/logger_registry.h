#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "log/logger.h"

namespace vyn::log {

/// The loggers that are alive, by handle. Process-wide; see core/process_state.cpp.
struct LoggerRegistry {
  std::unordered_map<std::uint64_t, std::shared_ptr<Logger>> loggers;
  std::mutex mutex;  // guards `loggers`
};

extern LoggerRegistry g_loggerRegistry;

/// Opaque handle of the current logger; 0 until logging is initialised. Not guarded: only the
/// thread that drives the readers initialises logging.
extern std::uint64_t g_currentLogger;

/// Replaces the current logger. A null callback stands for defaultLogCallback. Returns false, with
/// logging off, when `maxLevel` is not within 1 to 5. Returns true with logging off when the logger
/// itself cannot be allocated; std::bad_alloc leaves it when the registry cannot grow.
bool initializeLogging(LogCallback callback, std::int32_t maxLevel);

/// Removes the current logger. Its handle stays current, so every look-up finds nothing.
void terminateLogging();

/// The logger under `handle`, kept alive by the result; empty when there is none.
std::shared_ptr<Logger> getLogger(std::uint64_t handle);

/// The current logger's callback, or null.
LogCallback getLogCallback();

/// The current logger's maximum level, or kUnknownLevel.
std::int32_t getMaxLogLevel();

bool isLoggingInitialized();

/// Returns false when there is no logger or `level` is not within 1 to 5.
bool setMaxLogLevel(std::int32_t level);

/// Logs through the current logger, if there is one that admits `level`; formats nothing otherwise.
[[gnu::format(printf, 2, 3)]] void log(std::uint32_t level, const char* format, ...);

}  // namespace vyn::log
