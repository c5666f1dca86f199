#include "input/chunk_walk.h"

namespace vyn::profiling {
namespace {

class Walk {
 public:
  Walk(ByteSource& source, ChunkSink& sink, std::uint64_t start)
      : m_source(source), m_sink(sink), m_start(start) {}

  WalkResult run() {
    while (takeNext()) {
      ++m_result.last.index;
    }
    return m_result;
  }

 private:
  // False at the end, whose reason then stands in the result.
  bool takeNext() {
    ChunkPlace& place = m_result.last;
    place = {place.index, m_start + m_result.soundBytes, 0, 0};
    place.present =
        m_source.read(reinterpret_cast<std::uint8_t*>(&place.announced), sizeof(ChunkLength));
    if (m_source.hasFailed()) {
      return refuse(WalkEnd::kReadError);
    }
    if (place.present < sizeof(ChunkLength)) {
      return endAt(place.present == 0 ? WalkEnd::kEndOfLog : WalkEnd::kPartialLength, true);
    }
    if (!isPlausibleChunkSize(place.announced)) {
      place.present = 0;
      return refuse(WalkEnd::kImpossibleLength);
    }
    return takeChunk(place);
  }

  bool takeChunk(ChunkPlace& place) {
    const ChunkBuffer chunk = m_sink.roomFor(place.announced);
    if (chunk == nullptr) {
      return endAt(WalkEnd::kNoRoom, false);
    }
    place.present = m_source.read(chunk->data(), place.announced);
    const bool isTaken = m_sink.take({chunk, place.present}, place);
    if (place.present < place.announced) {
      return endAt(m_source.hasFailed() ? WalkEnd::kReadError : WalkEnd::kCutShort, isTaken);
    }
    if (!isTaken) {
      return endAt(WalkEnd::kCorrupt, false);
    }
    ++m_result.soundChunks;
    m_result.soundBytes += sizeof(ChunkLength) + place.announced;
    return true;
  }

  // With an empty chunk, which no sink takes.
  bool refuse(WalkEnd end) {
    if (const ChunkBuffer chunk = m_sink.roomFor(0)) {
      m_sink.take({chunk, 0}, m_result.last);
    }
    return endAt(end, false);
  }

  bool endAt(WalkEnd end, bool isAccepted) {
    m_result.end = end;
    m_result.isAccepted = isAccepted;
    return false;
  }

  ByteSource& m_source;
  ChunkSink& m_sink;
  std::uint64_t m_start;  // bytes of the log in front of the first chunk
  WalkResult m_result;
};

}  // namespace

WalkResult walkChunks(ByteSource& source, ChunkSink& sink, std::uint64_t start) {
  return Walk(source, sink, start).run();
}

}  // namespace vyn::profiling
