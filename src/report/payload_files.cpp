#include "report/payload_files.h"

#include <cstddef>
#include <fstream>

#include "input/event_kind.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

void writePayloadFile(const EventNode& event, PayloadNames& names) {
  // No file's name has a zero byte.
  const std::string name = event.secondaryName.substr(0, event.secondaryName.find('\0'));
  if (name.empty()) {
    return;
  }
  const std::string fileName = names.freeName(name);
  std::ofstream file(fileName, std::ios::out | std::ios::binary);
  if (!file.good()) {
    log::log(log::kError, "Invalid output fileName: [%s]", fileName.c_str());
    return;
  }
  file.write(reinterpret_cast<const char*>(event.rawData.data()),
             static_cast<std::streamsize>(event.rawData.size()));
}

void forEachExecutionPayload(const std::vector<ExecutionGroup>& groups,
                             const std::function<void(const EventNode&)>& write) {
  for (const ExecutionGroup& group : groups) {
    for (const ExecutionRecord& record : group.records) {
      for (const EventNode& event : record.events) {
        if (!isObjectEvent(event)) {
          continue;
        }
        // However many sub-events there are and whatever they hold: the number of files tells
        // scripts how many there were.
        for (std::size_t i = 0; i <= event.children.size(); ++i) {
          write(event);
        }
      }
    }
  }
}

}  // namespace vyn::profiling
