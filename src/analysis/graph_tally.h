#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "analysis/log_facts.h"
#include "analysis/text_identities.h"

namespace vyn::profiling {

/// Counts the messages of each graph. Those of graphs beyond the first kMaxGraphs, and of names
/// that were not looked at, are counted together.
class GraphTally {
 public:
  static constexpr std::size_t kMaxGraphs = 1000;

  /// `name` belongs to the chunk that `identities` knows.
  void add(const flatbuffers::String& name, TextIdentities& identities, bool isExecution);

  /// Fills in the graphs.
  void report(MessageFacts& facts) const;

 private:
  GraphFacts& graphOf(const flatbuffers::String& name, TextIdentities& identities);

  std::vector<GraphFacts> m_graphs;
  GraphFacts m_others;
  std::unordered_map<std::uint64_t, std::size_t> m_indices;  // of the graphs, by their identities
  std::uint64_t m_recentIdentity = 0;
  std::size_t m_recent = SIZE_MAX;  // the graph that counted last: often the next, too
};

}  // namespace vyn::profiling
