// The stages of the JSON path one by one, on the log that VYN_BENCH_LOG names, into the file that
// VYN_BENCH_OUTPUT names.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <streambuf>
#include <string>

#include "bench_log.h"
#include "input/chunk_verifier.h"
#include "json/block_output_stream.h"
#include "json/document_writer.h"
#include "json/json_document.h"
#include "json/message_to_json.h"
#include "json/value_builder.h"

namespace vyn::profiling {
namespace {

// Takes everything and keeps its length.
class CountingBuffer : public std::streambuf {
 public:
  std::streamsize length() const { return m_length; }

 protected:
  std::streamsize xsputn(const char* /*text*/, std::streamsize length) override {
    m_length += length;
    return length;
  }
  int overflow(int character) override {
    ++m_length;
    return character;
  }

 private:
  std::streamsize m_length = 0;
};

void buildDocument(const BenchLog& log) {
  TextStore texts;
  ValueBuilder builder(texts);
  JsonValue messages(rapidjson::kArrayType);
  for (const Chunk& chunk : log.chunks) {
    texts.startChunk(chunk.data());
    forEachMessage(chunk, [&](const schema::Message& message) {
      JsonValue value = builder.build([&](ValueBuilder& out) { messageToJson(message, out); });
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
  const BenchLog& log = benchLog();
  for ([[maybe_unused]] auto _ : state) {
    class Sink : public ChunkSink {
      bool take(const Chunk& chunk, const ChunkPlace& /*place*/) override {
        benchmark::DoNotOptimize(chunk.data());
        return true;
      }
    };
    FileSource file(benchLogPath());
    Sink sink;
    benchmark::DoNotOptimize(walkChunks(file, sink));
  }
  reportRates(state, log);
}
BENCHMARK(readStage)->Name("read")->Unit(benchmark::kMillisecond);

void verifyStage(benchmark::State& state) {
  const BenchLog& log = benchLog();
  for ([[maybe_unused]] auto _ : state) {
    ChunkVerifier verifier;
    for (const Chunk& chunk : log.chunks) {
      benchmark::DoNotOptimize(verifier.isSound(chunk.bytes()));
    }
  }
  reportRates(state, log);
}
BENCHMARK(verifyStage)->Name("verify")->Unit(benchmark::kMillisecond);

void convertStage(benchmark::State& state) {
  const BenchLog& log = benchLog();
  for ([[maybe_unused]] auto _ : state) {
    buildDocument(log);
    state.PauseTiming();
    clearDocument();
    state.ResumeTiming();
  }
  reportRates(state, log);
}
BENCHMARK(convertStage)->Name("convert")->Unit(benchmark::kMillisecond);

void writeText(std::ostream& stream) {
  BlockOutputStream text(stream);
  DocumentWriter writer(text);
  g_jsonDocument.Accept(writer);
  text.writeBlock();
}

void textStage(benchmark::State& state) {
  const BenchLog& log = benchLog();
  buildDocument(log);
  CountingBuffer nowhere;
  std::ostream stream(&nowhere);
  for ([[maybe_unused]] auto _ : state) {
    writeText(stream);
  }
  clearDocument();
  reportRates(state, log);
}
BENCHMARK(textStage)->Name("text")->Unit(benchmark::kMillisecond);

// As many bytes as the text has, in blocks as large, into a new file.
void writeStage(benchmark::State& state) {
  const BenchLog& log = benchLog();
  buildDocument(log);
  CountingBuffer nowhere;
  std::ostream stream(&nowhere);
  writeText(stream);
  clearDocument();
  const std::string block(BlockOutputStream::kBlockSize, 'x');
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    std::remove(benchOutput());
    state.ResumeTiming();
    std::ofstream file(benchOutput());
    for (std::streamsize left = nowhere.length(); left > 0;) {
      const auto size = std::min(left, static_cast<std::streamsize>(block.size()));
      file.write(block.data(), size);
      left -= size;
    }
  }
  reportRates(state, log);
}
BENCHMARK(writeStage)->Name("write")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vyn::profiling

BENCHMARK_MAIN();
