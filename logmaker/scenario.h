#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "logmaker/backend_events.h"
#include "logmaker/graph_profile.h"
#include "logmaker/log_content.h"
#include "logmaker/noise.h"

namespace vyn::logmaker {

struct ScenarioOptions {
  std::uint64_t seed = 1;
  std::size_t graphs = 1;
  std::size_t nodes = 40;          ///< per graph
  std::uint64_t executions = 10;   ///< per graph
  std::size_t objectPayloads = 1;  ///< in each graph's first execution
  std::size_t binarySections = 0;  ///< per graph
  bool isAsync = false;
  bool hasComponents = false;
};

/// A run of the inference tool from loading the backend's library to closing the device.
/// Equal options give equal messages.
class Scenario {
 public:
  using MessageSink = std::function<void(const Message&)>;

  explicit Scenario(const ScenarioOptions& options);

  LogHeader header() const;

  /// Hands every message of the run to the sink, one at a time. Once isFull answers true and each
  /// graph has executed, the executions end early.
  void play(const MessageSink& sink, const std::function<bool()>& isFull);

 private:
  void playStart();
  void playExecutions(const std::function<bool()>& isFull);
  void playComponents();
  void playEnd();

  void execute(const GraphProfile& graph, bool isFirst);
  void send(schema::MethodType method, TimedEvents content, const std::string& graphName = {});
  void sendUntimed(Message message);

  /// Readers keep the INIT events of the latest message only, so each message repeats them.
  TimedEvents withInitEvents(TimedEvents content) const;

  ScenarioOptions m_options;
  Noise m_noise;
  std::vector<GraphProfile> m_graphs;
  std::vector<Event> m_initEvents;
  std::uint64_t m_startTime;  ///< microseconds of the steady clock
  std::uint64_t m_now;        ///< microseconds of the steady clock
  std::uint64_t m_memory;     ///< bytes in use by the tool
  std::uint64_t m_epochTime;  ///< microseconds since the Unix epoch
  std::uint64_t m_sequenceNumber = 0;
  std::uint64_t m_executed = 0;
  std::uint64_t m_executeTime = 0;  ///< microseconds
  MessageSink m_sink;
};

}  // namespace vyn::logmaker
