#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_descriptor.h"
#include "input/log_walk.h"

namespace vyn::host {

/// What was copied.
struct CopiedChunks {
  std::uint64_t chunks = 0;
  std::uint64_t messages = 0;
  std::uint64_t bytes = 0;  ///< with the chunks' lengths

  bool operator==(const CopiedChunks&) const = default;
};

/// Writes whole chunks to an open file as they stand in their log. One that the log's end cuts
/// short is left out.
class ChunkCopy : public profiling::MessageSink {
 public:
  explicit ChunkCopy(files::NamedFile file);

  /// Throws FileError, ClosedPipe.
  void chunk(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) override;
  void message(const profiling::schema::Message& /*message*/) override {}

  /// To be called when the log was walked over: writes what is left. Throws FileError, ClosedPipe.
  void finish();

  const CopiedChunks& copied() const { return m_copied; }

 private:
  void write(std::string_view bytes);
  void flush();
  void startWriteBack();

  files::NamedFile m_file;
  std::string m_waiting;  // small chunks are written many at once
  CopiedChunks m_copied;
  std::uint64_t m_sent = 0;  // bytes that are on their way to the disk
};

/// Throws FileError unless the file at `path` is a log that holds, from its beginning to its end,
/// what was copied into it. `name` is what messages call it.
void checkCopy(const std::string& path, const std::string& name, const CopiedChunks& copied);

}  // namespace vyn::host
