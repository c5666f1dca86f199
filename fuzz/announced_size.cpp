#include "announced_size.h"

#include "input/byte_source.h"
#include "input/chunk_walk.h"

namespace vyn::fuzz {
namespace {

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

}  // namespace

bool announcesFarTooMuch(std::span<const std::uint8_t> log) {
  profiling::MemorySource source(log);
  LengthWatch watch(log.size());
  const profiling::WalkResult walk = profiling::walkChunks(source, watch);
  const std::size_t end = walk.soundBytes + sizeof(profiling::ChunkLength) + walk.last.announced;
  return walk.end != profiling::WalkEnd::kImpossibleLength && end > log.size() + kMaxMissing;
}

}  // namespace vyn::fuzz
