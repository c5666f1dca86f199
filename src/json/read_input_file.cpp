#include "core/start_logging.h"
#include "json/json_document.h"
#include "json/message_to_json.h"
#include "json/metadata_to_json.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool VynProfileLogReaderJSON::readInputFile(bool /*writeObjectPayloads*/) {
  if (!startLogging()) {
    return false;
  }
  ChunkStream chunks(m_inputLogFileLocation);
  if (!chunks.isOpen()) {
    log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  JsonValue messages(rapidjson::kArrayType);
  if (!startReading() || !readChunksToJson(chunks, messages)) {
    return false;
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  m_jsonRoot.AddMember(rapidjson::StringRef("messages"), messages, allocator);
  g_jsonDocument.PushBack(m_jsonRoot, allocator);
  return true;
}

bool VynProfileLogReaderJSON::readChunksToJson(ChunkStream& chunks, JsonValue& messages) {
  const ChunkRelease release(m_flatBufferReader);
  TextStore texts;
  ValueBuilder builder(texts);
  while (const ChunkBuffer chunk = chunks.next()) {
    if (!m_flatBufferReader.load(chunk)) {
      return false;
    }
    texts.startChunk(chunk->data());
    if (!m_metadataAdded) {
      addMetadataToJson(builder);
    }
    m_reachedEof = false;
    while (!m_reachedEof) {
      addNextMessageToJson(messages, builder);
    }
  }
  return true;
}

void VynProfileLogReaderJSON::addMetadataToJson(ValueBuilder& builder) {
  const schema::LogHeader* header = m_flatBufferReader.header();
  if (header == nullptr) {
    log::log(log::kDebug, "hdr is nullptr");
    return;
  }
  JsonValue metadata = builder.build(
      [&](ValueBuilder& out) { metadataToJson(*header, m_inputLogFileLocation, out); });
  m_jsonRoot.AddMember(rapidjson::StringRef("metadata"), metadata, g_jsonDocument.GetAllocator());
  m_metadataAdded = true;
}

bool VynProfileLogReaderJSON::addNextMessageToJson(JsonValue& messages, ValueBuilder& builder) {
  const schema::Message* message = m_flatBufferReader.nextMessage();
  if (message == nullptr) {
    m_reachedEof = true;
    log::log(log::kDebug, "profiling::VynProfileLogReader reached EOF!");
    return false;
  }
  JsonValue object = builder.build([&](ValueBuilder& out) { messageToJson(*message, out); });
  messages.PushBack(object, g_jsonDocument.GetAllocator());
  return true;
}

}  // namespace vyn::profiling
