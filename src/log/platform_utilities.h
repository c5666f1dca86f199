#pragma once

#include <cstdint>

namespace vyn::log {

/// Wall-clock time since the Unix epoch; 16 bytes.
struct TimeOfDay {
  std::int64_t seconds;
  std::int64_t microseconds;
};

/// Fills `out` and returns 0, or returns -1 and leaves `out` alone.
int getTimeOfDay(TimeOfDay* out);

/// Sleeps for `milliseconds` and returns 0.
int sleepMilliseconds(std::uint32_t milliseconds);

}  // namespace vyn::log
