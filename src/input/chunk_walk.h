#pragma once

#include <cstddef>
#include <cstdint>

#include "input/byte_source.h"
#include "input/chunk.h"
#include "input/chunk_format.h"

namespace vyn::profiling {

/// Where a chunk stands in its log.
struct ChunkPlace {
  std::uint64_t index = 0;    ///< of all chunks that are walked over, from 0 on
  std::uint64_t offset = 0;   ///< bytes of the log in front of the chunk's length
  ChunkLength announced = 0;  ///< the length in front of the chunk, in bytes
  std::size_t present = 0;    ///< how many bytes of the chunk, or of a partial length, are there
};

/// Why a walk over a log ended.
enum class WalkEnd {
  kEndOfLog,          ///< behind the last whole chunk
  kPartialLength,     ///< 1 to 3 bytes are left, too few for a length
  kImpossibleLength,  ///< no chunk can be as long as announced
  kCutShort,          ///< the log ends inside the chunk
  kCorrupt,           ///< the chunk is all there and was refused
  kReadError,         ///< the system could not read on
  kNoRoom,            ///< the sink has no memory for the chunk
};

struct [[nodiscard]] WalkResult {
  WalkEnd end = WalkEnd::kEndOfLog;
  ChunkPlace last;                ///< where the walk ended
  std::uint64_t soundChunks = 0;  ///< taken before that
  std::uint64_t soundBytes = 0;   ///< of these, with their lengths
  std::uint64_t messages = 0;     ///< in the chunks that were taken; counted by walkLog
  /// Every chunk was taken that the log begins. 1 to 3 bytes more are no chunk; one that is cut
  /// short may still be sound, when nothing points into what is missing.
  bool isAccepted = false;
};

/// Takes the chunks of a log, in order.
class ChunkSink {
 public:
  virtual ~ChunkSink() = default;

  /// Memory for a chunk of that many bytes; null ends the walk.
  virtual ChunkBuffer roomFor(std::size_t size) { return makeChunk(size); }

  /// Judges a chunk and, if it is sound, takes it. One that the log cuts short has the bytes that
  /// are there; one of an impossible length, and one where reading fails, has none. False ends the
  /// walk. The walk keeps no chunk while it reads the next one.
  virtual bool take(const Chunk& chunk, const ChunkPlace& place) = 0;
};

/// Cuts a log into its chunks and hands them to the sink until it has refused one or none is left.
/// What the sink throws leaves it. `start` is how many bytes of the log stand in front of what the
/// source gives first.
WalkResult walkChunks(ByteSource& source, ChunkSink& sink, std::uint64_t start = 0);

}  // namespace vyn::profiling
