#pragma once

#include <string>

#include "input/log_walk.h"
#include "json/json_text.h"

namespace vyn::profiling {

/// Keeps a text until it is known where it belongs.
class TextSpool : public TextSink {
 public:
  /// Passes on what was written, but for its first `skipped` bytes.
  virtual void replay(TextSink& sink, std::size_t skipped) = 0;
};

/// Writes the document of a log message by message, byte for byte the one of the JSON plug-in, with
/// no more than a message's pieces in memory.
///
/// "metadata" comes first in a document but may come late in a log: what was written until the
/// first header is met waits in the spool.
///
/// The operations throw what the sinks throw, and UnwritableNumber; nothing is to be called after
/// that.
class JsonExport : public MessageSink {
 public:
  /// The sinks must outlive the export. `inputLogFileLocation` is what "metadata" calls the log.
  JsonExport(TextSink& document, TextSpool& spool, std::string inputLogFileLocation);

  void header(const schema::LogHeader& header) override;
  void message(const schema::Message& message) override;

  /// To be called when the whole log was walked over: ends the document.
  void finish();

 private:
  void startMessages();
  void insertMetadata(const schema::LogHeader& header);

  TextSink& m_document;
  TextSpool& m_spool;
  std::string m_inputLogFileLocation;
  JsonText m_text;
  bool m_hasMetadata = false;
  bool m_hasMessages = false;  // their array has begun
};

}  // namespace vyn::profiling
