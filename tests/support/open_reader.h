#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/vyn_profile_log_reader.h"
#include "support/log_message.h"
#include "support/temp_folder.h"

namespace vyn::test {

/// A summary reader whose members tests can see and set.
class OpenReader : public profiling::VynProfileLogReader {
 public:
  explicit OpenReader(const std::string& logPath = "run.log", int visibility = 127)
      : VynProfileLogReader(logPath, static_cast<profiling::VisibilityLevel>(visibility)) {}

  using VynProfileLogReader::m_applyBinarySectionAverage;
  using VynProfileLogReader::m_applyBinarySectionGroups;
  using VynProfileLogReader::m_applyBinarySectionMax;
  using VynProfileLogReader::m_applyBinarySectionMin;
  using VynProfileLogReader::m_asyncExecute;
  using VynProfileLogReader::m_backendVersion;
  using VynProfileLogReader::m_composeGraphsTime;
  using VynProfileLogReader::m_composeGraphsTimestamp;
  using VynProfileLogReader::m_contextCreateTime;
  using VynProfileLogReader::m_contextCreateTimestamp;
  using VynProfileLogReader::m_createFromBinaryEvents;
  using VynProfileLogReader::m_createFromBinaryTime;
  using VynProfileLogReader::m_createFromBinaryTimestamp;
  using VynProfileLogReader::m_deInitEvents;
  using VynProfileLogReader::m_deInitTime;
  using VynProfileLogReader::m_deInitTimestamp;
  using VynProfileLogReader::m_eventStrings;
  using VynProfileLogReader::m_executeAverage;
  using VynProfileLogReader::m_executeGroups;
  using VynProfileLogReader::m_executeIpsEvents;
  using VynProfileLogReader::m_executeIpsTime;
  using VynProfileLogReader::m_executeIpsTimestamp;
  using VynProfileLogReader::m_executeMax;
  using VynProfileLogReader::m_executeMin;
  using VynProfileLogReader::m_finalizeGroups;
  using VynProfileLogReader::m_hasApplyBinarySection;
  using VynProfileLogReader::m_hasCreateFromBinaryEvents;
  using VynProfileLogReader::m_hasExecuteIps;
  using VynProfileLogReader::m_hasFinalize;
  using VynProfileLogReader::m_hasFinalizeEvents;
  using VynProfileLogReader::m_hasInitEvents;
  using VynProfileLogReader::m_hasLibLoad;
  using VynProfileLogReader::m_headerSaved;
  using VynProfileLogReader::m_initEvents;
  using VynProfileLogReader::m_initTime;
  using VynProfileLogReader::m_initTimestamp;
  using VynProfileLogReader::m_inputLogFileLocation;
  using VynProfileLogReader::m_libLoadEvents;
  using VynProfileLogReader::m_libLoadTime;
  using VynProfileLogReader::m_libLoadTimestamp;
  using VynProfileLogReader::m_netRunVersion;
  using VynProfileLogReader::m_omitExecuteDetails;
  using VynProfileLogReader::m_queueWaitMax;
  using VynProfileLogReader::m_queueWaitMin;
  using VynProfileLogReader::m_queueWaitSeries;
  using VynProfileLogReader::m_reachedEof;
  using VynProfileLogReader::m_writeObjectPayloads;

  using VynProfileLogReader::printApplyBinarySectionStatsAverage;
  using VynProfileLogReader::printApplyBinarySectionStatsMax;
  using VynProfileLogReader::printApplyBinarySectionStatsMin;
  using VynProfileLogReader::printComposeGraphsStats;
  using VynProfileLogReader::printDeInitStats;
  using VynProfileLogReader::printExecuteStatsAverage;
  using VynProfileLogReader::printExecuteStatsMax;
  using VynProfileLogReader::printExecuteStatsMin;
  using VynProfileLogReader::printExecuteStatsOverall;
  using VynProfileLogReader::printFinalizeStats;
  using VynProfileLogReader::printInitStats;
  using VynProfileLogReader::printLibLoadStats;
  using VynProfileLogReader::printStatisticsTitle;
  using VynProfileLogReader::writeApplyBinarySectionCsv;
  using VynProfileLogReader::writeComposeGraphsCsv;
  using VynProfileLogReader::writeCsv;
  using VynProfileLogReader::writeCsvHeader;
  using VynProfileLogReader::writeDeInitCsv;
  using VynProfileLogReader::writeExecuteCsv;
  using VynProfileLogReader::writeExecuteIpsCsv;
  using VynProfileLogReader::writeFinalizeCsv;
  using VynProfileLogReader::writeInitCsv;
  using VynProfileLogReader::writeLibLoadCsv;
  using VynProfileLogReader::writeObjectPayload;
};

/// The identifiers of events.
inline std::vector<std::string> namesOf(const std::vector<profiling::EventNode>& events) {
  std::vector<std::string> names;
  names.reserve(events.size());
  for (const auto& event : events) {
    names.push_back(event.identifier);
  }
  return names;
}

/// The values of events that all carry unsigned ones.
inline std::vector<std::uint64_t> valuesOf(const std::vector<profiling::EventNode>& events) {
  std::vector<std::uint64_t> values;
  values.reserve(events.size());
  for (const auto& event : events) {
    values.push_back(event.value.uint64);
  }
  return values;
}

/// The names of the graphs that figures or executions belong to.
template <typename Groups>
std::vector<std::string> graphsOf(const Groups& groups) {
  std::vector<std::string> names;
  names.reserve(groups.size());
  for (const auto& group : groups) {
    names.push_back(group.name);
  }
  return names;
}

}  // namespace vyn::test
