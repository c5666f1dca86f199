// Blocks of the console summary for all steps but the executions.

#include <iomanip>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "report/console_lines.h"
#include "report/headings.h"
#include "report/inferences_per_second.h"

namespace vyn::profiling {
namespace {

constexpr int kSummaryDecimals = 4;  // of the inferences per second

}  // namespace

void VynProfileLogReader::printHeaderDetails(std::ostream& stream) {
  stream << getHeaderDetails() << std::endl;
}

void VynProfileLogReader::printStatisticsTitle(std::ostream& stream) {
  printHeading(stream, kStatisticsTitle);
  printInitStats(stream);
  printComposeGraphsStats(stream);
  printFinalizeStats(stream);
  printDeInitStats(stream);
}

void VynProfileLogReader::printInitStats(std::ostream& stream) {
  printHeading(stream, kInitHeading);
  printTimeLine(stream, m_initTime);
  if (m_hasInitEvents) {
    listEvents(stream, m_initEvents);
  } else if (m_hasCreateFromBinaryEvents) {
    listEvents(stream, m_createFromBinaryEvents);
  }
  stream << std::endl;
}

void VynProfileLogReader::printComposeGraphsStats(std::ostream& stream) const {
  printHeading(stream, kComposeGraphsHeading);
  printTimeLine(stream, m_composeGraphsTime);
  stream << std::endl;
}

void VynProfileLogReader::printFinalizeStats(std::ostream& stream) {
  printHeading(stream, kFinalizeHeading);
  if (m_finalizeGroups.empty()) {
    stream << std::endl;
    return;
  }
  for (std::size_t i = 0; i < m_finalizeGroups.size(); ++i) {
    const EventGroup& group = m_finalizeGroups[i];
    printGraphHeading(stream, i, group.name);
    printTimeLine(stream, group.duration);
    if (m_hasFinalizeEvents) {
      listEvents(stream, group.events);
    }
    stream << std::endl;
  }
}

void VynProfileLogReader::printDeInitStats(std::ostream& stream) {
  printHeading(stream, kDeInitHeading);
  printTimeLine(stream, m_deInitTime);
  listEvents(stream, m_deInitEvents);
  stream << std::endl;
}

void VynProfileLogReader::printExecuteStatsOverall(std::ostream& stream) {
  const auto rate = inferencesPerSecond(m_executeIpsEvents);
  if (!m_hasExecuteIps || !rate) {
    return;
  }
  stream << std::fixed << std::setprecision(kSummaryDecimals);
  printHeading(stream, kExecuteOverallHeading);
  stream << indent() << "NetRun IPS (includes IO and misc. time): " << *rate << " inf/sec "
         << std::endl
         << std::endl;
}

void VynProfileLogReader::printLibLoadStats(std::ostream& stream) {
  if (!m_hasLibLoad || m_libLoadEvents.empty()) {
    return;
  }
  stream << std::fixed << std::setprecision(kSummaryDecimals);
  printHeading(stream, kLibLoadHeading);
  stream << indent() << "Backend Latency: " << numberOf(m_libLoadEvents.front()) << " us\n"
         << std::endl;
}

}  // namespace vyn::profiling
