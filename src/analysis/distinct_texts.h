#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_set>

namespace vyn::profiling {

/// Counts how many different texts there are, up to kMaxTexts, by their identities (see
/// TextIdentities): that two of them are taken for one has a probability below 2^-30.
class DistinctTexts {
 public:
  static constexpr std::size_t kMaxTexts = 100'000;

  void add(std::uint64_t identity);

  /// A text without an identity, which may be any.
  void addUnknown() { m_mayHaveMore = true; }

  std::uint64_t count() const { return m_identities.size(); }

  /// Whether more texts came than are counted, or ones that may be more.
  bool mayHaveMore() const { return m_mayHaveMore; }

 private:
  std::unordered_set<std::uint64_t> m_identities;
  std::array<std::uint64_t, 256> m_recent{};  // that came lately, by their lowest bits
  bool m_mayHaveMore = false;
};

}  // namespace vyn::profiling
