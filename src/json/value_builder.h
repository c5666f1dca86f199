#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>

#include "json/json_document.h"
#include "json/rapidjson_sender.h"
#include "json/text_store.h"

namespace vyn::profiling {

/// Builds one JSON value in the pool of g_jsonDocument from its parts, sent in document order.
/// Objects and arrays get their exact size when they end, where values that grow member by member
/// leave their outgrown storage behind in the pool.
class ValueBuilder : public RapidJsonSender<JsonDocument> {
 public:
  explicit ValueBuilder(TextStore& texts)
      : RapidJsonSender(m_document), m_texts(texts), m_document(&g_jsonDocument.GetAllocator()) {}
  ValueBuilder(const ValueBuilder&) = delete;
  ValueBuilder& operator=(const ValueBuilder&) = delete;

  /// Runs `send(*this)`, which sends exactly one value, and returns that value.
  template <typename Send>
  JsonValue build(const Send& send) {
    startDocument();
    auto generator = [&](JsonDocument&) {
      send(*this);
      return true;
    };
    m_document.Populate(generator);
    return JsonValue(static_cast<JsonValue&&>(m_document));
  }

  /// As with any handler, but equal texts are stored once.
  void logText(const flatbuffers::String* text) {
    if (text != nullptr && text->size() > kInlineTextLength) {
      constantText(m_texts.store(*text));
    } else {
      RapidJsonSender::logText(text);
    }
  }

 private:
  // Texts of up to this many bytes live inside their value; storing them elsewhere gains nothing.
  static constexpr std::size_t kInlineTextLength = 13;

  TextStore& m_texts;
  JsonDocument m_document;
};

}  // namespace vyn::profiling
