#include <ostream>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "report/event_text.h"

namespace vyn::profiling {
namespace {

constexpr char kRootColumn[] = ",ROOT,";
constexpr char kSubEventColumn[] = ",SUB-EVENT,";

}  // namespace

void VynProfileLogReader::writeEventsCsv(std::ostream& stream, std::vector<EventNode> events,
                                         std::uint64_t timestamp, const std::string& message) {
  // As text, so that no locale of the stream groups its digits.
  const std::string step = std::to_string(timestamp) + "," + message + ",";
  const auto writeLine = [&](const EventNode& event, const char* levelColumn) {
    if (!isObjectEvent(event)) {
      stream << step << formatEventValue(event.dataType, event.value) << ","
             << unitToString(event.unit) << ",BACKEND" << levelColumn << event.identifier
             << std::endl;
    }
  };
  for (const EventNode& event : events) {
    writeLine(event, kRootColumn);
    // Sub-events of sub-events are not listed.
    for (const EventNode& child : event.children) {
      writeLine(child, kSubEventColumn);
    }
  }
}

}  // namespace vyn::profiling
