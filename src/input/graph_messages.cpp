// Messages that belong to a graph: each adds to what earlier ones left. The flags that they set
// stay set for all later messages, whatever those hold.

#include <utility>

#include "core/vyn_profile_log_reader.h"
#include "input/event_decoder.h"
#include "input/event_kind.h"
#include "input/message_duration.h"

namespace vyn::profiling {
namespace {

// Moves the events of one type out of `events`; both lists keep their order.
std::vector<EventNode> extractEvents(std::vector<EventNode>& events, schema::EventType type) {
  std::vector<EventNode> extracted;
  std::vector<EventNode> others;
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
  ExecutionRecord record = decodeExecution(message);
  keepInitEvents(extractEvents(record.events, schema::EventType::INIT));
  addExecution(message, std::move(record));
  return true;
}

bool VynProfileLogReader::takeApplyBinarySection(const schema::Message& message) {
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  m_applyBinarySectionGroupIndex
      .groupNamed(m_applyBinarySectionGroups, message.graphName()->string_view())
      .records.push_back(decodeExecution(message));
  return true;
}

bool VynProfileLogReader::takeFinalize(const schema::Message& message) {
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  m_hasFinalize = true;
  ExecutionRecord record = decodeExecution(message);
  keepInitEvents(extractEvents(record.events, schema::EventType::INIT));
  m_hasFinalizeEvents |= !record.events.empty();
  // Once one finalize message had events, later ones make a group even without any.
  if (m_hasFinalizeEvents) {
    m_finalizeGroups.push_back(
        {message.graphName()->str(), record.duration, record.timestamp, std::move(record.events)});
  }
  return true;
}

bool VynProfileLogReader::takeGraphComponent(const schema::Message& message) {
  // A component without a written level is rejected; one with a name always has the level's slot.
  if (!isVisible(message) || message.graphName() == nullptr) {
    return false;
  }
  // Components carry no time of their own: their records keep duration and time stamp 0.
  ExecutionRecord record;
  record.events = decodeEvents(message.profilingEvents(), m_eventStrings);
  keepInitEvents(extractEvents(record.events, schema::EventType::INIT));
  auto finalizeEvents = extractEvents(record.events, schema::EventType::FINALIZE);
  m_hasFinalizeEvents |= !finalizeEvents.empty();
  if (m_hasFinalizeEvents) {
    m_finalizeGroups.push_back({message.graphName()->str(), 0, 0, std::move(finalizeEvents)});
  }
  addExecution(message, std::move(record));
  return true;
}

ExecutionRecord VynProfileLogReader::decodeExecution(const schema::Message& message) {
  return {messageDuration(message), message.header()->timestamp(),
          decodeEvents(message.profilingEvents(), m_eventStrings)};
}

void VynProfileLogReader::keepInitEvents(std::vector<EventNode> initEvents) {
  m_hasInitEvents |= !initEvents.empty();
  // Once any message had init events, a later message without them empties the list.
  if (m_hasInitEvents) {
    m_initEvents = std::move(initEvents);
  }
}

void VynProfileLogReader::addExecution(const schema::Message& message, ExecutionRecord record) {
  m_executeGroupIndex.groupNamed(m_executeGroups, message.graphName()->string_view())
      .records.push_back(std::move(record));
}

}  // namespace vyn::profiling
