#include "json/json_text.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "json/escaping.h"

namespace vyn::profiling {
namespace {

constexpr std::size_t kIndentWidth = 4;  // blanks for each depth

}  // namespace

// By the library's own routine: its digits are not always the shortest ones.
void JsonText::number(double value) {
  if (!std::isfinite(value)) {
    throw UnwritableNumber();
  }
  rapidjson::StringBuffer text;
  rapidjson::Writer<rapidjson::StringBuffer> writer(text);
  writer.Double(value);
  put({text.GetString(), text.GetSize()});
}

void JsonText::copiedText(std::string_view text) {
  if (needsEscaping(text)) {
    putEscaped(text);
  } else {
    constantText(text);
  }
}

void JsonText::logText(const flatbuffers::String* text) {
  copiedText(text == nullptr ? "" : text->c_str());
}

void JsonText::flush() {
  m_block = m_sink->exchange(std::move(m_block), m_used);
  m_used = 0;
}

void JsonText::putLong(std::string_view text) {
  flush();
  m_sink->write(text);
}

// Slice by slice, so that a text of any length takes little memory. Each byte is escaped by itself.
void JsonText::putEscaped(std::string_view text) {
  constexpr std::size_t kSliceSize = 4096;  // bytes
  rapidjson::StringBuffer escaped;
  rapidjson::Writer<rapidjson::StringBuffer> writer(escaped);
  put("\"");
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), kSliceSize))) {
    escaped.Clear();
    writer.Reset(escaped);
    const std::string_view slice = text.substr(0, kSliceSize);
    writer.String(slice.data(), static_cast<rapidjson::SizeType>(slice.size()));
    put({escaped.GetString() + 1, escaped.GetSize() - 2});  // without the quotes
  }
  put("\"");
}

void JsonText::preparePieces(std::size_t depth) {
  while (m_pieces.size() <= depth) {
    auto pieces = std::make_unique<Pieces>();
    pieces->lineBreak = ",\n" + std::string(m_pieces.size() * kIndentWidth, ' ');
    for (std::size_t key = 0; key < kJsonKeyNames.size(); ++key) {
      pieces->keys[key] = pieces->lineBreak + '"' + std::string(kJsonKeyNames[key].name) + "\": ";
    }
    m_pieces.push_back(std::move(pieces));
  }
}

}  // namespace vyn::profiling
