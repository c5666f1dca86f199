#include "analysis/text_check.h"

#include <cstring>

#include "base/utf8.h"

namespace vyn::profiling {
namespace {

// Bytes. To look at a shorter text costs no more than to look up whether it is known: for each
// table that names it that is a constant.
constexpr std::size_t kShortText = 64;

// Of a chunk's bytes. A chunk whose texts do not overlap and are not shared needs one.
constexpr std::uint64_t kLooksAtAByte = 4;

constexpr std::size_t kShown = 60;  // bytes

// Seven-bit characters without a zero byte, as nearly all texts of a log are.
bool isPlain(std::string_view text) {
  constexpr std::uint64_t kLowBits = 0x0101010101010101;
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  while (text.size() >= sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data(), sizeof(word));
    if (((word | (word - kLowBits)) & kHighBits) != 0) {
      return false;
    }
    text.remove_prefix(sizeof(word));
  }
  for (const char byte : text) {
    if (byte <= 0) {
      return false;
    }
  }
  return true;
}

// No more bytes than `size`, and no part of a character at the end.
std::string_view cutTo(std::size_t size, std::string_view text) {
  constexpr std::size_t kLongestRest = 3;
  const std::size_t least = size - kLongestRest;
  while (size > least && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) {
    --size;
  }
  return text.substr(0, size);
}

}  // namespace

std::string quoted(const flatbuffers::String* text) {
  if (text == nullptr) {
    return "(no name)";
  }
  const std::string_view bytes = text->string_view();
  return bytes.size() <= kShown ? "'" + std::string(bytes) + "'"
                                : "'" + std::string(cutTo(kShown, bytes)) + "...'";
}

void TextCheck::enterChunk(std::size_t size) {
  m_budget = kLooksAtAByte * size;
  m_skipped = 0;
}

void TextCheck::leaveChunk() {
  if (m_skipped == 0) {
    return;
  }
  m_site.reportChunk(CheckCode::kTextsNotRead, [&] {
    return Evidence{std::to_string(m_skipped) + " long texts were left out",
                    "texts that together are no longer than " + std::to_string(kLooksAtAByte) +
                        " times the chunk"};
  });
  m_skipped = 0;
}

void TextCheck::checkPresent(const flatbuffers::String& text, const char* field) {
  const std::string_view bytes = text.string_view();
  if (bytes.size() <= kShortText && isPlain(bytes)) {
    return;
  }
  const Flaws flaws = bytes.size() <= kShortText ? lookAt(bytes) : flawsOf(text);
  if (flaws.isNoUtf8 || flaws.hasZeroByte) {
    report(text, field, flaws);
  }
}

bool TextCheck::allows(std::size_t size) {
  if (size <= kShortText) {
    return true;
  }
  if (size > m_budget) {
    ++m_skipped;
    return false;
  }
  m_budget -= size;
  return true;
}

TextCheck::Flaws TextCheck::lookAt(std::string_view text) {
  if (isPlain(text)) {
    return {};
  }
  return {!isUtf8(text), text.find('\0') != std::string_view::npos};
}

TextCheck::Flaws TextCheck::flawsOf(const flatbuffers::String& text) {
  // By the place in the chunk, so that what is known does not depend on where memory lies.
  Known& known = m_known.at(m_site.positionOf(&text) / sizeof(std::uint32_t) % kKnownTexts);
  if (known.text == &text && known.chunk == m_site.chunkNumber()) {
    return known.flaws;
  }
  if (!allows(text.size())) {
    return {};
  }
  known = {m_site.chunkNumber(), &text, lookAt(text.string_view())};
  return known.flaws;
}

void TextCheck::report(const flatbuffers::String& text, const char* field, const Flaws& flaws) {
  const auto describe = [&](const char* expected) {
    return [&text, field, expected] {
      return Evidence{std::string(field) + " " + quoted(&text), expected};
    };
  };
  if (flaws.isNoUtf8) {
    m_site.report(CheckCode::kNotUtf8, &text, describe("well-formed UTF-8"));
  }
  if (flaws.hasZeroByte) {
    m_site.report(CheckCode::kZeroByte, &text, describe("a zero byte at the end only"));
  }
}

}  // namespace vyn::profiling
