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

  /// Memory for a chunk of that many bytes; null ends the walk.
  virtual ChunkBuffer roomFor(std::size_t size) { return makeChunk(size); }

  /// Whether the chunk, which was verified, is to be taken. The walk ends with it otherwise, as
  /// with one that is not sound.
  virtual bool wants(const Chunk& /*chunk*/, const ChunkPlace& /*place*/) { return true; }

  /// A chunk that was verified and is wanted; its header and messages follow.
  virtual void chunk(const Chunk& /*chunk*/, const ChunkPlace& /*place*/) {}

  /// The header of the chunk, if it has one.
  virtual void header(const schema::LogHeader& /*header*/) {}

  virtual void message(const schema::Message& message) = 0;

  /// The chunk with which the walk ends because it is not sound. It is empty where there is none:
  /// behind an impossible length, or where the system could not read.
  virtual void refused(const Chunk& /*chunk*/, const ChunkPlace& /*place*/) {}
};

/// Asks for nothing but the walk's own figures.
class NoSink final : public MessageSink {
 public:
  void message(const schema::Message& /*message*/) override {}
};

/// Walks over a log, verifies each chunk and hands its header and messages to the sink, up to the
/// log's end or its first damage. Throws std::bad_alloc or std::length_error when a chunk does not
/// fit into memory, and what the sink throws.
WalkResult walkLog(ByteSource& source, MessageSink& sink);

/// The same for the rest of a log behind its first `start` bytes, whose chunks the `verifier` has
/// judged.
WalkResult walkLog(ByteSource& source, MessageSink& sink, ChunkVerifier& verifier,
                   std::uint64_t start = 0);

}  // namespace vyn::profiling
