#include "logmaker/backend_events.h"

#include <utility>

namespace vyn::logmaker {
namespace {

using schema::EventType;
using schema::EventUnit;

constexpr std::uint64_t kCyclesPerMicrosecond = 800;
constexpr std::size_t kPayloadSize = 4096;  // bytes

Event microseconds(std::string identifier, EventType type, std::uint64_t value) {
  return {std::move(identifier), type, EventUnit::MICROSEC, value};
}

Event cycles(std::string identifier, EventType type, std::uint64_t value) {
  return {std::move(identifier), type, EventUnit::CYCLES, value};
}

Event queueWait(std::uint64_t value) {
  return microseconds("queue wait time", EventType::EXECUTE_QUEUE_WAIT, value);
}

std::uint64_t cycleSum(const std::vector<Event>& events) {
  std::uint64_t sum = 0;
  for (const Event& event : events) {
    sum += std::get<std::uint64_t>(event.value);
  }
  return sum;
}

/// A node's time on the device, split into moving and computing.
Event makeNodeEvent(const NodeProfile& node, Noise& noise) {
  const std::uint64_t total = noise.vary(node.cycles, 5);
  const std::uint64_t load = total / 100 * noise.between(10, 25);
  const std::uint64_t store = total / 100 * noise.between(3, 10);
  Event event = cycles(node.name, EventType::NODE, total);
  event.subEvents = {cycles("load", EventType::NODE, load),
                     cycles("compute", EventType::NODE, total - load - store),
                     cycles("store", EventType::NODE, store)};
  return event;
}

Event makeDeviceEvent(const GraphProfile& graph, Noise& noise) {
  std::vector<Event> nodes;
  nodes.reserve(graph.nodes.size());
  for (const NodeProfile& node : graph.nodes) {
    nodes.push_back(makeNodeEvent(node, noise));
  }
  const std::uint64_t schedulingCycles = noise.between(8'000, 12'000);
  Event event = cycles("accelerator execute cycles", EventType::EXECUTE_DEVICE,
                       cycleSum(nodes) + schedulingCycles);
  event.subEvents = std::move(nodes);
  return event;
}

}  // namespace

std::vector<Event> makeInitEvents(Noise& noise) {
  return {
      microseconds("device open time", EventType::INIT, noise.between(3'000, 6'000)),
      {"device memory reserved", EventType::INIT, EventUnit::BYTES, std::int64_t{64} * 1024 * 1024},
      {"performance profile", EventType::INIT, EventUnit::NONE, std::string("sustained")},
  };
}

TimedEvents makeLibraryLoadEvents(Noise& noise) {
  const std::uint64_t latency = noise.between(8'000, 15'000);
  return {{microseconds("library load latency", EventType::BACKEND, latency),
           {"library", EventType::BACKEND, EventUnit::NONE, std::string("libVynBackend.so")}},
          latency + noise.between(20, 60)};
}

TimedEvents makeFinalizeEvents(const GraphProfile& graph, Noise& noise) {
  const std::uint64_t nodes = graph.nodes.size();
  const std::uint64_t layout = noise.between(2'000, 4'000);
  const std::uint64_t tiling = noise.between(4'000, 9'000);
  const std::uint64_t planning = noise.between(1'000, 3'000);
  const std::uint64_t total = (layout + tiling + planning) * (nodes + 1);

  Event passes = microseconds("graph optimisation time", EventType::FINALIZE, total);
  passes.subEvents = {microseconds("layout", EventType::FINALIZE, layout * (nodes + 1)),
                      microseconds("tiling", EventType::FINALIZE, tiling * (nodes + 1)),
                      microseconds("memory planning", EventType::FINALIZE, planning * (nodes + 1))};
  return {{std::move(passes),
           {"nodes", EventType::FINALIZE, EventUnit::COUNT, nodes},
           {"memory against plan", EventType::FINALIZE, EventUnit::BYTES,
            -static_cast<std::int64_t>(noise.between(1, 64) * 4096)},
           {"nodes fused per pass", EventType::FINALIZE, EventUnit::NONE,
            static_cast<float>(noise.between(5, 60)) / 8.0F},
           {"estimated device use", EventType::FINALIZE, EventUnit::NONE,
            static_cast<double>(noise.between(400, 980)) / 1000.0}},
          total + noise.between(300, 900)};
}

TimedEvents makeBinarySectionEvents(Noise& noise) {
  const std::uint64_t time = noise.between(500, 1'500);
  return {{microseconds("section apply time", EventType::BACKEND, time),
           {"section size", EventType::BACKEND, EventUnit::BYTES, noise.between(64, 512) * 1024}},
          time + noise.between(20, 60)};
}

// Every value is a whole unsigned number: readers average executions as such.
TimedEvents makeExecuteEvents(const GraphProfile& graph, bool isAsync, Noise& noise) {
  std::vector<Event> events;
  std::uint64_t waitTime = 0;
  if (isAsync) {
    waitTime = noise.between(40, 400);
    events.push_back(queueWait(waitTime));
  }
  const std::uint64_t inputTime = noise.vary(graph.inputMicroseconds, 10);
  Event device = makeDeviceEvent(graph, noise);
  const std::uint64_t deviceTime =
      std::get<std::uint64_t>(device.value) / kCyclesPerMicrosecond + 1;
  const std::uint64_t outputTime = noise.vary(graph.outputMicroseconds, 10);
  const std::uint64_t backendTime = inputTime + deviceTime + outputTime;

  events.push_back(microseconds("backend execute time", EventType::EXECUTE, backendTime));
  events.push_back(microseconds("input conversion time", EventType::EXECUTE_PREPROCESS, inputTime));
  events.push_back(std::move(device));
  events.push_back(
      microseconds("output conversion time", EventType::EXECUTE_POSTPROCESS, outputTime));
  events.push_back(
      {"cache misses", EventType::BACKEND, EventUnit::COUNT, noise.between(1'000, 90'000)});
  events.push_back(
      {"arena state", EventType::BACKEND, EventUnit::BACKEND, noise.between(0, 1'000)});
  return {std::move(events), waitTime + backendTime + noise.between(30, 120)};
}

std::vector<Event> makeComponentEvents(const GraphProfile& component, bool isAsync, Noise& noise) {
  std::vector<Event> events;
  events.push_back(
      microseconds("component build time", EventType::FINALIZE, noise.between(5'000, 9'000)));
  // Readers take a component for an execution, and expect one queue wait in each asynchronous one.
  // It is 0 because components are not queued by themselves.
  if (isAsync) {
    events.push_back(queueWait(0));
  }
  events.push_back(makeDeviceEvent(component, noise));
  return events;
}

TimedEvents makeDeInitEvents(Noise& noise) {
  const std::uint64_t time = noise.between(2'000, 5'000);
  return {{microseconds("device close time", EventType::DEINIT, time),
           {"buffers still mapped", EventType::DEINIT, EventUnit::COUNT, std::uint64_t{0}},
           {"shutdown reason", EventType::DEINIT, EventUnit::NONE, std::string("requested")},
           {"trace complete", EventType::DEINIT, EventUnit::NONE, {}}},
          time + noise.between(100, 300)};
}

Event makePayloadEvent(const GraphProfile& graph, std::size_t number, Noise& noise) {
  std::vector<std::uint8_t> bytes(kPayloadSize);
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(noise.next() >> 56U);
  }
  const std::string suffix = number == 0 ? "" : "_" + std::to_string(number + 1);
  return {.identifier = "execution trace" + suffix,
          .type = EventType::BACKEND,
          .unit = EventUnit::OBJECT,
          .value = std::move(bytes),
          .secondaryName = graph.name + "_trace" + suffix + ".bin"};
}

std::vector<Event> makeIpsEvents(std::uint64_t microsecondsTaken, std::uint64_t executions) {
  return {microseconds("duration", EventType::NONE, microsecondsTaken),
          {"count", EventType::NONE, EventUnit::COUNT, executions}};
}

}  // namespace vyn::logmaker
