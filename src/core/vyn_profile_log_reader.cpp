#include "core/vyn_profile_log_reader.h"

#include <utility>

#include "core/header_details.h"
#include "core/process_state.h"
#include "log/logger_registry.h"
#include "report/output_driver.h"

namespace vyn::profiling {
namespace {

std::string textOf(const flatbuffers::String* text) {
  return text != nullptr ? text->str() : std::string();
}

}  // namespace

// The header's numbers stay unset: nobody reads them before m_headerSaved is true.
VynProfileLogReader::VynProfileLogReader(const std::string& inputLogPath, VisibilityLevel level)
    : m_visibilityLevel(level), m_inputLogFileLocation(inputLogPath) {}

VynProfileLogReader::~VynProfileLogReader() = default;

int VynProfileLogReader::isReaderValid() { return 1; }

bool VynProfileLogReader::generateOutput(const std::string& outputFileName) {
  const PayloadNames::Scope oneOutput(m_payloadNames);
  return writeOutputs({[this](std::ostream& stream) { printSummary(stream); },
                       [this](std::ostream& stream) { writeCsv(stream); }},
                      outputFileName, standardOutput());
}

void VynProfileLogReader::saveHeader() {
  if (m_headerSaved) {
    log::log(log::kDebug, "Header details have been saved already.");
    return;
  }
  const schema::LogHeader* header = m_flatBufferReader.header();
  if (header == nullptr) {
    log::log(log::kDebug, "hdr is nullptr");
    return;
  }
  // Whole or not at all, for want of memory too.
  std::string netRunVersion = textOf(header->netRunVersion());
  std::string backendVersion = textOf(header->backendVersion());
  m_epochTime = header->epochTime();
  m_steadyClockTimestamp = header->timestamp();
  m_timeScale = header->timeScale();
  m_netRunVersion = std::move(netRunVersion);
  m_backendVersion = std::move(backendVersion);
  m_headerSaved = true;
}

std::string VynProfileLogReader::getHeaderDetails() {
  if (!m_headerSaved) {
    log::log(log::kDebug, "Header details unavailable.");
    return {};
  }
  return headerDetails({.inputLogFileLocation = m_inputLogFileLocation,
                        .epochTime = m_epochTime,
                        .steadyClockTimestamp = m_steadyClockTimestamp,
                        .timeScale = m_timeScale,
                        .netRunVersion = m_netRunVersion,
                        .backendVersion = m_backendVersion});
}

}  // namespace vyn::profiling
