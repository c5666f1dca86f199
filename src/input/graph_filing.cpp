// Messages that belong to a graph. All that can fail for want of memory stands before the first
// change of a store, or leaves it as it was: no message is taken by half.

#include <algorithm>
#include <list>
#include <utility>

#include "input/event_decoder.h"
#include "input/event_kind.h"
#include "input/message_duration.h"
#include "input/message_filing.h"
#include "input/room_for_one.h"

namespace vyn::profiling {
namespace {

// Moves the events of one type out of `events`; both lists keep their order and have no room to
// spare.
std::vector<EventNode> extractEvents(std::vector<EventNode>& events, schema::EventType type) {
  const auto count = static_cast<std::size_t>(std::count_if(
      events.begin(), events.end(), [&](const EventNode& event) { return hasType(event, type); }));
  std::vector<EventNode> extracted;
  if (count == 0) {
    return extracted;
  }
  if (count == events.size()) {
    extracted.swap(events);
    return extracted;
  }
  std::vector<EventNode> others;
  extracted.reserve(count);
  others.reserve(events.size() - count);
  for (EventNode& event : events) {
    (hasType(event, type) ? extracted : others).push_back(std::move(event));
  }
  events = std::move(others);
  return extracted;
}

ExecutionRecord decodeExecution(const schema::Message& message, std::list<std::string>& strings) {
  return {.duration = messageDuration(message),
          .timestamp = message.header()->timestamp(),
          .events = decodeEvents(message.profilingEvents(), strings)};
}

void keepInitEvents(std::vector<EventNode>&& initEvents, const GraphStores& stores) noexcept {
  stores.hasInitEvents |= !initEvents.empty();
  // Once any message had init events, a later message without them empties the list.
  if (stores.hasInitEvents) {
    stores.initEvents = std::move(initEvents);
  }
}

void keepStrings(std::list<std::string>& strings, const GraphStores& stores) noexcept {
  stores.strings.splice(stores.strings.end(), strings);
}

void addExecution(const schema::Message& message, ExecutionRecord&& record,
                  const GraphStores& stores) {
  stores.executionIndex.add(stores.executions, message.graphName()->string_view(),
                            stores.nameFingerprints, std::move(record));
}

void addFinalizeGroup(EventGroup&& group, const GraphStores& stores) {
  makeRoomForOne(stores.finalizeGroups);
  stores.hasFinalizeEvents |= !group.events.empty();
  // Once one finalize message had events, later ones make a group even without any.
  if (stores.hasFinalizeEvents) {
    stores.finalizeGroups.push_back(std::move(group));
  }
}

}  // namespace

void fileExecution(const schema::Message& message, const GraphStores& stores) {
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  addExecution(message, std::move(record), stores);
  keepInitEvents(std::move(initEvents), stores);
  keepStrings(strings, stores);
}

void fileBinarySection(const schema::Message& message, const GraphStores& stores) {
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  stores.binarySectionIndex.add(stores.binarySections, message.graphName()->string_view(),
                                stores.nameFingerprints, std::move(record));
  keepStrings(strings, stores);
}

void fileFinalize(const schema::Message& message, const GraphStores& stores) {
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  addFinalizeGroup({.name = message.graphName()->str(),
                    .duration = record.duration,
                    .timestamp = record.timestamp,
                    .events = std::move(record.events)},
                   stores);
  stores.hasFinalize = true;
  keepInitEvents(std::move(initEvents), stores);
  keepStrings(strings, stores);
}

void fileGraphComponent(const schema::Message& message, const GraphStores& stores) {
  // Components carry no time of their own: their records keep duration and time stamp 0.
  std::list<std::string> strings;
  ExecutionRecord record;
  record.events = decodeEvents(message.profilingEvents(), strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  EventGroup finalize{.name = message.graphName()->str(),
                      .duration = 0,
                      .timestamp = 0,
                      .events = extractEvents(record.events, schema::EventType::FINALIZE)};
  makeRoomForOne(stores.finalizeGroups);
  addExecution(message, std::move(record), stores);
  addFinalizeGroup(std::move(finalize), stores);
  keepInitEvents(std::move(initEvents), stores);
  keepStrings(strings, stores);
}

}  // namespace vyn::profiling
