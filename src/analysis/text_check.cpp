#include "analysis/text_check.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "base/utf8.h"

namespace vyn::profiling {
namespace {

// Bytes. To find that a shorter text is plain costs no more than to look up whether it is known.
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

// No further than a path can be long, and up to the first zero byte, as the system takes it.
std::string_view asFileName(std::string_view text) {
  text = text.substr(0, PATH_MAX);
  return text.substr(0, text.find('\0'));
}

bool leadsOutOfFolder(std::string_view name) {
  constexpr std::string_view kUp = "..";
  if (name.starts_with('/')) {
    return true;
  }
  if (name.find(kUp) == std::string_view::npos) {
    return false;  // quickly, as nearly always
  }
  while (!name.empty()) {
    const std::size_t slash = std::min(name.find('/'), name.size());
    if (name.substr(0, slash) == kUp) {
      return true;
    }
    name.remove_prefix(std::min(slash + 1, name.size()));
  }
  return false;
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
    return Evidence{std::to_string(m_skipped) + " texts were left out",
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
  const Traits traits = traitsOf(text);
  if (traits.isNoUtf8 || traits.hasZeroByte) {
    report(text, field, traits);
  }
}

bool TextCheck::allows(std::size_t size) {
  if (size > m_budget) {
    ++m_skipped;
    return false;
  }
  m_budget -= size;
  return true;
}

TextCheck::Traits TextCheck::lookAt(const flatbuffers::String& text) {
  const std::string_view bytes = text.string_view();
  const bool leaves = leadsOutOfFolder(asFileName(bytes));
  if (isPlain(bytes)) {
    return {false, false, leaves};
  }
  return {!isUtf8(bytes), bytes.find('\0') != std::string_view::npos, leaves};
}

// The slots are by the place in the chunk, so that what is known does not depend on where memory
// lies. They outlive the chunk, for small chunks would pay for clearing them.
TextCheck::Known& TextCheck::slotOf(std::uint32_t position) {
  constexpr std::uint32_t kGoldenRatio = 0x9E3779B9;  // of two to the power of 32
  constexpr unsigned kPositionBits = 32;
  return m_known[position * kGoldenRatio >> (kPositionBits - kKnownBits)];
}

TextCheck::Traits TextCheck::traitsOf(const flatbuffers::String& text) {
  const auto position = static_cast<std::uint32_t>(m_site.positionOf(&text));
  Known& known = slotOf(position);
  if (known.chunk == m_site.chunkNumber() && known.position == position) {
    return known.traits;
  }
  if (!allows(text.size())) {
    return {};
  }
  known = {m_site.chunkNumber(), position, lookAt(text)};
  return known.traits;
}

void TextCheck::report(const flatbuffers::String& text, const char* field, const Traits& traits) {
  const auto describe = [&](const char* expected) {
    return [&text, field, expected] {
      return Evidence{std::string(field) + " " + quoted(&text), expected};
    };
  };
  if (traits.isNoUtf8) {
    m_site.report(CheckCode::kNotUtf8, &text, describe("well-formed UTF-8"));
  }
  if (traits.hasZeroByte) {
    m_site.report(CheckCode::kZeroByte, &text, describe("a zero byte at the end only"));
  }
}

}  // namespace vyn::profiling
