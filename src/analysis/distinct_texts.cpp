#include "analysis/distinct_texts.h"

namespace vyn::profiling {
namespace {

// Longer texts, which many events may share, are hashed by way of their fingerprints.
constexpr std::size_t kMaxHashedLength = 256;  // bytes

}  // namespace

void DistinctTexts::add(std::string_view text, TextFingerprints& fingerprints) {
  const std::uint64_t hash = hashOf(text, fingerprints);
  std::uint64_t& recent = m_recent[hash % m_recent.size()];
  if (recent == hash) {
    return;
  }
  recent = hash;
  if (m_hashes.size() < kMaxTexts) {
    m_hashes.insert(hash);
  } else if (!m_hasMore) {
    m_hasMore = m_hashes.count(hash) == 0;
  }
}

std::uint64_t DistinctTexts::hashOf(std::string_view text, TextFingerprints& fingerprints) const {
  if (text.size() <= kMaxHashedLength) {
    return m_hash(text);
  }
  const TextFingerprint fingerprint = fingerprints.ofChunkText(text);
  return m_hash({reinterpret_cast<const char*>(&fingerprint), sizeof(fingerprint)});
}

}  // namespace vyn::profiling
