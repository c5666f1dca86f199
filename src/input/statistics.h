#pragma once

#include <vector>

#include "input/event_copies.h"
#include "input/execution_records.h"

namespace vyn::profiling {

// Pure functions over the executions of graphs. A group holds at least one record.

/// The longest and the shortest execution; of several, the last one.
const ExecutionRecord& slowestOf(const ExecutionGroup& group);
const ExecutionRecord& fastestOf(const ExecutionGroup& group);

/// The events of each of the three, copied. They are made when they are listed and are gone
/// afterwards: kept, they would take as much memory as the executions once more.
std::vector<EventNode> averageEventsOf(const ExecutionGroup& group, Payloads payloads);
std::vector<EventNode> slowestEventsOf(const ExecutionGroup& group, Payloads payloads);
std::vector<EventNode> fastestEventsOf(const ExecutionGroup& group, Payloads payloads);

using EventsOf = std::vector<EventNode> (*)(const ExecutionGroup&, Payloads);

/// A figure for each graph, in their order: the mean duration (truncated) with the last record's
/// time stamp, and those of the chosen executions
/// (without their events, which stay where they are until they are listed).
std::vector<EventGroup> averagesOf(const std::vector<ExecutionGroup>& groups);
std::vector<EventGroup> slowestFiguresOf(const std::vector<ExecutionGroup>& groups);
std::vector<EventGroup> fastestFiguresOf(const std::vector<ExecutionGroup>& groups);

}  // namespace vyn::profiling
