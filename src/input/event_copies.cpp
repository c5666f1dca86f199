#include "input/event_copies.h"

#include <algorithm>

#include "input/event_kind.h"

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

EventNode copyOf(const EventNode& event, Payloads payloads) {
  EventNode copy = copyWithoutChildren(event, payloads);
  copy.children = copyOf(event.children, payloads);
  return copy;
}

std::vector<EventNode> copyOf(const std::vector<EventNode>& events, Payloads payloads) {
  std::vector<EventNode> copies;
  copies.reserve(events.size());
  for (const EventNode& event : events) {
    copies.push_back(copyOf(event, payloads));
  }
  return copies;
}

std::vector<EventNode> copyWithoutObjects(const std::vector<EventNode>& events, Payloads payloads) {
  std::vector<EventNode> copies;
  copies.reserve(events.size() - static_cast<std::size_t>(
                                     std::count_if(events.begin(), events.end(), isObjectEvent)));
  for (const EventNode& event : events) {
    if (!isObjectEvent(event)) {
      copies.push_back(copyOf(event, payloads));
    }
  }
  return copies;
}

}  // namespace vyn::profiling
