#pragma once

#include <string>

#include "core/vyn_profile_log_reader.h"
#include "json/json_document.h"
#include "json/text_store.h"
#include "json/value_builder.h"

namespace vyn::profiling {

/// The JSON reader: converts header and messages of a log straight into JSON values, without the
/// summary reader's model and without its filter, and writes them pretty-printed.
class VynProfileLogReaderJSON : public VynProfileLogReader {
 public:
  VynProfileLogReaderJSON(const std::string& inputLogPath, VisibilityLevel level);
  ~VynProfileLogReaderJSON() override;

  bool generateOutput(const std::string& outputFileName) override;
  bool readInputFile(bool writeObjectPayloads) override;

 protected:
  void takeChunkToJson(const Chunk& chunk, JsonValue& messages);

  /// Adds "metadata" from the current chunk's header, if it has one, to the root.
  void addMetadataToJson();

  /// Appends the chunk's next message. At the end of the chunk sets m_reachedEof and returns false.
  bool addNextMessageToJson(JsonValue& messages);

  /// An event of the current chunk, never null, with all its sub-events as an object. For derived
  /// readers.
  JsonValue eventToJson(const schema::Event* event);

  JsonValue m_jsonRoot{rapidjson::kObjectType};  // null once the read is complete
  bool m_metadataAdded = false;
  TextStore m_texts;  // of the log that is being read
  ValueBuilder m_values{m_texts};
};

}  // namespace vyn::profiling
