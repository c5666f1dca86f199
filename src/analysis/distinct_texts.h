#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_set>

#include "base/text_hash.h"
#include "input/text_fingerprints.h"

namespace vyn::profiling {

/// Counts how many different texts there are, up to kMaxTexts. It keeps 64 random bits of each, not
/// the text: that two of them are taken for one has a probability below 2^-30.
class DistinctTexts {
 public:
  static constexpr std::size_t kMaxTexts = 100'000;

  /// `text` belongs to the chunk that `fingerprints` knows.
  void add(std::string_view text, TextFingerprints& fingerprints);

  std::uint64_t count() const { return m_hashes.size(); }
  bool hasMore() const { return m_hasMore; }

 private:
  std::uint64_t hashOf(std::string_view text, TextFingerprints& fingerprints) const;

  TextHash m_hash;
  std::unordered_set<std::uint64_t> m_hashes;
  std::array<std::uint64_t, 256> m_recent{};  // hashes that came lately, by their lowest bits
  bool m_hasMore = false;                     // than are counted
};

}  // namespace vyn::profiling
