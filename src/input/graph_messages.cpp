// Messages that belong to a graph: each adds to what earlier ones left. The flags that they set
// stay set for all later messages, whatever those hold.
//
// All that can fail for want of memory stands before the first change of a store, or leaves it as
// it was: no message is taken by half.

#include <algorithm>
#include <list>
#include <utility>

#include "core/vyn_profile_log_reader.h"
#include "input/event_decoder.h"
#include "input/event_kind.h"
#include "input/message_duration.h"
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

}  // namespace

bool VynProfileLogReader::takeExecute(const schema::Message& message) {
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  addExecution(message, std::move(record));
  keepInitEvents(std::move(initEvents));
  keepStrings(strings);
  return true;
}

bool VynProfileLogReader::takeExecuteAsync(const schema::Message& message) {
  // Even a message that the filter rejects makes the run an asynchronous one.
  m_asyncExecute = true;
  return takeExecute(message);
}

bool VynProfileLogReader::takeApplyBinarySection(const schema::Message& message) {
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  m_applyBinarySectionGroupIndex.add(m_applyBinarySectionGroups, message.graphName()->string_view(),
                                     m_nameFingerprints, std::move(record));
  keepStrings(strings);
  return true;
}

bool VynProfileLogReader::takeFinalize(const schema::Message& message) {
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  std::list<std::string> strings;
  ExecutionRecord record = decodeExecution(message, strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  addFinalizeGroup(
      {message.graphName()->str(), record.duration, record.timestamp, std::move(record.events)});
  m_hasFinalize = true;
  keepInitEvents(std::move(initEvents));
  keepStrings(strings);
  return true;
}

bool VynProfileLogReader::takeGraphComponent(const schema::Message& message) {
  // A component without a written level is rejected; one with a name always has the level's slot.
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  // Components carry no time of their own: their records keep duration and time stamp 0.
  std::list<std::string> strings;
  ExecutionRecord record;
  record.events = decodeEvents(message.profilingEvents(), strings);
  auto initEvents = extractEvents(record.events, schema::EventType::INIT);
  EventGroup finalize{message.graphName()->str(), 0, 0,
                      extractEvents(record.events, schema::EventType::FINALIZE)};
  makeRoomForOne(m_finalizeGroups);
  addExecution(message, std::move(record));
  addFinalizeGroup(std::move(finalize));
  keepInitEvents(std::move(initEvents));
  keepStrings(strings);
  return true;
}

ExecutionRecord VynProfileLogReader::decodeExecution(const schema::Message& message,
                                                     std::list<std::string>& strings) {
  return {messageDuration(message), message.header()->timestamp(),
          decodeEvents(message.profilingEvents(), strings)};
}

void VynProfileLogReader::keepInitEvents(std::vector<EventNode>&& initEvents) noexcept {
  m_hasInitEvents |= !initEvents.empty();
  // Once any message had init events, a later message without them empties the list.
  if (m_hasInitEvents) {
    m_initEvents = std::move(initEvents);
  }
}

void VynProfileLogReader::keepStrings(std::list<std::string>& strings) noexcept {
  m_eventStrings.splice(m_eventStrings.end(), strings);
}

void VynProfileLogReader::addExecution(const schema::Message& message, ExecutionRecord&& record) {
  m_executeGroupIndex.add(m_executeGroups, message.graphName()->string_view(), m_nameFingerprints,
                          std::move(record));
}

void VynProfileLogReader::addFinalizeGroup(EventGroup&& group) {
  makeRoomForOne(m_finalizeGroups);
  m_hasFinalizeEvents |= !group.events.empty();
  // Once one finalize message had events, later ones make a group even without any.
  if (m_hasFinalizeEvents) {
    m_finalizeGroups.push_back(std::move(group));
  }
}

}  // namespace vyn::profiling
