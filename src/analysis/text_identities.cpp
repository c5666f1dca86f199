#include "analysis/text_identities.h"

namespace vyn::profiling {

void TextIdentities::startChunk(std::span<const std::uint8_t> chunk) {
  m_start = chunk.data();
  ++m_chunk;
  m_budget = std::uint64_t{kLooksAtAByte} * chunk.size();
}

std::optional<std::uint64_t> TextIdentities::ofLong(const flatbuffers::String& text) {
  Known& known = slotOf(text);
  if (known.text == &text && known.chunk == m_chunk) {
    return known.identity;
  }
  if (text.size() > m_budget) {
    return std::nullopt;
  }
  m_budget -= text.size();
  known = {m_chunk, &text, m_hash(text.string_view())};
  return known.identity;
}

// By the place in the chunk, so that what is known does not depend on where memory lies. The factor
// spreads places at any distance from each other.
TextIdentities::Known& TextIdentities::slotOf(const flatbuffers::String& text) {
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;  // of 2^64
  const auto place =
      static_cast<std::uint64_t>(reinterpret_cast<const std::uint8_t*>(&text) - m_start);
  return m_known[place * kGoldenRatio >> (64U - kSlotBits)];
}

}  // namespace vyn::profiling
