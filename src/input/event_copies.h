#pragma once

#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// What copied events do with their payload bytes. A log can name the same bytes thousands of
/// times: copies that nothing is written from leave them out.
enum class Payloads { kKept, kLeftOut };

/// The event by itself.
EventNode copyWithoutChildren(const EventNode& event, Payloads payloads);

/// The events with all their sub-events.
std::vector<EventNode> copyOf(const std::vector<EventNode>& events, Payloads payloads);

}  // namespace vyn::profiling
