#include "logmaker/scenario.h"

#include <utility>

namespace vyn::logmaker {
namespace {

using schema::MethodType;

constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;
// 1 January 2024; runs lie within the year after it.
constexpr std::uint64_t kEarliestRun = 1'704'067'200 * kMicrosecondsPerSecond;
constexpr std::uint64_t kSecondsPerYear = 31'536'000;
// Visibility level of the messages about parts of graphs; all others have 0.
constexpr std::int8_t kDetailLevel = 1;

std::vector<GraphProfile> makeGraphs(const ScenarioOptions& options, Noise& noise) {
  std::vector<GraphProfile> graphs;
  for (std::size_t i = 0; i < options.graphs; ++i) {
    graphs.push_back(makeGraphProfile(i, options.nodes, noise));
  }
  return graphs;
}

}  // namespace

Scenario::Scenario(const ScenarioOptions& options)
    : m_options(options),
      m_noise(options.seed),
      m_graphs(makeGraphs(options, m_noise)),
      m_initEvents(makeInitEvents(m_noise)),
      m_startTime(m_noise.between(1'000, 900'000) * 1'000),
      m_now(m_startTime),
      m_memory(m_noise.between(20'000, 40'000) * 1024),
      m_epochTime(kEarliestRun + m_noise.between(0, kSecondsPerYear) * kMicrosecondsPerSecond) {}

LogHeader Scenario::header() const {
  return {.timeScale = 1.0F,
          .epochTime = m_epochTime,
          .timestamp = m_startTime,
          .major = 1,
          .minor = 2,
          .teeny = 0,
          .netRunVersion = "2.4.1",
          .backendVersion = "1.9.0-accelerator"};
}

void Scenario::play(const MessageSink& sink, const std::function<bool()>& isFull) {
  m_sink = sink;
  playStart();
  playExecutions(isFull);
  if (m_options.hasComponents) {
    playComponents();
  }
  playEnd();
}

void Scenario::playStart() {
  send(MethodType::LIBRARY_LOAD, makeLibraryLoadEvents(m_noise));
  send(MethodType::APP_CONTEXT_CREATE, {{}, m_noise.between(2'000, 5'000)});
  send(MethodType::APP_COMPOSE_GRAPHS, {{}, m_noise.between(10'000, 40'000) * m_graphs.size()});
  for (const GraphProfile& graph : m_graphs) {
    m_memory += graph.memoryBytes;
    send(MethodType::BACKEND_FINALIZE, withInitEvents(makeFinalizeEvents(graph, m_noise)),
         graph.name);
  }
  for (const GraphProfile& graph : m_graphs) {
    for (std::size_t i = 0; i < m_options.binarySections; ++i) {
      send(MethodType::APPLY_BINARY_SECTION, makeBinarySectionEvents(m_noise), graph.name);
    }
  }
}

void Scenario::playExecutions(const std::function<bool()>& isFull) {
  for (std::uint64_t round = 0; round < m_options.executions; ++round) {
    for (const GraphProfile& graph : m_graphs) {
      if (round > 0 && isFull()) {
        return;
      }
      execute(graph, round == 0);
    }
  }
}

void Scenario::execute(const GraphProfile& graph, bool isFirst) {
  TimedEvents content = makeExecuteEvents(graph, m_options.isAsync, m_noise);
  if (isFirst) {
    for (std::size_t i = 0; i < m_options.objectPayloads; ++i) {
      content.events.push_back(makePayloadEvent(graph, i, m_noise));
    }
  }
  ++m_executed;
  m_executeTime += content.microseconds;
  send(m_options.isAsync ? MethodType::BACKEND_EXECUTE_ASYNC : MethodType::BACKEND_EXECUTE,
       withInitEvents(std::move(content)), graph.name);
}

// The backend times no components, only their nodes, so their messages have no metrics.
void Scenario::playComponents() {
  for (const GraphProfile& graph : m_graphs) {
    for (const GraphProfile& component : makeComponents(graph)) {
      TimedEvents content = {makeComponentEvents(component, m_options.isAsync, m_noise), 0};
      sendUntimed({.method = MethodType::BACKEND_GRAPH_COMPONENT,
                   .visibilityLevel = kDetailLevel,
                   .profilingEvents = withInitEvents(std::move(content)).events,
                   .graphName = component.name});
    }
  }
}

void Scenario::playEnd() {
  if (m_executed > 0) {
    sendUntimed({.method = MethodType::APP_EXECUTE_IPS,
                 .profilingEvents = makeIpsEvents(m_executeTime, m_executed)});
  }
  send(MethodType::BACKEND_DEINIT, makeDeInitEvents(m_noise));
}

void Scenario::send(MethodType method, TimedEvents content, const std::string& graphName) {
  const AppMetrics metrics = {.startTime = m_now,
                              .stopTime = m_now + content.microseconds,
                              .startMem = m_memory,
                              .stopMem = m_memory + m_noise.between(0, 16) * 4096};
  m_now = metrics.stopTime;
  sendUntimed({.method = method,
               .appMetrics = metrics,
               .profilingEvents = std::move(content.events),
               .graphName = graphName});
}

void Scenario::sendUntimed(Message message) {
  m_now += m_noise.between(5, 50);
  message.timestamp = m_now;
  message.sequenceNumber = m_sequenceNumber++;
  m_sink(message);
}

TimedEvents Scenario::withInitEvents(TimedEvents content) const {
  content.events.insert(content.events.begin(), m_initEvents.begin(), m_initEvents.end());
  return content;
}

}  // namespace vyn::logmaker
