#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/json_log.h"
#include "support/log_event.h"

namespace vyn::test {

using profiling::schema::MethodType;

/// One message of a log; what is left out is absent from it.
struct Message {
  MethodType method = MethodType::NONE;
  std::uint64_t timestamp = 0;
  std::uint64_t sequenceNumber = 0;
  std::uint64_t startTime = 0;  ///< microseconds
  std::uint64_t stopTime = 0;   ///< microseconds
  int visibilityLevel = 0;
  std::optional<std::string> graph = {};
  Events events = {};
};

/// When a step was logged, how long it took and from which level upwards readers see it.
struct Step {
  std::uint64_t duration = 0;  ///< microseconds
  std::uint64_t timestamp = 0;
  int visibilityLevel = 0;
};

/// The graph of a message that names none.
inline constexpr std::nullopt_t kNoGraph = std::nullopt;

using Graph = std::optional<std::string>;

Message createContext(Step step = {});
Message composeGraphs(Step step = {});
Message createFromBinary(Step step = {}, const Events& events = {});
Message finalize(const Graph& graph, Step step = {}, const Events& events = {});
Message execute(const Graph& graph, Step step = {}, const Events& events = {});
Message executeAsync(const Graph& graph, Step step = {}, const Events& events = {});
Message graphComponent(const Graph& graph, Step step = {}, const Events& events = {});
Message applyBinarySection(const Graph& graph, Step step = {}, const Events& events = {});
Message executeIps(Step step = {}, const Events& events = {});
Message loadLibrary(Step step = {}, const Events& events = {});
Message deInit(Step step = {}, const Events& events = {});

/// A step of any method, which may be a number that the schema has no name for.
Message stepOf(MethodType method, const Graph& graph = kNoGraph, Step step = {},
               const Events& events = {});

/// A chunk in the JSON form of the schema; the header is in this form already.
std::string chunkOf(const std::vector<Message>& messages, const std::string& header = "");

/// A whole log of one chunk with these messages.
std::string logWith(const std::vector<Message>& messages);

}  // namespace vyn::test
