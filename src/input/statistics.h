#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "input/execution_records.h"

namespace vyn::profiling {

// Pure functions over the executions of one graph. A group holds at least one record.

/// Mean duration (truncated), the last record's time stamp, and the mean events.
EventGroup averageOf(const ExecutionGroup& group);

/// The longest and the shortest execution; of several, the last one.
EventGroup slowestOf(const ExecutionGroup& group);
EventGroup fastestOf(const ExecutionGroup& group);

/// The queue wait (microseconds) of one execution, which must have exactly one queue-wait event
/// among its events and their direct sub-events; otherwise empty.
std::optional<std::uint64_t> queueWaitOf(const std::vector<EventNode>& events);

}  // namespace vyn::profiling
