#include "damages.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "input/byte_source.h"
#include "input/chunk_walk.h"

namespace vyn::test {
namespace {

using profiling::ChunkLength;
using Chunks = std::vector<std::string>;  // each with its length in front

// Copies a sound log's chunks.
class Cutter : public profiling::ChunkSink {
 public:
  explicit Cutter(const std::string& log) : m_log(log) {}

  bool take(const profiling::Chunk& /*chunk*/, const profiling::ChunkPlace& place) override {
    m_chunks.push_back(m_log.substr(place.offset, sizeof(ChunkLength) + place.announced));
    return true;
  }

  const Chunks& chunks() const { return m_chunks; }

 private:
  const std::string& m_log;
  Chunks m_chunks;
};

Chunks chunksOf(const std::string& log) {
  profiling::MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  Cutter cutter(log);
  if (profiling::walkChunks(source, cutter).end != profiling::WalkEnd::kEndOfLog) {
    throw std::invalid_argument("the log to damage is not made of whole chunks");
  }
  return cutter.chunks();
}

std::string joined(const Chunks& chunks) {
  std::string log;
  for (const std::string& chunk : chunks) {
    log += chunk;
  }
  return log;
}

// A log may end behind a chunk and up to three bytes, too few for a length. A chunk may end in
// padding, which is not missed.
Expectation expectationOfCut(std::size_t rest, std::size_t chunkSize) {
  constexpr std::size_t kMaxPadding = 7;
  if (rest < sizeof(ChunkLength)) {
    return Expectation::kSound;
  }
  return chunkSize - rest > kMaxPadding ? Expectation::kDamaged : Expectation::kEither;
}

void cut(const std::string& log, const DamageVisitor& visit) {
  std::size_t chunkStart = 0;
  for (const std::string& chunk : chunksOf(log)) {
    for (std::size_t rest = 0; rest < chunk.size(); ++rest) {
      const std::size_t size = chunkStart + rest;
      visit("cut to " + std::to_string(size) + " bytes", log.substr(0, size),
            expectationOfCut(rest, chunk.size()));
    }
    chunkStart += chunk.size();
  }
}

void flipBits(const std::string& log, const DamageVisitor& visit) {
  for (std::size_t byte = 0; byte < log.size(); ++byte) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = log;
      damaged[byte] = static_cast<char>(damaged[byte] ^ (1 << bit));
      visit("bit " + std::to_string(bit) + " of byte " + std::to_string(byte) + " flipped", damaged,
            Expectation::kEither);
    }
  }
}

template <typename Field>
void setFields(const std::string& log, const DamageVisitor& visit) {
  constexpr Field kMax = std::numeric_limits<Field>::max();
  for (std::size_t start = 0; start + sizeof(Field) <= log.size(); ++start) {
    for (const Field value : {Field{0}, Field{1}, kMax, static_cast<Field>(kMax - 1),
                              static_cast<Field>(kMax / 2 + 1)}) {
      std::string damaged = log;
      std::memcpy(damaged.data() + start, &value, sizeof(value));
      visit(std::to_string(sizeof(Field)) + " bytes from " + std::to_string(start) + " set to " +
                std::to_string(value),
            damaged, Expectation::kEither);
    }
  }
}

void rearrangeChunks(const std::string& log, const DamageVisitor& visit) {
  const Chunks chunks = chunksOf(log);
  for (std::size_t first = 0; first < chunks.size(); ++first) {
    const auto place = static_cast<std::ptrdiff_t>(first);
    Chunks dropped = chunks;
    dropped.erase(dropped.begin() + place);
    visit("chunk " + std::to_string(first) + " dropped", joined(dropped), Expectation::kSound);
    Chunks doubled = chunks;
    doubled.insert(doubled.begin() + place, chunks[first]);
    visit("chunk " + std::to_string(first) + " doubled", joined(doubled), Expectation::kSound);
    for (std::size_t second = first + 1; second < chunks.size(); ++second) {
      Chunks swapped = chunks;
      std::swap(swapped[first], swapped[second]);
      visit("chunks " + std::to_string(first) + " and " + std::to_string(second) + " swapped",
            joined(swapped), Expectation::kSound);
    }
  }
}

}  // namespace

void forEachDamage(const std::string& log, const DamageVisitor& visit) {
  cut(log, visit);
  flipBits(log, visit);
  setFields<std::uint8_t>(log, visit);
  setFields<std::uint16_t>(log, visit);
  setFields<std::uint32_t>(log, visit);
  setFields<std::uint64_t>(log, visit);
  rearrangeChunks(log, visit);
}

}  // namespace vyn::test
