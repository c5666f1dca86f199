// Input: a log file. Whatever the summary reader reads without error it can print, list and
// write the payloads of, twice alike.

#include "check.h"
#include "input/byte_source.h"
#include "input/chunk_walk.h"
#include "input_file.h"
#include "summary_run.h"
#include "table_total.h"

namespace {

namespace profiling = vyn::profiling;

// Reserving a chunk far longer than the file costs nothing but, under the address sanitizer, a
// tenth of a second each time.
constexpr std::size_t kMaxMissing = std::size_t{1024} * 1024;  // bytes

// Goes through a log without judging its chunks; ends at one that cannot be all there.
class LengthWatch : public profiling::ChunkSink {
 public:
  explicit LengthWatch(std::size_t logSize) : m_logSize(logSize) {}

  profiling::ChunkBuffer roomFor(std::size_t size) override {
    return size > m_logSize ? nullptr : profiling::makeChunk(size);
  }
  bool take(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) override {
    return chunk.size == place.announced;
  }

 private:
  std::size_t m_logSize;
};

bool announcesFarTooMuch(const std::uint8_t* data, std::size_t size) {
  profiling::MemorySource source({data, size});
  LengthWatch watch(size);
  const profiling::WalkResult walk = profiling::walkChunks(source, watch);
  const std::size_t end = walk.soundBytes + sizeof(profiling::ChunkLength) + walk.last.announced;
  return walk.end != profiling::WalkEnd::kImpossibleLength && end > size + kMaxMissing;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (announcesFarTooMuch(data, size)) {
    return 0;
  }
  const vyn::fuzz::InputFile log(data, size);
  // Texts that far more events share than the input has bytes are copied that often: the memory
  // runs out, as it may.
  if (vyn::fuzz::tablesOf(log.path()) > size) {
    return 0;
  }
  const vyn::fuzz::SummaryRun run(log.path());
  // The first reader still has its memory, so that this one's lies elsewhere.
  const vyn::fuzz::SummaryRun again(log.path());
  vyn::fuzz::check(again.outputs() == run.outputs(), "the same comes out again");
  return 0;
}
