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

/// Where all messages of a run stand.
struct RunStores {
  StepTimes contextCreate;
  StepTimes composeGraphs;
  StepStore createFromBinary;
  StepStore deInit;
  StepStore executeIps;
  StepStore libraryLoad;
  bool& isAsync;  ///< the run executed asynchronously
  GraphStores graphs;
};

/// Decodes a message, puts it into the store of its method and returns whether it did: a reader
/// takes messages of a lower level than its own, and of graphs those that name one. A method that
/// is not known is told in a log line. When it throws, for want of memory, the stores are as
/// before.
///
/// Two things are noted of messages that are not taken, too: that a run is asynchronous, and when
/// its context was created or its graphs were composed.
bool fileMessage(const schema::Message& message, VisibilityLevel readersLevel,
                 const RunStores& stores);

// The same for messages that are taken, each for one kind of store. The last four name a graph.
void fileTiming(const schema::Message& message, const StepTimes& times);
void fileStep(const schema::Message& message, const StepStore& store,
              std::list<std::string>& strings);
void fileExecution(const schema::Message& message, const GraphStores& stores);
void fileFinalize(const schema::Message& message, const GraphStores& stores);
void fileGraphComponent(const schema::Message& message, const GraphStores& stores);
void fileBinarySection(const schema::Message& message, const GraphStores& stores);

}  // namespace vyn::profiling
