#include <iomanip>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "report/console_lines.h"
#include "report/event_text.h"

namespace vyn::profiling {
namespace {

void printValue(std::ostream& stream, const EventNode& event) {
  stream << formatEventValue(event.dataType, event.value) << unitToSuffix(event.unit) << std::endl;
}

}  // namespace

void VynProfileLogReader::printEvents(std::ostream& stream, std::vector<EventNode> events) {
  const auto writePayload = [this](const EventNode& event) {
    if (m_writeObjectPayloads) {
      writeObjectPayload(event);
    }
  };
  for (const EventNode& event : events) {
    if (isObjectEvent(event)) {
      writePayload(event);
    } else {
      stream << indent() << "Backend (" << event.identifier << "): ";
      stream << std::fixed << std::setprecision(0);
      printValue(stream, event);
    }
    // Sub-events of sub-events are not listed.
    for (const EventNode& child : event.children) {
      if (isObjectEvent(child)) {
        writePayload(child);
      } else {
        stream << indent() << indent() << child.identifier << ": ";
        printValue(stream, child);
      }
    }
  }
}

}  // namespace vyn::profiling
