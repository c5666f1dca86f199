#include "files/printable_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

namespace vyn::files {
namespace {

struct Character {
  char32_t code;
  std::size_t size;  // bytes
};

struct Range {
  char32_t first;
  char32_t last;
};

constexpr Range kUnprintable[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0x061C, 0x061C}, {0x200E, 0x200F},
    {0x2028, 0x2029}, {0x202A, 0x202E}, {0x2066, 0x2069},
};

constexpr Range kSurrogates = {0xD800, 0xDFFF};

// By its size in bytes: what a sequence begins with, and the least code that needs it.
struct SequenceForm {
  unsigned char mask;
  unsigned char lead;
  char32_t least;
};
constexpr SequenceForm kForms[] = {
    {0x80, 0x00, 0x0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};
constexpr char32_t kLargestCode = 0x10FFFF;

bool isIn(const Range& range, char32_t code) { return code >= range.first && code <= range.last; }

std::optional<Character> decode(std::string_view text, const SequenceForm& form, std::size_t size) {
  if (text.size() < size) {
    return std::nullopt;
  }
  char32_t code = static_cast<unsigned char>(text[0]) & static_cast<unsigned char>(~form.mask);
  for (const char continuation : text.substr(1, size - 1)) {
    const auto byte = static_cast<unsigned char>(continuation);
    if ((byte & 0xC0) != 0x80) {
      return std::nullopt;
    }
    code = code << 6 | (byte & 0x3F);
  }
  if (code < form.least || code > kLargestCode || isIn(kSurrogates, code)) {
    return std::nullopt;
  }
  return Character{code, size};
}

// None when the text does not begin with a valid sequence.
std::optional<Character> firstCharacter(std::string_view text) {
  const auto byte = static_cast<unsigned char>(text[0]);
  for (std::size_t i = 0; i < std::size(kForms); ++i) {
    if ((byte & kForms[i].mask) == kForms[i].lead) {
      return decode(text, kForms[i], i + 1);
    }
  }
  return std::nullopt;
}

bool isPrintable(char32_t code, LineFeeds lineFeeds) {
  if (code == '\n') {
    return lineFeeds == LineFeeds::kKept;
  }
  return std::none_of(std::begin(kUnprintable), std::end(kUnprintable),
                      [code](const Range& range) { return isIn(range, code); });
}

void appendEscaped(std::string& result, std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    result += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
}

}  // namespace

std::string printable(std::string_view text, LineFeeds lineFeeds) {
  std::string result;
  while (!text.empty()) {
    const std::optional<Character> character = firstCharacter(text);
    const std::string_view bytes = text.substr(0, character ? character->size : 1);
    if (character && isPrintable(character->code, lineFeeds)) {
      result += bytes;
    } else {
      appendEscaped(result, bytes);
    }
    text.remove_prefix(bytes.size());
  }
  return result;
}

}  // namespace vyn::files
