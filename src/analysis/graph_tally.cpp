#include "analysis/graph_tally.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "analysis/kept_text.h"

namespace vyn::profiling {

void GraphTally::add(const flatbuffers::String& name, TextIdentities& identities,
                     bool isExecution) {
  GraphFacts& graph = graphOf(name, identities);
  ++graph.messages;
  graph.executions += isExecution ? 1 : 0;
}

GraphFacts& GraphTally::graphOf(const flatbuffers::String& name, TextIdentities& identities) {
  const std::optional<std::uint64_t> identity = identities.of(name);
  if (!identity) {
    return m_others;
  }
  if (m_recent < m_graphs.size() && *identity == m_recentIdentity) {
    return m_graphs[m_recent];
  }
  if (const auto found = m_indices.find(*identity); found != m_indices.end()) {
    m_recentIdentity = *identity;
    m_recent = found->second;
    return m_graphs[m_recent];
  }
  if (m_graphs.size() == kMaxGraphs) {
    return m_others;
  }
  m_indices.emplace(*identity, m_graphs.size());
  return m_graphs.emplace_back(GraphFacts{.name = keepText(name.string_view())});
}

void GraphTally::report(MessageFacts& facts) const {
  facts.graphs = m_graphs;
  facts.otherGraphs = m_others;
  // Long names with one beginning stay in the order of the log.
  std::stable_sort(facts.graphs.begin(), facts.graphs.end(),
                   [](const GraphFacts& left, const GraphFacts& right) {
                     return std::tie(right.messages, left.name.start, left.name.size) <
                            std::tie(left.messages, right.name.start, right.name.size);
                   });
}

}  // namespace vyn::profiling
