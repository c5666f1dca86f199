#include "bench_log.h"

#include <cstdint>
#include <cstdlib>
#include <utility>

#include "input/event_decoder.h"

namespace vyn::profiling {
namespace {

std::size_t countEvents(const EventVector* events) {
  std::size_t count = 0;
  if (events != nullptr) {
    for (const schema::Event* event : *events) {
      count += 1 + countEvents(event->subEvents());
    }
  }
  return count;
}

const char* variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

class Keeper : public MessageSink {
 public:
  void chunk(const Chunk& chunk, const ChunkPlace& /*place*/) override {
    m_log.bytes += chunk.size;
    m_log.chunks.push_back(chunk);
  }
  void message(const schema::Message& message) override {
    m_log.events += countEvents(message.profilingEvents());
  }
  BenchLog take() { return std::move(m_log); }

 private:
  BenchLog m_log;
};

}  // namespace

const BenchLog& benchLog() {
  static const BenchLog log = [] {
    FileSource file(benchLogPath());
    Keeper keeper;
    [[maybe_unused]] const WalkResult walk = walkLog(file, keeper);
    return keeper.take();
  }();
  return log;
}

const char* benchLogPath() { return variable("VYN_BENCH_LOG"); }

const char* benchOutput() { return variable("VYN_BENCH_OUTPUT"); }

void reportRates(benchmark::State& state, const BenchLog& log) {
  if (log.chunks.empty()) {
    state.SkipWithError("VYN_BENCH_LOG names no profiling log");
  }
  const auto iterations = static_cast<std::int64_t>(state.iterations());
  state.SetBytesProcessed(iterations * static_cast<std::int64_t>(log.bytes));
  state.SetItemsProcessed(iterations * static_cast<std::int64_t>(log.events));
}

}  // namespace vyn::profiling
