#pragma once

#include <string>

#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Why no whole chunk follows, as a clause: "the log ends inside the chunk: 20 of 100 bytes are
/// there". Empty for a log that ends behind its last chunk.
std::string whyDamaged(WalkEnd end, const ChunkPlace& place);

/// Bytes. The beginning of a text or of other files, read as a length, is larger; chunks that runs
/// write are far shorter.
inline constexpr ChunkLength kLeastOfNoChunk = ChunkLength{1} << 24;

/// True when the log ends inside its last chunk, of a length that runs write, or inside that
/// length: a run that is still writing leaves it so for a moment, and one that was ended for good.
bool mayStillBeWritten(WalkEnd end, const ChunkPlace& place);

/// What to say of such a log.
inline constexpr char kMayStillBeWritten[] =
    "the run may still be writing, or was ended in the middle of it";

}  // namespace vyn::profiling
