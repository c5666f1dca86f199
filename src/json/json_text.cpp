#include "json/json_text.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace vyn::profiling {
namespace {

constexpr std::size_t kIndentWidth = 4;     // blanks for each level
constexpr std::size_t kLongestNumber = 32;  // bytes

bool needsEscaping(std::string_view text) {
  bool found = false;
  // No early exit, so that the compiler can vectorise the loop.
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    found |= byte < 0x20 || byte == '"' || byte == '\\';
  }
  return found;
}

}  // namespace

void JsonText::key(JsonKey key) {
  Level& level = m_levels.back();
  const std::string& piece = piecesAt(m_levels.size()).keys[static_cast<std::size_t>(key)];
  put(std::string_view(piece).substr(level.isEmpty ? 1 : 0));
  level.isEmpty = false;
}

void JsonText::number(std::uint64_t value) {
  std::array<char, kLongestNumber> digits{};
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  put({digits.data(), result.ptr});
}

void JsonText::number(std::int64_t value) {
  std::array<char, kLongestNumber> digits{};
  const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  put({digits.data(), result.ptr});
}

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

void JsonText::constantText(std::string_view text) {
  put("\"");
  put(text);
  put("\"");
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
  m_sink->write({m_block->data(), m_used});
  m_used = 0;
}

void JsonText::start(char bracket, bool isArray) {
  if (!m_levels.empty() && m_levels.back().isArray) {
    Level& level = m_levels.back();
    const std::string& piece = piecesAt(m_levels.size()).lineBreak;
    put(std::string_view(piece).substr(level.isEmpty ? 1 : 0));
    level.isEmpty = false;
  }
  put({&bracket, 1});
  m_levels.push_back({isArray, true});
}

void JsonText::end(char bracket) {
  const bool isEmpty = m_levels.back().isEmpty;
  m_levels.pop_back();
  if (!isEmpty) {
    put(std::string_view(piecesAt(m_levels.size()).lineBreak).substr(1));
  }
  put({&bracket, 1});
}

void JsonText::put(std::string_view text) {
  while (text.size() > kBlockSize - m_used) {
    const std::size_t count = kBlockSize - m_used;
    std::memcpy(m_block->data() + m_used, text.data(), count);
    m_used = kBlockSize;
    text.remove_prefix(count);
    flush();
  }
  std::memcpy(m_block->data() + m_used, text.data(), text.size());
  m_used += text.size();
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

const JsonText::Pieces& JsonText::piecesAt(std::size_t depth) {
  while (m_pieces.size() <= depth) {
    auto pieces = std::make_unique<Pieces>();
    pieces->lineBreak = ",\n" + std::string(m_pieces.size() * kIndentWidth, ' ');
    for (std::size_t key = 0; key < kJsonKeyNames.size(); ++key) {
      pieces->keys[key] = pieces->lineBreak + '"' + std::string(kJsonKeyNames[key]) + "\": ";
    }
    m_pieces.push_back(std::move(pieces));
  }
  return *m_pieces[depth];
}

}  // namespace vyn::profiling
