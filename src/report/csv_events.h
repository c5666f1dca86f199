#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Writes events and their direct sub-events, but OBJECT ones, as lines of the step that `keyword`
/// names. `timestamp` is the step's.
void writeEventLines(std::ostream& stream, const std::vector<EventNode>& events,
                     std::uint64_t timestamp, const std::string& keyword);

}  // namespace vyn::profiling
