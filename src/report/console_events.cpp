#include <iomanip>

#include "core/vyn_profile_log_reader.h"
#include "input/event_copies.h"
#include "input/event_kind.h"
#include "report/console_lines.h"
#include "report/event_text.h"

namespace vyn::profiling {
namespace {

void printValue(std::ostream& stream, const EventNode& event) {
  stream << formatEventValue(event.dataType, event.value) << unitToSuffix(event.unit) << std::endl;
}

}  // namespace

Payloads VynProfileLogReader::listedPayloads() const {
  return m_writeObjectPayloads ? Payloads::kKept : Payloads::kLeftOut;
}

void VynProfileLogReader::listEvents(std::ostream& stream, const std::vector<EventNode>& events) {
  printEvents(stream, copyOf(events, listedPayloads()));
}

void VynProfileLogReader::listEvents(std::ostream& stream,
                                     const std::vector<ExecutionGroup>& groups, std::size_t index,
                                     EventsOf eventsOf) {
  // After a read that memory ended, the figures may be those of fewer graphs, never of more.
  if (index < groups.size()) {
    printEvents(stream, eventsOf(groups[index], listedPayloads()));
  }
}

void VynProfileLogReader::printEvents(std::ostream& stream, std::vector<EventNode> events) {
  const PayloadNames::Scope oneListing(m_payloadNames);
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
