#pragma once

#include <functional>
#include <ostream>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Prints events and their direct sub-events, a line each. An OBJECT event has no line: it is
/// handed to `takeObject`, in its place.
void printEventLines(std::ostream& stream, const std::vector<EventNode>& events,
                     const std::function<void(const EventNode&)>& takeObject);

}  // namespace vyn::profiling
