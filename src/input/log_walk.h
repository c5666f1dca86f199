#pragma once

#include <profile_log_generated.h>

#include "input/chunk_verifier.h"
#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Takes what the sound chunks of a log hold, in order. What it is handed lives until the next
/// chunk is read.
class MessageSink {
 public:
  virtual ~MessageSink() = default;

  /// A chunk that was verified; its header and messages follow.
  virtual void chunk(const Chunk& /*chunk*/, const ChunkPlace& /*place*/) {}

  /// The header of the chunk, if it has one.
  virtual void header(const schema::LogHeader& /*header*/) {}

  virtual void message(const schema::Message& message) = 0;

  /// The chunk with which the walk ends because it is not sound. It is empty where there is none:
  /// behind an impossible length, or where the system could not read.
  virtual void refused(const Chunk& /*chunk*/, const ChunkPlace& /*place*/) {}
};

/// Walks over a log, verifies each chunk and hands its header and messages to the sink, up to the
/// log's end or its first damage. Throws std::bad_alloc or std::length_error when a chunk does not
/// fit into memory, and what the sink throws.
WalkResult walkLog(ByteSource& source, MessageSink& sink);

/// The same for a part of a log, whose `verifier` has judged the parts before.
WalkResult walkLog(ByteSource& source, MessageSink& sink, ChunkVerifier& verifier);

}  // namespace vyn::profiling
