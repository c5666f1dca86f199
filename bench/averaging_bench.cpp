// How averaging and the look-up of graphs grow: items per second stay about the same, however many
// siblings an event has and however many graphs a log.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "input/event_averager.h"
#include "input/group_index.h"

namespace vyn::profiling {
namespace {

constexpr int kExecutions = 100;  // of each graph whose siblings are averaged
constexpr std::int64_t kEvents = 1'000'000;

std::vector<EventNode> siblings(std::int64_t count) {
  std::vector<EventNode> events(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < events.size(); ++i) {
    events[i].identifier = "layer_" + std::to_string(i);
    events[i].dataType = EventDataType::UINT_64;
    events[i].value.uint64 = i;
  }
  return events;
}

// Whatever the number of siblings, as many graphs are averaged as make the same number of events:
// otherwise short lists would stay in the processor's caches, and only long ones would not.
void averageSiblings(benchmark::State& state) {
  // Each execution has events of its own, as in a log.
  const std::vector<std::vector<EventNode>> executions(
      static_cast<std::size_t>(kEvents / state.range(0)), siblings(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    for (auto graph = executions.begin(); graph != executions.end(); graph += kExecutions) {
      EventAverager averager;
      std::for_each_n(graph, kExecutions, [&](const auto& events) { averager.add(events); });
      benchmark::DoNotOptimize(averager.takeAverages());
    }
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kEvents);
}
BENCHMARK(averageSiblings)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The same events, only read: what averaging cannot be faster than.
void readSiblings(benchmark::State& state) {
  const std::vector<std::vector<EventNode>> executions(
      static_cast<std::size_t>(kEvents / state.range(0)), siblings(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    std::uint64_t sum = 0;
    for (const auto& events : executions) {
      for (const EventNode& event : events) {
        sum += event.value.uint64 + event.identifier.size() + event.children.size();
      }
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kEvents);
}
BENCHMARK(readSiblings)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// Each execution brings names that no earlier one had.
void averageNewcomers(benchmark::State& state) {
  std::vector<std::vector<EventNode>> executions;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    executions.push_back(siblings(1));
    executions.back()[0].identifier += "_" + std::to_string(i);
  }
  for ([[maybe_unused]] auto _ : state) {
    EventAverager averager;
    for (const auto& events : executions) {
      averager.add(events);
    }
    benchmark::DoNotOptimize(averager.takeAverages());
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(averageNewcomers)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void fileGraphs(benchmark::State& state) {
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    names.push_back("graph_" + std::to_string(i));
  }
  for ([[maybe_unused]] auto _ : state) {
    GroupIndex index;
    TextFingerprints fingerprints;
    std::vector<ExecutionGroup> groups;
    for (const std::string& name : names) {
      index.add(groups, name, fingerprints, {});
    }
    benchmark::DoNotOptimize(groups);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(fileGraphs)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vyn::profiling

BENCHMARK_MAIN();
