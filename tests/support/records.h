#pragma once

#include <string>
#include <utility>
#include <vector>

#include "input/execution_records.h"
#include "input/init_time.h"

namespace vyn::test {

/// One execution of a graph, as the summary reader keeps it.
inline profiling::ExecutionRecord execution(profiling::StepTime time,
                                            std::vector<profiling::EventNode> events = {}) {
  return {time.duration, time.timestamp, std::move(events)};
}

/// One figure for a graph, as the summary reader keeps it.
inline profiling::EventGroup figure(std::string graph, profiling::StepTime time,
                                    std::vector<profiling::EventNode> events = {}) {
  return {std::move(graph), time.duration, time.timestamp, std::move(events)};
}

}  // namespace vyn::test
