#include <algorithm>
#include <fstream>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

bool canBeRead(const std::string& fileName) {
  return std::ifstream(fileName, std::ios::in | std::ios::binary).is_open();
}

// The name itself, or else the first free one with a number before its extension. The extension
// starts at the last dot, even at one in the name of a directory.
std::string freeFileName(const std::string& name) {
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  const std::string stem = name.substr(0, dot);
  const std::string extension = name.substr(dot);
  std::string candidate = name;
  for (std::uint64_t n = 1; canBeRead(candidate); ++n) {
    candidate = stem + "_" + std::to_string(n) + extension;
  }
  return candidate;
}

}  // namespace

void VynProfileLogReader::writeObjectPayload(const EventNode& event) {
  if (event.secondaryName.empty()) {
    return;
  }
  const std::string fileName = freeFileName(event.secondaryName);
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
