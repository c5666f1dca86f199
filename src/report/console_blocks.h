#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <ostream>
#include <vector>

#include "input/execution_records.h"
#include "input/queue_waits.h"
#include "report/headings.h"

namespace vyn::profiling {

// Blocks of the console summary. They print what they are handed, to the stream. Durations are in
// microseconds.

/// Lists a step's events below its times. An empty one, here and below, lists none.
using EventLister = std::function<void(std::ostream& stream)>;

/// The same for the graph with this index.
using GraphEventLister = std::function<void(std::ostream& stream, std::size_t graph)>;

/// A step of the whole run.
void printStepBlock(std::ostream& stream, const Heading& heading, std::uint64_t duration,
                    const EventLister& listEvents);

void printFinalizeBlock(std::ostream& stream, const std::vector<EventGroup>& groups,
                        const GraphEventLister& listEvents);

/// One of the executions of each graph, or their mean.
struct ExecuteBlock {
  const Heading& heading;
  std::vector<ExecuteFigure> figures;  ///< by graph
  bool isAsync = false;                ///< durations are round trips and may have a queue wait
  bool omitsDetails = false;           ///< no queue waits and no events
};

void printExecuteBlock(std::ostream& stream, const ExecuteBlock& block,
                       const GraphEventLister& listEvents);

/// The inferences per second of the run.
void printRateBlock(std::ostream& stream, float inferencesPerSecond);

void printLibLoadBlock(std::ostream& stream, std::uint64_t backendLatency);

/// One of the applied binary sections of each graph, or their mean.
void printBinarySectionBlock(std::ostream& stream, const Heading& heading,
                             const std::vector<EventGroup>& figures,
                             const GraphEventLister& listEvents);

}  // namespace vyn::profiling
