#include "core/start_logging.h"
#include "input/chunk_walk.h"
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
  FileSource file(m_inputLogFileLocation);
  if (!file.isOpen()) {
    log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  JsonValue messages(rapidjson::kArrayType);
  if (!startReading() || !readChunksToJson(file, messages)) {
    return false;
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  m_jsonRoot.AddMember(rapidjson::StringRef("messages"), messages, allocator);
  g_jsonDocument.PushBack(m_jsonRoot, allocator);
  return true;
}

bool VynProfileLogReaderJSON::readChunksToJson(ByteSource& source, JsonValue& messages) {
  class Sink : public ChunkSink {
   public:
    Sink(VynProfileLogReaderJSON& reader, JsonValue& messages)
        : m_reader(reader), m_messages(messages) {}
    bool take(const Chunk& chunk, const ChunkPlace& /*place*/) override {
      m_texts.startChunk(chunk.data());
      return m_reader.takeChunkToJson(chunk, m_messages, m_builder);
    }

   private:
    VynProfileLogReaderJSON& m_reader;
    JsonValue& m_messages;
    TextStore m_texts;
    ValueBuilder m_builder{m_texts};
  };
  const ChunkRelease release(m_flatBufferReader);
  Sink sink(*this, messages);
  return walkChunks(source, sink).isAccepted;
}

bool VynProfileLogReaderJSON::takeChunkToJson(const Chunk& chunk, JsonValue& messages,
                                              ValueBuilder& builder) {
  if (!m_flatBufferReader.load(chunk)) {
    return false;
  }
  if (!m_metadataAdded) {
    addMetadataToJson(builder);
  }
  m_reachedEof = false;
  while (!m_reachedEof) {
    addNextMessageToJson(messages, builder);
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
