#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "input/execution_records.h"
#include "input/group_index.h"
#include "input/text_fingerprints.h"
#include "vyn/profiling/event_node.h"
#include "vyn/profiling/visibility_level.h"

namespace vyn::profiling {

// Each file operation decodes one message, puts it into the stores that it is handed and returns
// whether it did. One that throws, for want of memory, leaves the stores as they were.

/// When the latest message of a step was, and how long the step took in microseconds.
struct StepTimes {
  std::uint64_t& duration;
  std::uint64_t& timestamp;
};

/// Where the latest message of a step of the whole run stands. Durations are in microseconds.
struct StepStore {
  std::uint64_t& duration;
  std::uint64_t& timestamp;
  std::vector<EventNode>& events;
  bool* isSeen = nullptr;  ///< set by the first message, for steps that have such a flag
};

/// Where the messages of graphs stand, each of which adds to what earlier ones left. The flags stay
/// set for all later messages, whatever those hold.
struct GraphStores {
  std::vector<EventNode>& initEvents;
  bool& hasInitEvents;
  std::vector<EventGroup>& finalizeGroups;
  bool& hasFinalize;
  bool& hasFinalizeEvents;
  std::vector<ExecutionGroup>& executions;
  GroupIndex& executionIndex;
  std::vector<ExecutionGroup>& binarySections;
  GroupIndex& binarySectionIndex;
  TextFingerprints& nameFingerprints;  ///< of the chunk that the message stands in
  std::list<std::string>& strings;     ///< what string-valued events point to
};

/// True for a message that a reader of this level takes: one of a lower level.
inline bool isVisible(const schema::Message& message, VisibilityLevel readersLevel) {
  return message.visibilityLevel() < static_cast<std::int8_t>(readersLevel);
}

/// The time stamp is stored even of a message that is not taken.
bool fileTiming(const schema::Message& message, bool isTaken, const StepTimes& times);

bool fileStep(const schema::Message& message, const StepStore& store,
              std::list<std::string>& strings);

// Messages without a graph's name are not taken.
bool fileExecution(const schema::Message& message, const GraphStores& stores);
bool fileFinalize(const schema::Message& message, const GraphStores& stores);
bool fileGraphComponent(const schema::Message& message, const GraphStores& stores);
bool fileBinarySection(const schema::Message& message, const GraphStores& stores);

}  // namespace vyn::profiling
