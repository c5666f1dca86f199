#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "input/byte_window.h"
#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Looks for sound chunks behind the damages of one log (docs/recovering.md tells how, and what can
/// fool it). What it reads in vain is bounded: eight times the bytes that it searched, 16 MiB, one
/// chunk, and for the first 64 damages 12 MiB each. What is beyond that is passed over.
class ChunkSearch {
 public:
  /// `size` is how much of the source is the log, in bytes.
  ChunkSearch(SeekableSource& source, std::uint64_t size);

  /// Where the next sound chunk behind the `damaged` one begins; none when none is found, or when
  /// the source fails. To be called with growing places. Leaves the source standing anywhere.
  std::optional<std::uint64_t> findBehind(const ChunkPlace& damaged);

  /// Whether the sound chunk is longer than its buffer needs. Few are.
  static bool mayHoldOthers(std::span<const std::uint8_t> chunk);

  /// Where the first sound chunk begins behind what the buffer of this one needs, which stands at
  /// `place`, but before its end: then its length is damaged, and it has swallowed others. None
  /// when there is none. Leaves the source standing anywhere.
  std::optional<std::uint64_t> findInside(std::span<const std::uint8_t> chunk,
                                          const ChunkPlace& place);

 private:
  /// What stands behind a chunk that was found.
  enum class Follower {
    kPlausible,  ///< the log's end, or a length that fits
    kAny
  };

  /// What stands where the buffer of a damaged chunk should.
  struct Buffer {
    std::optional<std::uint64_t> end;  ///< it is sound up to there: its length alone is damaged
    bool isDamagedInside = false;      ///< it begins like one, but is not sound, however long
  };

  std::optional<std::uint64_t> followLengths(const ChunkPlace& damaged);
  std::optional<std::uint64_t> findNear(std::uint64_t end, std::uint64_t first);
  std::optional<std::uint64_t> scan(std::uint64_t from, std::uint64_t to, Follower follower);
  std::optional<std::uint64_t> findLookalike(std::uint64_t from, std::uint64_t to);
  bool isFollowed(std::uint64_t offset);
  bool isChunk(std::uint64_t offset);
  Buffer lookAtBuffer(std::uint64_t offset);
  bool isWithinBudget() const;

  SeekableSource& m_source;
  ByteWindow m_window;
  std::uint64_t m_searched = 0;    // bytes
  std::uint64_t m_readInVain = 0;  // bytes, beside those of the window
  unsigned m_buffersLooked = 0;    // for their end
};

}  // namespace vyn::profiling
