#include "core/start_logging.h"
#include "json/json_document.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool VynProfileLogReaderJSON::readInputFile(bool /*writeObjectPayloads*/) {
  if (!startLogging()) {
    return false;
  }
  // After a completed read the root has moved into the document: a reader reads once.
  if (!m_jsonRoot.IsObject()) {
    return false;
  }
  ChunkStream chunks(m_inputLogFileLocation);
  if (!chunks.isOpen()) {
    log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  rapidjson::Value messages(rapidjson::kArrayType);
  while (const ChunkBuffer chunk = chunks.next()) {
    if (!m_flatBufferReader.load(chunk)) {
      return false;
    }
    if (!m_metadataAdded) {
      addMetadataToJson();
    }
    m_reachedEof = false;
    while (!m_reachedEof) {
      addNextMessageToJson(messages);
    }
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  m_jsonRoot.AddMember(rapidjson::StringRef("messages"), messages, allocator);
  g_jsonDocument.PushBack(m_jsonRoot, allocator);
  return true;
}

}  // namespace vyn::profiling
