#pragma once

#include <profile_log_generated.h>

#include <cstdint>

#include "input/chunk.h"
#include "input/chunk_verifier.h"

namespace vyn::profiling {

/// The verified chunk that is being read: its header and a cursor over its messages. It points into
/// the chunk's bytes, which the caller keeps alive while it asks for messages.
class FlatBufferReaderUtil {
 public:
  FlatBufferReaderUtil() = default;
  virtual ~FlatBufferReaderUtil() = default;
  FlatBufferReaderUtil(const FlatBufferReaderUtil&) = delete;
  FlatBufferReaderUtil& operator=(const FlatBufferReaderUtil&) = delete;

  /// Verifies the chunk and goes to its first message. Logs and returns false for a corrupt chunk,
  /// and then still stands where it stood before.
  bool load(const Chunk& chunk);

  /// The same for a chunk that fills its buffer. The vector's size stays 0: its capacity tells how
  /// many bytes there are.
  bool load(const ChunkBuffer& buffer) { return load(Chunk{buffer, buffer->capacity()}); }

  /// The first header that any chunk carried, or null. Its bytes are gone with its chunk, so it may
  /// be read only right after the load that first made it non-null.
  const schema::LogHeader* header() const { return m_header; }

  /// Forgets the chunk, its messages and the header: to be called before their bytes go for good.
  void release();

  /// The chunk's next message, or null when it has no more.
  const schema::Message* nextMessage();

 private:
  using Messages = flatbuffers::Vector<flatbuffers::Offset<schema::Message>>;

  const schema::ProfileLog* m_root = nullptr;
  const schema::LogHeader* m_header = nullptr;
  const Messages* m_messages = nullptr;
  std::uint32_t m_messageCounter = 0;
  ChunkVerifier m_verifier;
};

}  // namespace vyn::profiling
