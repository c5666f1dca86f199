#include "core/header_details.h"

#include <array>
#include <cstddef>
#include <ctime>
#include <locale>
#include <sstream>

#include "base/version/profile_viewer_version.h"

namespace vyn::profiling {
namespace {

constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;
constexpr std::size_t kCalendarTextSize = 26;  // bytes that asctime_r asks for

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

std::string headerDetails(const HeaderValues& header) {
  std::ostringstream details;
  details.exceptions(std::ios::badbit);  // running out of memory must not shorten the text
  details.imbue(std::locale::classic());
  details << "Input Log File Location: " << header.inputLogFileLocation << "\n";
  if (!writeCreationTime(details, header.epochTime)) {
    return {};
  }
  details << "Time Scale: " << static_cast<double>(header.timeScale) << "\n";
  // Both values share one line: that is the form that consumers of this text know.
  details << "Epoch Timestamp: " << header.epochTime
          << " Steady Clock Timestamp: " << header.steadyClockTimestamp << "\n";
  details << "Generated using: \n";
  details << "vyn-profile-viewer " << kProfileViewerVersion << "\n";
  if (!header.netRunVersion.empty()) {
    details << "vyn-net-run        " << header.netRunVersion << "\n";
  }
  if (!header.backendVersion.empty()) {
    details << "Backend            " << header.backendVersion << "\n";
  }
  return details.str();
}

}  // namespace vyn::profiling
