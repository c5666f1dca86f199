#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "input/execution_records.h"

namespace vyn::profiling {

// Rows of the CSV listing: one a step, each followed by the lines of the step's events. Durations
// are in microseconds.

/// The lines in front of the column titles.
struct CsvHeader {
  const std::string& inputLogFileLocation;
  const std::string& netRunVersion;
  const std::string& backendVersion;
};

void writeHeaderLines(std::ostream& stream, const CsvHeader& header);
void writeColumnTitles(std::ostream& stream);

/// A step of the whole run.
void writeStepRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
                  std::uint64_t duration);

/// The inferences per second of the run. Leaves the stream with the decimals that they have.
void writeRateRow(std::ostream& stream, std::uint64_t timestamp, float inferencesPerSecond);

/// Writes the lines below the row of one step, from its events and time stamp. An empty one writes
/// none.
using EventLineWriter =
    std::function<void(const std::vector<EventNode>& events, std::uint64_t timestamp)>;

void writeFinalizeRows(std::ostream& stream, const std::vector<EventGroup>& groups,
                       const EventLineWriter& writeEvents);

/// All executions of each graph, graph by graph.
void writeExecutionRows(std::ostream& stream, const std::string& keyword,
                        const std::vector<ExecutionGroup>& groups,
                        const EventLineWriter& writeEvents);

}  // namespace vyn::profiling
