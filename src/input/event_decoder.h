#pragma once

#include <profile_log_generated.h>

#include <list>
#include <string>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

using EventVector = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

/// Decodes events with all their sub-events, in order; an absent vector gives none. The texts of
/// string-valued events are appended to `strings`, which must outlive the nodes.
std::vector<EventNode> decodeEvents(const EventVector* events, std::list<std::string>& strings);

}  // namespace vyn::profiling
