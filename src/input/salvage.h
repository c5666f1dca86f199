#pragma once

#include <cstdint>
#include <functional>

#include "input/log_walk.h"

namespace vyn::profiling {

/// A part of a log that no sound chunk was found in.
struct LostRange {
  std::uint64_t from = 0;  ///< in bytes of the log; where the damaged chunk's length stands
  std::uint64_t to = 0;    ///< behind the last byte that is lost
  WalkEnd why = WalkEnd::kEndOfLog;
  ChunkPlace place;      ///< of the damaged chunk
  bool isLast = false;   ///< nothing of the log behind it was taken
  bool isTaken = false;  ///< the sink has its messages: none leads to what the log's end cuts off
};

/// Takes the lost ranges of a log, in order, each when it is met.
using LossSink = std::function<void(const LostRange&)>;

struct SalvageOptions {
  /// Look for sound chunks behind damage, too. A source whose size is not known is not searched.
  bool search = false;

  /// Only what can be copied as a whole chunk: what is cut short at the log's end is lost even when
  /// it is sound (WalkResult::isAccepted), and 1 to 3 bytes there are lost, too.
  bool wholeChunksOnly = false;
};

/// Walks over a log as walkLog does, but goes on behind its damage or at least says what is lost
/// with it; the sink sees all sound chunks, each at its place. A log that grows meanwhile is taken
/// as long as it was when the source was opened. Returns why the walk ended: kEndOfLog, or
/// kReadError, with which anything may be missing. Throws what walkLog and the sinks throw.
[[nodiscard]] WalkEnd salvageLog(SeekableSource& source, MessageSink& sink, const LossSink& lost,
                                 const SalvageOptions& options);

}  // namespace vyn::profiling
