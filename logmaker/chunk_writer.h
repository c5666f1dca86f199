#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "logmaker/log_content.h"
#include "logmaker/output_file.h"

namespace vyn::logmaker {

/// Writes a log: chunks of a length and a FlatBuffers buffer, the header in the first one.
class ChunkWriter {
 public:
  /// A chunk ends with the message that takes it to chunkSize bytes.
  ChunkWriter(OutputFile& output, const LogHeader& header, std::size_t chunkSize);

  void write(const Message& message);

  /// Ends the last chunk; to be called once.
  void finish();

  /// Bytes of the log so far, those of the chunk being built among them.
  std::uint64_t size() const;

 private:
  void endChunk();

  OutputFile& m_output;
  std::size_t m_chunkSize;
  std::uint64_t m_bytesWritten = 0;
  flatbuffers::FlatBufferBuilder m_builder;
  flatbuffers::Offset<schema::LogHeader> m_header;
  std::vector<flatbuffers::Offset<schema::Message>> m_messages;
};

}  // namespace vyn::logmaker
