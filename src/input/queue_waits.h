#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "input/execution_records.h"

namespace vyn::profiling {

/// The queue waits of graphs that were executed asynchronously. Each of the three is empty when an
/// execution that it looks at has not exactly one queue-wait event among its events and their
/// direct sub-events; `messages` then has a line for it.
struct QueueWaits {
  std::vector<NamedSeries> series;  ///< of every execution
  std::vector<NamedValue> slowest;  ///< of each graph's slowest execution
  std::vector<NamedValue> fastest;
  std::string messages;
};

QueueWaits queueWaitsOf(const std::vector<ExecutionGroup>& groups);

/// One figure of a graph for the summary, in microseconds. The name belongs to what it was made of.
struct ExecuteFigure {
  std::string_view name;
  std::uint64_t duration = 0;
  std::optional<std::uint64_t> durationWithoutWait;
};

/// The figures less the queue wait that their graph has in `waits`: the first one of its name, a
/// series counting with its mean. A graph without one has no such duration.
std::vector<ExecuteFigure> withoutQueueWait(const std::vector<EventGroup>& figures,
                                            const std::vector<NamedSeries>& waits);
std::vector<ExecuteFigure> withoutQueueWait(const std::vector<EventGroup>& figures,
                                            const std::vector<NamedValue>& waits);

}  // namespace vyn::profiling
