// Blocks of the console summary for the applied binary sections of each graph.

#include "core/vyn_profile_log_reader.h"
#include "input/statistics.h"
#include "report/console_lines.h"
#include "report/headings.h"

namespace vyn::profiling {

void VynProfileLogReader::printApplyBinarySectionStatsAverage(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionAverageHeading,
                               m_applyBinarySectionAverage, averageEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStatsMin(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMinHeading, m_applyBinarySectionMin,
                               fastestEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStatsMax(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMaxHeading, m_applyBinarySectionMax,
                               slowestEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStats(std::ostream& stream, const Heading& heading,
                                                       const std::vector<EventGroup>& figures,
                                                       EventsOf eventsOf) {
  if (!m_hasApplyBinarySection) {
    return;
  }
  printHeading(stream, heading);
  // Unlike in the other blocks, no empty line follows when there is no group.
  for (std::size_t i = 0; i < figures.size(); ++i) {
    printGraphHeading(stream, i, figures[i].name);
    printTimeLine(stream, figures[i].duration);
    listEvents(stream, m_applyBinarySectionGroups, i, eventsOf);
    stream << std::endl;
  }
}

}  // namespace vyn::profiling
