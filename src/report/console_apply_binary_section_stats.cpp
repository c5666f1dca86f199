// Blocks of the console summary for the applied binary sections of each graph.

#include "core/vyn_profile_log_reader.h"
#include "report/console_lines.h"
#include "report/headings.h"

namespace vyn::profiling {

void VynProfileLogReader::printApplyBinarySectionStatsAverage(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionAverageHeading,
                               m_applyBinarySectionAverage);
}

void VynProfileLogReader::printApplyBinarySectionStatsMin(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMinHeading, m_applyBinarySectionMin);
}

void VynProfileLogReader::printApplyBinarySectionStatsMax(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMaxHeading, m_applyBinarySectionMax);
}

void VynProfileLogReader::printApplyBinarySectionStats(std::ostream& stream, const Heading& heading,
                                                       const std::vector<EventGroup>& groups) {
  if (!m_hasApplyBinarySection) {
    return;
  }
  printHeading(stream, heading);
  // Unlike in the other blocks, no empty line follows when there is no group.
  for (std::size_t i = 0; i < groups.size(); ++i) {
    printGraphHeading(stream, i, groups[i].name);
    printTimeLine(stream, groups[i].duration);
    printEvents(stream, groups[i].events);
    stream << std::endl;
  }
}

}  // namespace vyn::profiling
