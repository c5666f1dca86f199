#include <iostream>

#include "core/vyn_profile_log_reader.h"
#include "input/chunk_room.h"
#include "input/chunk_walk.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
bool VynProfileLogReader::startReading() {
  if (m_readStarted) {
    log::log(log::kError, "A reader reads its log once: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  m_readStarted = true;
  return true;
}

bool VynProfileLogReader::readInputFile(bool writeObjectPayloads) {
  {
    FileSource file(m_inputLogFileLocation);
    if (!file.isOpen()) {
      log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
      return false;
    }
    if (!startReading() || !readChunks(file)) {
      return false;
    }
  }
  m_writeObjectPayloads = writeObjectPayloads;
  std::cout << deriveStatistics();
  return true;
}

bool VynProfileLogReader::readChunks(ByteSource& source) {
  class Sink : public ChunkSink {
   public:
    explicit Sink(VynProfileLogReader& reader) : m_reader(reader) {}
    ChunkBuffer roomFor(std::size_t size) override { return makeChunkOrLog(size); }
    bool take(const Chunk& chunk, const ChunkPlace& /*place*/) override {
      return m_reader.takeChunk(chunk);
    }

   private:
    VynProfileLogReader& m_reader;
  };
  const ChunkRelease release(m_flatBufferReader);
  Sink sink(*this);
  return walkChunks(source, sink).isAccepted;
}

bool VynProfileLogReader::takeChunk(const Chunk& chunk) {
  if (!m_flatBufferReader.load(chunk)) {
    return false;
  }
  m_nameFingerprints.startChunk(chunk.bytes());
  if (!m_headerSaved) {
    saveHeader();
  }
  m_reachedEof = false;
  while (!m_reachedEof) {
    processNextMessage();
  }
  return true;
}

}  // namespace vyn::profiling
