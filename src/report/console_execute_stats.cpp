// Blocks of the console summary for the executions of each graph: mean, shortest and longest.

#include <limits>
#include <string_view>

#include "core/vyn_profile_log_reader.h"
#include "input/statistics.h"
#include "report/console_lines.h"
#include "report/headings.h"

namespace vyn::profiling {
namespace {

// Truncated; 0 for an empty series.
std::uint64_t queueWait(const NamedSeries& series) {
  if (series.values.empty()) {
    return 0;
  }
  double sum = 0.0;
  for (const std::uint64_t value : series.values) {
    sum += static_cast<double>(value);
  }
  const double mean = sum / static_cast<double>(series.values.size());
  // Rounding can lift the mean of huge values to 2^64, which no longer fits.
  constexpr double kTooLarge = 18446744073709551616.0;
  return mean < kTooLarge ? static_cast<std::uint64_t>(mean)
                          : std::numeric_limits<std::uint64_t>::max();
}

std::uint64_t queueWait(const NamedValue& value) { return value.value; }

// The first entry of each graph counts.
template <typename Entry>
QueueWaits queueWaitsByGraph(const std::vector<Entry>& entries) {
  QueueWaits waits;
  for (const Entry& entry : entries) {
    waits.try_emplace(entry.name, queueWait(entry));
  }
  return waits;
}

}  // namespace

void VynProfileLogReader::printExecuteStatsAverage(std::ostream& stream) {
  printExecuteStats(stream, kExecuteAverageHeading, m_executeAverage, averageEventsOf,
                    queueWaitsByGraph(m_queueWaitSeries));
  if (!m_executeAverage.empty() && m_writeObjectPayloads) {
    writeExecutionPayloads();
  }
}

void VynProfileLogReader::printExecuteStatsMin(std::ostream& stream) {
  printExecuteStats(stream, kExecuteMinHeading, m_executeMin, fastestEventsOf,
                    queueWaitsByGraph(m_queueWaitMin));
}

void VynProfileLogReader::printExecuteStatsMax(std::ostream& stream) {
  printExecuteStats(stream, kExecuteMaxHeading, m_executeMax, slowestEventsOf,
                    queueWaitsByGraph(m_queueWaitMax));
}

void VynProfileLogReader::printExecuteStats(std::ostream& stream, const Heading& heading,
                                            const std::vector<EventGroup>& figures,
                                            EventsOf eventsOf, const QueueWaits& queueWaits) {
  printHeading(stream, heading);
  printHeading(stream, kTotalInferenceTimeHeading);
  if (figures.empty()) {
    stream << std::endl;
    return;
  }
  for (std::size_t i = 0; i < figures.size(); ++i) {
    const EventGroup& figure = figures[i];
    printGraphHeading(stream, i, figure.name);
    stream << indent() << "NetRun" << (m_asyncExecute ? " (Host Round-Trip)" : "") << ": "
           << figure.duration << " us\n";
    if (!m_omitExecuteDetails) {
      printQueueWait(stream, figure, queueWaits);
      listEvents(stream, m_executeGroups, i, eventsOf);
    }
    stream << std::endl;
  }
}

void VynProfileLogReader::printQueueWait(std::ostream& stream, const EventGroup& figure,
                                         const QueueWaits& queueWaits) const {
  const auto wait = queueWaits.find(figure.name);
  if (m_asyncExecute && wait != queueWaits.end()) {
    // Not guarded: a wait longer than the duration wraps around, which shows that the log is off.
    stream << indent()
           << "NetRun (Host Round-Trip excluding queue wait): " << figure.duration - wait->second
           << std::endl;  // microseconds, but without the unit
  }
}

}  // namespace vyn::profiling
