#pragma once

#include <flatbuffers/flatbuffers.h>
#include <rapidjson/rapidjson.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "json/json_keys.h"

namespace vyn::profiling {

/// Passes the parts of a document, sent in document order, on to any handler of RapidJSON: a
/// document that builds a value, a writer. It counts members and elements, which handlers want to
/// know at the end of each object and array.
template <typename Handler>
class RapidJsonSender {
 public:
  /// `handler` must outlive the sender.
  explicit RapidJsonSender(Handler& handler) : m_handler(handler), m_open(1) {}

  void startObject() {
    m_handler.StartObject();
    m_open.push_back({});
  }
  void endObject() { m_handler.EndObject(endValue()); }
  void startArray() {
    m_handler.StartArray();
    m_open.push_back({true, 0});
  }
  void endArray() { m_handler.EndArray(endValue()); }

  /// The name of the member whose value comes next.
  void key(JsonKey key) {
    const std::string_view name = nameOf(key);
    m_handler.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()), false);
    ++m_open.back().count;
  }

  // Numbers and texts are members of objects only: no array of the document holds them.

  void number(std::uint32_t value) { m_handler.Uint(value); }
  void number(std::uint64_t value) { m_handler.Uint64(value); }
  void number(std::int64_t value) { m_handler.Int64(value); }
  void number(double value) { m_handler.Double(value); }

  /// A text that outlives what the handler makes.
  void constantText(std::string_view text) { sendText(text, false); }

  /// A text of which the handler is to make a copy, if it keeps it.
  void copiedText(std::string_view text) { sendText(text, true); }

  /// A text of the log up to its first zero byte; an absent one reads as the empty text.
  void logText(const flatbuffers::String* text) {
    copiedText(text == nullptr ? "" : text->c_str());
  }

 protected:
  /// The next value begins a document of its own.
  void startDocument() { m_open.assign(1, OpenValue{}); }

 private:
  // An object or array that has begun, and how many members or elements it has so far.
  struct OpenValue {
    bool isArray = false;
    rapidjson::SizeType count = 0;
  };

  void sendText(std::string_view text, bool copy) {
    m_handler.String(text.data(), static_cast<rapidjson::SizeType>(text.size()), copy);
  }

  rapidjson::SizeType endValue() {
    const rapidjson::SizeType count = m_open.back().count;
    m_open.pop_back();
    OpenValue& outer = m_open.back();
    outer.count += outer.isArray ? 1 : 0;
    return count;
  }

  Handler& m_handler;
  std::vector<OpenValue> m_open;
};

}  // namespace vyn::profiling
