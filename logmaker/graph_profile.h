#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "logmaker/noise.h"

namespace vyn::logmaker {

struct NodeProfile {
  std::string name;
  std::uint64_t cycles;  ///< usual cost of one execution
};

/// A graph and what it usually costs.
struct GraphProfile {
  std::string name;
  std::vector<NodeProfile> nodes;  ///< names are unique within the graph
  std::uint64_t inputMicroseconds;
  std::uint64_t outputMicroseconds;
  std::uint64_t memoryBytes;
};

GraphProfile makeGraphProfile(std::size_t index, std::size_t nodeCount, Noise& noise);

/// The graph's parts, each with its share of the nodes and a name of its own.
std::vector<GraphProfile> makeComponents(const GraphProfile& graph);

}  // namespace vyn::logmaker
