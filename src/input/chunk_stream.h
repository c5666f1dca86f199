#pragma once

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "input/chunk_format.h"

namespace vyn::profiling {

/// The bytes of one chunk. They fill the vector's capacity exactly while its size stays 0: memory
/// that is reserved but not sized costs nothing until the file's bytes are read into it.
using ChunkBuffer = std::shared_ptr<std::vector<std::uint8_t>>;

/// Cuts a log file into its chunks.
class ChunkStream {
 public:
  explicit ChunkStream(const std::string& path);

  bool isOpen() const { return m_file.is_open(); }

  /// The system could not read the file; next() has then ended the log as a damaged one.
  bool hasFailed() const { return m_file.bad(); }

  /// The next chunk, or null at the end of the file, which a length of less than 4 bytes is too.
  /// A chunk that the file cuts short holds the bytes that are there; one whose announced length
  /// no chunk can have is empty. Throws std::bad_alloc when there is no memory for the chunk.
  ChunkBuffer next();

 private:
  ChunkBuffer readChunk(ChunkLength length);

  std::ifstream m_file;
};

}  // namespace vyn::profiling
