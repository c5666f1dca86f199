#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "input/event_copies.h"
#include "input/execution_records.h"

namespace vyn::profiling {

// Pure functions over the executions of one graph. A group holds at least one record.

/// Mean duration (truncated) and the last record's time stamp, without events.
EventGroup averageOf(const ExecutionGroup& group);

/// The longest and the shortest execution; of several, the last one.
const ExecutionRecord& slowestOf(const ExecutionGroup& group);
const ExecutionRecord& fastestOf(const ExecutionGroup& group);

/// The events of each of the three, copied. They are made when they are listed and are gone
/// afterwards: kept, they would take as much memory as the executions once more.
std::vector<EventNode> averageEventsOf(const ExecutionGroup& group, Payloads payloads);
std::vector<EventNode> slowestEventsOf(const ExecutionGroup& group, Payloads payloads);
std::vector<EventNode> fastestEventsOf(const ExecutionGroup& group, Payloads payloads);

/// The queue wait (microseconds) of one execution, which must have exactly one queue-wait event
/// among its events and their direct sub-events; otherwise empty.
std::optional<std::uint64_t> queueWaitOf(const std::vector<EventNode>& events);

}  // namespace vyn::profiling
