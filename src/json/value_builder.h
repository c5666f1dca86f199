#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "json/json_document.h"
#include "json/json_keys.h"
#include "json/text_store.h"

namespace vyn::profiling {

/// Builds one JSON value in the pool of g_jsonDocument from its parts, sent in document order.
/// Objects and arrays get their exact size when they end, where values that grow member by member
/// leave their outgrown storage behind in the pool.
class ValueBuilder {
 public:
  explicit ValueBuilder(TextStore& texts)
      : m_texts(texts), m_document(&g_jsonDocument.GetAllocator()) {}

  /// Runs `send(*this)`, which sends exactly one value, and returns that value.
  template <typename Send>
  JsonValue build(const Send& send) {
    m_open.assign(1, OpenValue{});
    auto generator = [&](JsonDocument&) {
      send(*this);
      return true;
    };
    m_document.Populate(generator);
    return JsonValue(static_cast<JsonValue&&>(m_document));
  }

  void startObject() {
    m_document.StartObject();
    m_open.push_back({});
  }
  void endObject() { m_document.EndObject(endValue()); }
  void startArray() {
    m_document.StartArray();
    m_open.push_back({true, 0});
  }
  void endArray() { m_document.EndArray(endValue()); }

  /// The name of the member whose value comes next.
  void key(JsonKey key) {
    const std::string_view name = nameOf(key);
    m_document.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()), false);
    ++m_open.back().count;
  }

  // Numbers and texts are members of objects only: no array of the document holds them.

  void number(std::uint32_t value) { m_document.Uint(value); }
  void number(std::uint64_t value) { m_document.Uint64(value); }
  void number(std::int64_t value) { m_document.Int64(value); }
  void number(double value) { m_document.Double(value); }

  /// A text that outlives the document.
  void constantText(std::string_view text) { sendText(text, false); }

  /// A copy of a text.
  void copiedText(std::string_view text) { sendText(text, true); }

  /// A text of the log up to its first zero byte; an absent one reads as the empty text.
  void logText(const flatbuffers::String* text) {
    if (text == nullptr) {
      constantText("");
    } else if (text->size() <= kInlineTextLength) {
      copiedText(text->c_str());
    } else {
      constantText(m_texts.store(*text));
    }
  }

 private:
  // Texts of up to this many bytes live inside their value; storing them elsewhere gains nothing.
  static constexpr std::size_t kInlineTextLength = 13;

  // An object or array that has begun, and how many members or elements it has so far.
  struct OpenValue {
    bool isArray = false;
    rapidjson::SizeType count = 0;
  };

  void sendText(std::string_view text, bool copy) {
    m_document.String(text.data(), static_cast<rapidjson::SizeType>(text.size()), copy);
  }

  rapidjson::SizeType endValue() {
    const rapidjson::SizeType count = m_open.back().count;
    m_open.pop_back();
    OpenValue& outer = m_open.back();
    outer.count += outer.isArray ? 1 : 0;
    return count;
  }

  TextStore& m_texts;
  JsonDocument m_document;
  std::vector<OpenValue> m_open;
};

}  // namespace vyn::profiling
