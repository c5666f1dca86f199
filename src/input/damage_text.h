#pragma once

#include <string>

#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Why no whole chunk follows, as a clause: "the log ends inside the chunk: 20 of 100 bytes are
/// there". Empty for a log that ends behind its last chunk.
std::string whyDamaged(WalkEnd end, const ChunkPlace& place);

/// True when the log ends inside its last chunk or that chunk's length: a run that is still writing
/// leaves it so for a moment, and one that was ended for good.
bool mayStillBeWritten(WalkEnd end);

/// What to say of such a log.
inline constexpr char kMayStillBeWritten[] =
    "the run may still be writing, or was ended in the middle of it";

}  // namespace vyn::profiling
