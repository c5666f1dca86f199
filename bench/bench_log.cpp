#include "bench_log.h"

#include <cstdint>
#include <cstdlib>

#include "input/chunk_verifier.h"
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

}  // namespace

const BenchLog& benchLog() {
  static const BenchLog log = [] {
    BenchLog read;
    ChunkStream chunks(variable("VYN_BENCH_LOG"));
    ChunkVerifier verifier;
    while (chunks.isOpen()) {
      ChunkBuffer chunk = chunks.next();
      if (chunk == nullptr || !verifier.isSound(chunk->data(), chunk->capacity())) {
        break;
      }
      read.bytes += chunk->capacity();
      forEachMessage(*chunk, [&](const schema::Message& message) {
        read.events += countEvents(message.profilingEvents());
      });
      read.chunks.push_back(std::move(chunk));
    }
    return read;
  }();
  return log;
}

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
