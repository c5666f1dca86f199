#include "logmaker/graph_profile.h"

#include <array>
#include <utility>

namespace vyn::logmaker {
namespace {

std::string graphName(std::size_t index) {
  static constexpr std::array kNames = {"image_classifier", "object_detector", "depth_estimator",
                                        "speech_encoder"};
  const std::string name = kNames[index % kNames.size()];
  const std::size_t copy = index / kNames.size();
  return copy == 0 ? name : name + "_" + std::to_string(copy + 1);
}

struct Operation {
  const char* name;
  std::uint64_t minCycles;
  std::uint64_t maxCycles;
};

constexpr Operation kStem = {"stem_conv", 300'000, 500'000};
constexpr Operation kClassifier = {"classifier_fully_connected", 150'000, 250'000};
// One residual block after the other makes the body of the network.
constexpr std::array<Operation, 5> kBlock = {{{"expand_conv", 150'000, 400'000},
                                              {"depthwise_conv", 80'000, 220'000},
                                              {"squeeze_excite", 10'000, 30'000},
                                              {"project_conv", 120'000, 350'000},
                                              {"residual_add", 5'000, 20'000}}};
constexpr std::size_t kBlocksPerStage = 4;

NodeProfile makeNode(const std::string& prefix, const Operation& operation, Noise& noise) {
  return {prefix + operation.name, noise.between(operation.minCycles, operation.maxCycles)};
}

NodeProfile makeBodyNode(std::size_t position, Noise& noise) {
  const std::size_t block = position / kBlock.size();
  const std::string prefix = "stage" + std::to_string(block / kBlocksPerStage + 1) + "_block" +
                             std::to_string(block % kBlocksPerStage + 1) + "_";
  return makeNode(prefix, kBlock[position % kBlock.size()], noise);
}

std::vector<NodeProfile> makeNodes(std::size_t count, Noise& noise) {
  std::vector<NodeProfile> nodes;
  nodes.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (i == 0) {
      nodes.push_back(makeNode("", kStem, noise));
    } else if (i == count - 1) {
      nodes.push_back(makeNode("", kClassifier, noise));
    } else {
      nodes.push_back(makeBodyNode(i - 1, noise));
    }
  }
  return nodes;
}

}  // namespace

GraphProfile makeGraphProfile(std::size_t index, std::size_t nodeCount, Noise& noise) {
  return {.name = graphName(index),
          .nodes = makeNodes(nodeCount, noise),
          .inputMicroseconds = noise.between(150, 400),
          .outputMicroseconds = noise.between(60, 200),
          .memoryBytes = noise.between(4'000, 24'000) * 1024};
}

std::vector<GraphProfile> makeComponents(const GraphProfile& graph) {
  GraphProfile backbone = graph;
  GraphProfile head = graph;
  backbone.name += ".backbone";
  head.name += ".head";
  const auto headNodes = static_cast<std::ptrdiff_t>(graph.nodes.size() / 4);
  backbone.nodes.erase(backbone.nodes.end() - headNodes, backbone.nodes.end());
  head.nodes.erase(head.nodes.begin(), head.nodes.end() - headNodes);
  return {std::move(backbone), std::move(head)};
}

}  // namespace vyn::logmaker
