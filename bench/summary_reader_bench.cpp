// The summary reader's work on the log that VYN_BENCH_LOG names: averaging, and the CSV listing
// into the file that VYN_BENCH_OUTPUT names.

#include <fstream>
#include <list>
#include <string>
#include <vector>

#include "bench_log.h"
#include "core/vyn_profile_log_reader.h"
#include "input/event_averager.h"
#include "input/event_decoder.h"

namespace vyn::profiling {
namespace {

struct Executions {
  std::list<std::string> texts;
  std::vector<std::vector<EventNode>> events;
};

const Executions& executions() {
  static const Executions decoded = [] {
    Executions all;
    for (const Chunk& chunk : benchLog().chunks) {
      forEachMessage(chunk, [&](const schema::Message& message) {
        all.events.push_back(decodeEvents(message.profilingEvents(), all.texts));
      });
    }
    return all;
  }();
  return decoded;
}

void averageStage(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    EventAverager averager;
    for (const auto& events : executions().events) {
      averager.add(events);
    }
    benchmark::DoNotOptimize(averager.takeAverages());
  }
  reportRates(state, benchLog());
}
BENCHMARK(averageStage)->Name("average")->Unit(benchmark::kMillisecond);

// A file that writes when its buffer is full, whatever flush asks of it.
class UnflushedFile : public std::filebuf {
 protected:
  int sync() override { return 0; }
};

void listEvents(benchmark::State& state, std::filebuf& file) {
  VynProfileLogReader reader(std::string(), VisibilityLevel{127});
  for ([[maybe_unused]] auto _ : state) {
    file.open(benchOutput(), std::ios::out | std::ios::trunc);
    std::ostream stream(&file);
    for (const auto& events : executions().events) {
      reader.writeEventsCsv(stream, events, 0, "EXECUTE");
    }
    file.close();
  }
  reportRates(state, benchLog());
}

void csvStage(benchmark::State& state) {
  std::filebuf file;
  listEvents(state, file);
}
BENCHMARK(csvStage)->Name("csv")->Unit(benchmark::kMillisecond);

void unflushedCsvStage(benchmark::State& state) {
  UnflushedFile file;
  listEvents(state, file);
}
BENCHMARK(unflushedCsvStage)->Name("csv without flush")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vyn::profiling

BENCHMARK_MAIN();
