#pragma once

#include <profile_log_generated.h>

#include <cstdint>

namespace vyn::profiling {

/// Microseconds from start to stop; 0 when stop is not later. Never wraps.
inline std::uint64_t messageDuration(const schema::Message& message) {
  const schema::AppMetrics& metrics = *message.appMetrics();
  return metrics.stopTime() > metrics.startTime() ? metrics.stopTime() - metrics.startTime() : 0;
}

}  // namespace vyn::profiling
