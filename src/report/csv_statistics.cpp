// Rows of the CSV listing: one a step, each followed by the lines of the step's events.

#include <cstddef>
#include <iomanip>
#include <ostream>

#include "core/version/profile_viewer_version.h"
#include "core/vyn_profile_log_reader.h"
#include "input/event_copies.h"
#include "input/event_kind.h"
#include "report/inferences_per_second.h"

namespace vyn::profiling {
namespace {

constexpr int kCsvDecimals = 6;  // of the inferences per second
constexpr char kWholeRun[] = "null";

template <typename Value>
void writeRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
              Value value, const char* unit, const std::string& identifier) {
  stream << timestamp << "," << keyword << "," << value << "," << unit << ",NETRUN,ROOT,"
         << identifier << std::endl;
}

void writeTimeRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
                  std::uint64_t duration, const std::string& identifier) {
  writeRow(stream, timestamp, keyword, duration, "US", identifier);
}

std::string graphIdentifier(std::size_t index, const std::string& name) {
  return "Graph " + std::to_string(index) + ": " + name;
}

}  // namespace

void VynProfileLogReader::writeCsvHeader(std::ostream& stream) {
  stream << "input log file location, " << m_inputLogFileLocation << std::endl;
  stream << "vyn-profile-viewer version, " << kProfileViewerVersion << std::endl;
  stream << "vyn-net-run version, " << m_netRunVersion << std::endl;
  stream << "Backend version, " << m_backendVersion << std::endl;
}

void VynProfileLogReader::writeInitCsv(std::ostream& stream) {
  const std::string keyword = "INIT";
  writeTimeRow(stream, m_initTimestamp, keyword, m_initTime, kWholeRun);
  if (m_hasInitEvents) {
    listEventsCsv(stream, m_initEvents, m_initTimestamp, keyword);
  } else if (m_hasCreateFromBinaryEvents) {
    listEventsCsv(stream, m_createFromBinaryEvents, m_initTimestamp, keyword);
  }
}

void VynProfileLogReader::writeComposeGraphsCsv(std::ostream& stream) const {
  writeTimeRow(stream, m_composeGraphsTimestamp, "COMPOSE GRAPHS", m_composeGraphsTime, kWholeRun);
}

void VynProfileLogReader::writeFinalizeCsv(std::ostream& stream) {
  const std::string keyword = "FINALIZE";
  for (std::size_t i = 0; i < m_finalizeGroups.size(); ++i) {
    const EventGroup& group = m_finalizeGroups[i];
    writeTimeRow(stream, group.timestamp, keyword, group.duration, graphIdentifier(i, group.name));
    if (m_hasFinalizeEvents) {
      listEventsCsv(stream, group.events, group.timestamp, keyword);
    }
  }
}

void VynProfileLogReader::writeDeInitCsv(std::ostream& stream) {
  const std::string keyword = "DE-INIT";
  writeTimeRow(stream, m_deInitTimestamp, keyword, m_deInitTime, kWholeRun);
  listEventsCsv(stream, m_deInitEvents, m_deInitTimestamp, keyword);
}

void VynProfileLogReader::writeExecuteCsv(std::ostream& stream) {
  writeExecutionsCsv(stream, m_executeGroups, "EXECUTE", "EXECUTE");
}

void VynProfileLogReader::writeExecuteIpsCsv(std::ostream& stream) {
  const auto rate = inferencesPerSecond(m_executeIpsEvents);
  if (!m_hasExecuteIps || !rate) {
    return;
  }
  stream << std::fixed << std::setprecision(kCsvDecimals);
  writeRow(stream, m_executeIpsTimestamp, "EXECUTE IPS", *rate, "INF/SEC", kWholeRun);
}

void VynProfileLogReader::writeLibLoadCsv(std::ostream& stream) {
  if (!m_libLoadEvents.empty()) {
    writeTimeRow(stream, m_libLoadTimestamp, "DLOPEN LATENCY", numberOf(m_libLoadEvents.front()),
                 kWholeRun);
  }
}

void VynProfileLogReader::writeApplyBinarySectionCsv(std::ostream& stream) {
  // The rows spell the step with blanks, the event lines in one word; consumers know both.
  writeExecutionsCsv(stream, m_applyBinarySectionGroups, "APPLY BINARY SECTION", "APPLYBINARY");
}

void VynProfileLogReader::listEventsCsv(std::ostream& stream, const std::vector<EventNode>& events,
                                        std::uint64_t timestamp, const std::string& keyword) {
  writeEventsCsv(stream, copyOf(events, Payloads::kLeftOut), timestamp, keyword);
}

void VynProfileLogReader::writeExecutionsCsv(std::ostream& stream,
                                             const std::vector<ExecutionGroup>& groups,
                                             const std::string& rowKeyword,
                                             const std::string& eventKeyword) {
  for (std::size_t i = 0; i < groups.size(); ++i) {
    for (const ExecutionRecord& record : groups[i].records) {
      writeTimeRow(stream, record.timestamp, rowKeyword, record.duration,
                   graphIdentifier(i, groups[i].name));
      listEventsCsv(stream, record.events, record.timestamp, eventKeyword);
    }
  }
}

}  // namespace vyn::profiling
