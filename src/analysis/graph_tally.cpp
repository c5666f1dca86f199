#include "analysis/graph_tally.h"

#include <algorithm>
#include <tuple>

#include "analysis/kept_text.h"

namespace vyn::profiling {
namespace {

// The graph that `index` has for the key, or else a new one. None when there are too many.
template <typename Index, typename Key>
GraphFacts* findOrAdd(std::vector<GraphFacts>& graphs, Index& index, const Key& key,
                      std::string_view name) {
  if (const auto found = index.find(key); found != index.end()) {
    return &graphs[found->second];
  }
  if (graphs.size() == GraphTally::kMaxGraphs) {
    return nullptr;
  }
  index.emplace(key, graphs.size());
  return &graphs.emplace_back(GraphFacts{.name = keepText(name)});
}

}  // namespace

void GraphTally::add(std::string_view name, TextFingerprints& fingerprints, bool isExecution) {
  GraphFacts& graph = graphOf(name, fingerprints);
  ++graph.messages;
  graph.executions += isExecution ? 1 : 0;
}

GraphFacts& GraphTally::graphOf(std::string_view name, TextFingerprints& fingerprints) {
  GraphFacts* const graph =
      name.size() <= kMaxKeptText
          ? findOrAdd(m_graphs, m_shortNames, name, name)
          : findOrAdd(m_graphs, m_longNames, fingerprints.ofChunkText(name), name);
  return graph != nullptr ? *graph : m_others;
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
