#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include "input/flat_buffer_reader_util.h"
#include "input/log_walk.h"

namespace vyn::profiling {

/// The log that the benchmarks read, whole in memory.
struct BenchLog {
  std::vector<Chunk> chunks;
  std::size_t bytes = 0;
  std::size_t events = 0;
};

/// The log that VYN_BENCH_LOG names, read at the first call; without chunks when there is none.
const BenchLog& benchLog();

/// The path that VYN_BENCH_LOG holds; empty when there is none.
const char* benchLogPath();

/// The file that VYN_BENCH_OUTPUT names, for benchmarks that write.
const char* benchOutput();

/// Sets a benchmark's rates: bytes and events of the log a second.
void reportRates(benchmark::State& state, const BenchLog& log);

template <typename Visit>
void forEachMessage(const Chunk& chunk, const Visit& visit) {
  if (const auto* messages = schema::GetProfileLog(chunk.data())->messages()) {
    for (const schema::Message* message : *messages) {
      visit(*message);
    }
  }
}

}  // namespace vyn::profiling
