#pragma once

#include <cstdint>

#include "input/byte_window.h"

namespace vyn::profiling {

/// Whether the first number of a buffer, at `bytes`, may lead to its root table.
bool mayBeginWithRoot(const std::uint8_t* bytes);

/// Whether a writer may have begun a buffer at `offset` of which `room` bytes are there: its root
/// table stands near its beginning and has a shape that writers give it. Costs a look at a few
/// numbers.
bool looksLikeRoot(ByteWindow& window, std::uint64_t offset, std::uint64_t room);

/// Whether a whole chunk may stand at `offset`, where its length is: it fits, looksLikeRoot, and
/// has a header or at least one message; of the messages the one is looked at that writers put
/// nearest. True for all chunks that the usual builders of buffers make, false for nearly all other
/// bytes.
bool looksLikeChunk(ByteWindow& window, std::uint64_t offset);

/// Whether a chunk may follow at `offset`, or the log ends there. Of a chunk that is damaged, the
/// length is looked at alone; of one that the log's end cuts, its root also.
bool mayGoOnAt(ByteWindow& window, std::uint64_t offset);

}  // namespace vyn::profiling
