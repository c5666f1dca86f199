#include <array>
#include <ctime>
#include <locale>
#include <sstream>
#include <utility>

#include "core/version/profile_viewer_version.h"
#include "core/vyn_profile_log_reader.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;
constexpr std::size_t kCalendarTextSize = 26;  // bytes that asctime_r asks for

std::string textOf(const flatbuffers::String* text) {
  return text != nullptr ? text->str() : std::string();
}

// Writes the creation line; leaves it out when the time has no local calendar form. Returns false
// when that form has no text.
bool writeCreationTime(std::ostream& stream, std::uint64_t epochTime) {
  const auto seconds = static_cast<std::time_t>(epochTime / kMicrosecondsPerSecond);
  std::tm calendar{};
  if (localtime_r(&seconds, &calendar) == nullptr) {
    return true;
  }
  std::array<char, kCalendarTextSize> text{};
  if (asctime_r(&calendar, text.data()) == nullptr) {
    return false;
  }
  stream << "Log File Created: " << text.data();  // ends in its own line feed
  return true;
}

}  // namespace

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
  std::ostringstream details;
  details.exceptions(std::ios::badbit);  // running out of memory must not shorten the text
  details.imbue(std::locale::classic());
  details << "Input Log File Location: " << m_inputLogFileLocation << "\n";
  if (!writeCreationTime(details, m_epochTime)) {
    return {};
  }
  details << "Time Scale: " << static_cast<double>(m_timeScale) << "\n";
  // Both values share one line: that is the form that consumers of this text know.
  details << "Epoch Timestamp: " << m_epochTime
          << " Steady Clock Timestamp: " << m_steadyClockTimestamp << "\n";
  details << "Generated using: \n";
  details << "vyn-profile-viewer " << kProfileViewerVersion << "\n";
  if (!m_netRunVersion.empty()) {
    details << "vyn-net-run        " << m_netRunVersion << "\n";
  }
  if (!m_backendVersion.empty()) {
    details << "Backend            " << m_backendVersion << "\n";
  }
  return details.str();
}

}  // namespace vyn::profiling
