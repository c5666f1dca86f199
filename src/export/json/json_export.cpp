#include "export/json/json_export.h"

#include <utility>

#include "json/message_to_json.h"
#include "json/metadata_to_json.h"

namespace vyn::profiling {
namespace {

// Bytes of the opening bracket that the spool begins with; the document has got its own by then.
constexpr std::size_t kBracketSize = 1;

}  // namespace

JsonExport::JsonExport(TextSink& document, TextSpool& spool, std::string inputLogFileLocation)
    : m_document(document),
      m_spool(spool),
      m_inputLogFileLocation(std::move(inputLogFileLocation)),
      m_text(spool) {
  m_text.startObject();
}

// As in the plug-in's document, headers after the first one are not looked at.
void JsonExport::header(const schema::LogHeader& header) {
  if (m_hasMetadata) {
    return;
  }
  m_hasMetadata = true;
  if (m_hasMessages) {
    insertMetadata(header);
  } else {
    m_text.redirect(m_document);
    m_text.key(JsonKey::kMetadata);
    metadataToJson(header, m_inputLogFileLocation, m_text);
  }
}

void JsonExport::insertMetadata(const schema::LogHeader& header) {
  JsonText beginning(m_document);
  beginning.startObject();
  beginning.key(JsonKey::kMetadata);
  metadataToJson(header, m_inputLogFileLocation, beginning);
  beginning.flush();
  m_document.write(",");
  m_text.flush();
  m_spool.replay(m_document, kBracketSize);
  m_text.redirect(m_document);
}

void JsonExport::message(const schema::Message& message) {
  startMessages();
  messageToJson(message, m_text);
}

void JsonExport::finish() {
  startMessages();
  m_text.endArray();
  m_text.endObject();
  m_text.flush();
  if (!m_hasMetadata) {
    m_spool.replay(m_document, 0);
  }
  m_document.write("\n");
}

void JsonExport::startMessages() {
  if (!m_hasMessages) {
    m_hasMessages = true;
    m_text.key(JsonKey::kMessages);
    m_text.startArray();
  }
}

}  // namespace vyn::profiling
