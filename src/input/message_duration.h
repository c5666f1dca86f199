#pragma once

#include <profile_log_generated.h>

#include <cstdint>

namespace vyn::profiling {

/// Microseconds from start to stop; 0 when stop is not later, or when either was not recorded.
/// Never wraps.
inline std::uint64_t messageDuration(const schema::Message& message) {
  const schema::AppMetrics& metrics = *message.appMetrics();
  // An absent start is no start at time 0: the accessors alone cannot tell the two apart.
  const bool isTimed = flatbuffers::IsFieldPresent(&metrics, schema::AppMetrics::VT_STARTTIME) &&
                       metrics.stopTime() > metrics.startTime();
  return isTimed ? metrics.stopTime() - metrics.startTime() : 0;
}

}  // namespace vyn::profiling
