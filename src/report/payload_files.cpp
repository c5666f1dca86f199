#include <fstream>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
void VynProfileLogReader::writeObjectPayload(const EventNode& event) {
  // No file's name has a zero byte.
  const std::string name = event.secondaryName.substr(0, event.secondaryName.find('\0'));
  if (name.empty()) {
    return;
  }
  const std::string fileName = m_payloadNames.freeName(name);
  std::ofstream file(fileName, std::ios::out | std::ios::binary);
  if (!file.good()) {
    log::log(log::kError, "Invalid output fileName: [%s]", fileName.c_str());
    return;
  }
  file.write(reinterpret_cast<const char*>(event.rawData.data()),
             static_cast<std::streamsize>(event.rawData.size()));
}

void VynProfileLogReader::writeExecutionPayloads() {
  for (const ExecutionGroup& group : m_executeGroups) {
    for (const ExecutionRecord& record : group.records) {
      for (const EventNode& event : record.events) {
        if (!isObjectEvent(event)) {
          continue;
        }
        // Once for the event and once more for each of its children, whatever those are: the
        // number of files tells scripts how many children there were.
        for (std::size_t i = 0; i <= event.children.size(); ++i) {
          writeObjectPayload(event);
        }
      }
    }
  }
}

}  // namespace vyn::profiling
