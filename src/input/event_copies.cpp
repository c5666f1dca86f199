#include "input/event_copies.h"

namespace vyn::profiling {

EventNode copyWithoutChildren(const EventNode& event, Payloads payloads) {
  EventNode copy;
  copy.type = event.type;
  copy.dataType = event.dataType;
  copy.value = event.value;
  if (payloads == Payloads::kKept) {
    copy.rawData = event.rawData;
  }
  copy.identifier = event.identifier;
  copy.secondaryName = event.secondaryName;
  copy.unit = event.unit;
  copy.extraValue = event.extraValue;
  copy.count = event.count;
  return copy;
}

std::vector<EventNode> copyOf(const std::vector<EventNode>& events, Payloads payloads) {
  std::vector<EventNode> copies;
  copies.reserve(events.size());
  for (const EventNode& event : events) {
    copies.push_back(copyWithoutChildren(event, payloads));
    copies.back().children = copyOf(event.children, payloads);
  }
  return copies;
}

}  // namespace vyn::profiling
