#include "report/csv_events.h"

#include "input/event_kind.h"
#include "report/event_text.h"

namespace vyn::profiling {
namespace {

constexpr char kRootColumn[] = ",ROOT,";
constexpr char kSubEventColumn[] = ",SUB-EVENT,";

}  // namespace

void writeEventLines(std::ostream& stream, const std::vector<EventNode>& events,
                     std::uint64_t timestamp, const std::string& keyword) {
  // As text, so that no locale of the stream groups its digits.
  const std::string step = std::to_string(timestamp) + "," + keyword + ",";
  const auto writeLine = [&](const EventNode& event, const char* placeColumn) {
    if (!isObjectEvent(event)) {
      stream << step << formatEventValue(event.dataType, event.value) << ","
             << unitToString(event.unit) << ",BACKEND" << placeColumn << event.identifier
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
