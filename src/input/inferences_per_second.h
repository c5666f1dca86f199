#pragma once

#include <optional>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Inferences per second of a run, from the first two events of its message: one is the duration in
/// microseconds, the other the number of inferences. 0 for a duration of 0; empty with fewer
/// events.
std::optional<float> inferencesPerSecond(const std::vector<EventNode>& events);

}  // namespace vyn::profiling
