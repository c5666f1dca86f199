// What the summary reader puts into the rows of its CSV listing.

#include <ostream>

#include "core/vyn_profile_log_reader.h"
#include "report/csv_events.h"

namespace vyn::profiling {

void VynProfileLogReader::writeCsv(std::ostream& stream) {
  writeCsvHeader(stream);
  writeColumnTitles(stream);
  writeInitCsv(stream);
  writeComposeGraphsCsv(stream);
  writeFinalizeCsv(stream);
  writeDeInitCsv(stream);
  writeExecuteCsv(stream);
  writeExecuteIpsCsv(stream);
  if (m_hasLibLoad) {
    writeLibLoadCsv(stream);
  }
  writeApplyBinarySectionCsv(stream);
}

void VynProfileLogReader::writeCsvHeader(std::ostream& stream) {
  writeHeaderLines(stream, {.inputLogFileLocation = m_inputLogFileLocation,
                            .netRunVersion = m_netRunVersion,
                            .backendVersion = m_backendVersion});
}

void VynProfileLogReader::writeInitCsv(std::ostream& stream) {
  writeStepRow(stream, m_initTimestamp, "INIT", m_initTime);
  if (const std::vector<EventNode>* events = listedInitEvents()) {
    csvListerOf(stream, "INIT")(*events, m_initTimestamp);
  }
}

void VynProfileLogReader::writeComposeGraphsCsv(std::ostream& stream) const {
  writeStepRow(stream, m_composeGraphsTimestamp, "COMPOSE GRAPHS", m_composeGraphsTime);
}

void VynProfileLogReader::writeFinalizeCsv(std::ostream& stream) {
  writeFinalizeRows(stream, m_finalizeGroups,
                    m_hasFinalizeEvents ? csvListerOf(stream, "FINALIZE") : nullptr);
}

void VynProfileLogReader::writeDeInitCsv(std::ostream& stream) {
  writeStepRow(stream, m_deInitTimestamp, "DE-INIT", m_deInitTime);
  csvListerOf(stream, "DE-INIT")(m_deInitEvents, m_deInitTimestamp);
}

void VynProfileLogReader::writeExecuteCsv(std::ostream& stream) {
  writeExecutionRows(stream, "EXECUTE", m_executeGroups, csvListerOf(stream, "EXECUTE"));
}

void VynProfileLogReader::writeExecuteIpsCsv(std::ostream& stream) {
  if (const auto rate = executeRate()) {
    writeRateRow(stream, m_executeIpsTimestamp, *rate);
  }
}

void VynProfileLogReader::writeLibLoadCsv(std::ostream& stream) {
  if (const auto latency = backendLatency()) {
    writeStepRow(stream, m_libLoadTimestamp, "DLOPEN LATENCY", *latency);
  }
}

void VynProfileLogReader::writeApplyBinarySectionCsv(std::ostream& stream) {
  // The rows spell the step with blanks, the event lines in one word; consumers know both.
  writeExecutionRows(stream, "APPLY BINARY SECTION", m_applyBinarySectionGroups,
                     csvListerOf(stream, "APPLYBINARY"));
}

EventLineWriter VynProfileLogReader::csvListerOf(std::ostream& stream, const std::string& keyword) {
  return [this, &stream, keyword](const std::vector<EventNode>& events, std::uint64_t timestamp) {
    writeEventsCsv(stream, copyOf(events, Payloads::kLeftOut), timestamp, keyword);
  };
}

void VynProfileLogReader::writeEventsCsv(std::ostream& stream, std::vector<EventNode> events,
                                         std::uint64_t timestamp, const std::string& message) {
  writeEventLines(stream, events, timestamp, message);
}

}  // namespace vyn::profiling
