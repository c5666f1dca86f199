#pragma once

#include <cstddef>
#include <functional>

#include "input/byte_source.h"
#include "input/chunk.h"
#include "input/flat_buffer_reader_util.h"

namespace vyn::profiling {

/// How a reader goes through its log. Unlike walkLog, which hands on all messages of a chunk,
/// readers take them one by one, by an operation that hosts know: they walk over chunks and load
/// them.
struct ChunkLoading {
  /// Memory for a chunk of that many bytes; null ends the reading. makeChunk or makeChunkOrLog.
  ChunkBuffer (*makeRoom)(std::size_t size);

  /// Called with each chunk that `util` has verified and loaded.
  std::function<void(const Chunk& chunk)> take;
};

/// Loads the chunks of a log into `util`, one after another, and releases the last one in the end,
/// however the reading ends. Returns false when the log was not accepted: a chunk is corrupt, be
/// it for want of its end, or has no room, or the source failed. What `loading` throws leaves it.
bool loadChunks(ByteSource& source, FlatBufferReaderUtil& util, const ChunkLoading& loading);

}  // namespace vyn::profiling
