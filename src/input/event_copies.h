#pragma once

#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// What copied events do with their payload bytes. A log can name the same bytes thousands of
/// times: copies that nothing is written from leave them out.
enum class Payloads { kKept, kLeftOut };

/// The event by itself.
EventNode copyWithoutChildren(const EventNode& event, Payloads payloads);

/// The event with all its sub-events.
EventNode copyOf(const EventNode& event, Payloads payloads);

/// The events with all their sub-events.
std::vector<EventNode> copyOf(const std::vector<EventNode>& events, Payloads payloads);

/// The same without the OBJECT events among them; those among their sub-events stay.
std::vector<EventNode> copyWithoutObjects(const std::vector<EventNode>& events, Payloads payloads);

}  // namespace vyn::profiling
