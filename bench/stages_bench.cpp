// The stages of the JSON path one by one, on the log that VYN_BENCH_LOG names.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <list>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "input/chunk_stream.h"
#include "input/chunk_verifier.h"
#include "input/event_averager.h"
#include "input/event_decoder.h"
#include "input/flat_buffer_reader_util.h"
#include "json/document_writer.h"
#include "json/json_document.h"
#include "json/message_to_json.h"

namespace vyn::profiling {
namespace {

class NullBuffer : public std::streambuf {
 protected:
  std::streamsize xsputn(const char* /*text*/, std::streamsize length) override { return length; }
  int overflow(int character) override { return character; }
};

struct Log {
  std::vector<ChunkBuffer> chunks;
  std::size_t bytes = 0;
  std::size_t events = 0;
};

std::size_t countEvents(const EventVector* events) {
  std::size_t count = 0;
  if (events != nullptr) {
    for (const schema::Event* event : *events) {
      count += 1 + countEvents(event->subEvents());
    }
  }
  return count;
}

template <typename Visit>
void forEachMessage(const ChunkBuffer::element_type& chunk, const Visit& visit) {
  if (const auto* messages = schema::GetProfileLog(chunk.data())->messages()) {
    for (const schema::Message* message : *messages) {
      visit(*message);
    }
  }
}

const Log& benchLog() {
  static const Log log = [] {
    const char* path = std::getenv("VYN_BENCH_LOG");
    Log read;
    ChunkStream chunks(path != nullptr ? path : "");
    while (chunks.isOpen()) {
      ChunkBuffer chunk = chunks.next();
      if (chunk == nullptr || !isSoundChunk(chunk->data(), chunk->capacity())) {
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

void report(benchmark::State& state, const Log& log) {
  if (log.chunks.empty()) {
    state.SkipWithError("VYN_BENCH_LOG names no profiling log");
  }
  const auto iterations = static_cast<std::int64_t>(state.iterations());
  state.SetBytesProcessed(iterations * static_cast<std::int64_t>(log.bytes));
  state.SetItemsProcessed(iterations * static_cast<std::int64_t>(log.events));
}

void buildDocument(const Log& log) {
  TextStore texts;
  ValueBuilder builder(texts);
  rapidjson::Value messages(rapidjson::kArrayType);
  for (const ChunkBuffer& chunk : log.chunks) {
    texts.startChunk(chunk->data());
    forEachMessage(*chunk, [&](const schema::Message& message) {
      rapidjson::Value value =
          builder.build([&](ValueBuilder& out) { messageToJson(message, out); });
      messages.PushBack(value, g_jsonDocument.GetAllocator());
    });
  }
  g_jsonDocument.PushBack(messages, g_jsonDocument.GetAllocator());
}

void clearDocument() {
  g_jsonDocument.SetArray();
  g_jsonDocument.GetAllocator().Clear();
}

void readStage(benchmark::State& state) {
  const Log& log = benchLog();
  for (auto _ : state) {
    ChunkStream chunks(std::getenv("VYN_BENCH_LOG"));
    while (const ChunkBuffer chunk = chunks.next()) {
      benchmark::DoNotOptimize(chunk->data());
    }
  }
  report(state, log);
}
BENCHMARK(readStage)->Name("read")->Unit(benchmark::kMillisecond);

void verifyStage(benchmark::State& state) {
  const Log& log = benchLog();
  for (auto _ : state) {
    for (const ChunkBuffer& chunk : log.chunks) {
      benchmark::DoNotOptimize(isSoundChunk(chunk->data(), chunk->capacity()));
    }
  }
  report(state, log);
}
BENCHMARK(verifyStage)->Name("verify")->Unit(benchmark::kMillisecond);

void convertStage(benchmark::State& state) {
  const Log& log = benchLog();
  for (auto _ : state) {
    buildDocument(log);
    state.PauseTiming();
    clearDocument();
    state.ResumeTiming();
  }
  report(state, log);
}
BENCHMARK(convertStage)->Name("convert")->Unit(benchmark::kMillisecond);

void textStage(benchmark::State& state) {
  const Log& log = benchLog();
  buildDocument(log);
  NullBuffer nowhere;
  std::ostream stream(&nowhere);
  for (auto _ : state) {
    BlockOutputStream text(stream);
    DocumentWriter writer(text);
    g_jsonDocument.Accept(writer);
    text.writeBlock();
  }
  clearDocument();
  report(state, log);
}
BENCHMARK(textStage)->Name("text")->Unit(benchmark::kMillisecond);

void averageStage(benchmark::State& state) {
  const Log& log = benchLog();
  std::list<std::string> strings;
  std::vector<std::vector<EventNode>> executions;
  for (const ChunkBuffer& chunk : log.chunks) {
    forEachMessage(*chunk, [&](const schema::Message& message) {
      executions.push_back(decodeEvents(message.profilingEvents(), strings));
    });
  }
  for (auto _ : state) {
    EventAverager averager;
    for (const auto& events : executions) {
      averager.add(events);
    }
    benchmark::DoNotOptimize(averager.averages());
  }
  report(state, log);
}
BENCHMARK(averageStage)->Name("average")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vyn::profiling

BENCHMARK_MAIN();
