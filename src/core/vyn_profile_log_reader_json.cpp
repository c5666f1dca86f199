#include "core/vyn_profile_log_reader_json.h"

#include <string_view>

#include "core/start_logging.h"
#include "json/document_file.h"
#include "json/json_keys.h"
#include "json/message_to_json.h"
#include "json/metadata_to_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

JsonValue::StringRefType constantKey(JsonKey key) {
  const std::string_view name = nameOf(key);
  return {name.data(), static_cast<rapidjson::SizeType>(name.size())};
}

// Forgets the log's texts at the end of a read, however it ends.
class TextsOfOneLog {
 public:
  explicit TextsOfOneLog(TextStore& texts) : m_texts(texts) {}
  ~TextsOfOneLog() { m_texts.endLog(); }
  TextsOfOneLog(const TextsOfOneLog&) = delete;
  TextsOfOneLog& operator=(const TextsOfOneLog&) = delete;

 private:
  TextStore& m_texts;
};

}  // namespace

VynProfileLogReaderJSON::VynProfileLogReaderJSON(const std::string& inputLogPath,
                                                 VisibilityLevel level)
    : VynProfileLogReader(inputLogPath, level) {}

VynProfileLogReaderJSON::~VynProfileLogReaderJSON() = default;

bool VynProfileLogReaderJSON::readInputFile(bool /*writeObjectPayloads*/) {
  if (!startLogging()) {
    return false;
  }
  const TextsOfOneLog texts(m_texts);
  JsonValue messages(rapidjson::kArrayType);
  if (!readChunks({makeChunk, [&](const Chunk& chunk) { takeChunkToJson(chunk, messages); }})) {
    return false;
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  m_jsonRoot.AddMember(constantKey(JsonKey::kMessages), messages, allocator);
  g_jsonDocument.PushBack(m_jsonRoot, allocator);
  return true;
}

void VynProfileLogReaderJSON::takeChunkToJson(const Chunk& chunk, JsonValue& messages) {
  m_texts.startChunk(chunk.data());
  if (!m_metadataAdded) {
    addMetadataToJson();
  }
  m_reachedEof = false;
  while (!m_reachedEof) {
    addNextMessageToJson(messages);
  }
}

void VynProfileLogReaderJSON::addMetadataToJson() {
  const schema::LogHeader* header = m_flatBufferReader.header();
  if (header == nullptr) {
    log::log(log::kDebug, "hdr is nullptr");
    return;
  }
  JsonValue metadata = m_values.build(
      [&](ValueBuilder& out) { metadataToJson(*header, m_inputLogFileLocation, out); });
  m_jsonRoot.AddMember(constantKey(JsonKey::kMetadata), metadata, g_jsonDocument.GetAllocator());
  m_metadataAdded = true;
}

bool VynProfileLogReaderJSON::addNextMessageToJson(JsonValue& messages) {
  const schema::Message* message = nextMessage();
  if (message == nullptr) {
    return false;
  }
  JsonValue object = m_values.build([&](ValueBuilder& out) { messageToJson(*message, out); });
  messages.PushBack(object, g_jsonDocument.GetAllocator());
  return true;
}

JsonValue VynProfileLogReaderJSON::eventToJson(const schema::Event* event) {
  return m_values.build([&](ValueBuilder& out) { profiling::eventToJson(*event, out); });
}

bool VynProfileLogReaderJSON::generateOutput(const std::string& outputFileName) {
  return startLogging() && writeDocument(outputFileName);
}

}  // namespace vyn::profiling
