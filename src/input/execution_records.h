#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

// Durations are in microseconds; time stamps are the messages' own.

/// One execution of a graph.
struct ExecutionRecord {
  std::uint64_t duration = 0;
  std::uint64_t timestamp = 0;
  std::vector<EventNode> events;
};

/// All executions of one graph, in the order of the log.
struct ExecutionGroup {
  std::string name;
  std::vector<ExecutionRecord> records;
};

/// One figure for a graph: its finalize step, or its average, slowest or fastest execution. Only a
/// finalize step has its events here; the others' are taken from the executions when listed.
struct EventGroup {
  std::string name;
  std::uint64_t duration = 0;
  std::uint64_t timestamp = 0;
  std::vector<EventNode> events;
};

/// A graph's queue waits in microseconds, one for each execution.
struct NamedSeries {
  std::string name;
  std::vector<std::uint64_t> values;
};

/// A graph's queue wait in microseconds in one chosen execution.
struct NamedValue {
  std::string name;
  std::uint64_t value = 0;
};

}  // namespace vyn::profiling
