#include "report/console_events.h"

#include <iomanip>

#include "input/event_kind.h"
#include "report/console_lines.h"
#include "report/event_text.h"

namespace vyn::profiling {
namespace {

void printValue(std::ostream& stream, const EventNode& event) {
  stream << formatEventValue(event.dataType, event.value) << unitToSuffix(event.unit) << std::endl;
}

}  // namespace

void printEventLines(std::ostream& stream, const std::vector<EventNode>& events,
                     const std::function<void(const EventNode&)>& takeObject) {
  for (const EventNode& event : events) {
    if (isObjectEvent(event)) {
      takeObject(event);
    } else {
      stream << indent() << "Backend (" << event.identifier << "): ";
      stream << std::fixed << std::setprecision(0);
      printValue(stream, event);
    }
    // Sub-events of sub-events are not listed.
    for (const EventNode& child : event.children) {
      if (isObjectEvent(child)) {
        takeObject(child);
      } else {
        stream << indent() << indent() << child.identifier << ": ";
        printValue(stream, child);
      }
    }
  }
}

}  // namespace vyn::profiling
