#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "logmaker/graph_profile.h"
#include "logmaker/log_content.h"
#include "logmaker/noise.h"

namespace vyn::logmaker {

// What the backend reports in the messages of a run.

/// Events and the time that they account for.
struct TimedEvents {
  std::vector<Event> events;
  std::uint64_t microseconds;
};

std::vector<Event> makeInitEvents(Noise& noise);
TimedEvents makeLibraryLoadEvents(Noise& noise);
TimedEvents makeFinalizeEvents(const GraphProfile& graph, Noise& noise);
TimedEvents makeBinarySectionEvents(Noise& noise);
TimedEvents makeExecuteEvents(const GraphProfile& graph, bool isAsync, Noise& noise);
std::vector<Event> makeComponentEvents(const GraphProfile& component, bool isAsync, Noise& noise);
TimedEvents makeDeInitEvents(Noise& noise);

/// An OBJECT event whose bytes readers put into a file named after the graph and the number.
Event makePayloadEvent(const GraphProfile& graph, std::size_t number, Noise& noise);

/// How long so many executions took together; readers look for the name "duration".
std::vector<Event> makeIpsEvents(std::uint64_t microseconds, std::uint64_t executions);

}  // namespace vyn::logmaker
