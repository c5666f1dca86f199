#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/log_facts.h"
#include "base/text_hash.h"
#include "input/text_fingerprints.h"

namespace vyn::profiling {

/// Counts the messages of each graph. Those of graphs beyond the first kMaxGraphs are counted
/// together.
class GraphTally {
 public:
  static constexpr std::size_t kMaxGraphs = 1000;

  /// `name` belongs to the chunk that `fingerprints` knows.
  void add(std::string_view name, TextFingerprints& fingerprints, bool isExecution);

  /// Fills in the graphs.
  void report(MessageFacts& facts) const;

 private:
  GraphFacts& graphOf(std::string_view name, TextFingerprints& fingerprints);

  std::vector<GraphFacts> m_graphs;
  GraphFacts m_others;
  // Names that are kept whole are known by themselves, others by their fingerprints.
  std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> m_shortNames;
  std::unordered_map<TextFingerprint, std::size_t, TextFingerprintHash> m_longNames;
};

}  // namespace vyn::profiling
