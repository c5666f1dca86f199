#include <iostream>
#include <stdexcept>

#include "core/vyn_profile_log_reader.h"
#include "input/chunk_stream.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

// False, with a log line, when there is no memory for the chunk. Memory that runs out later, while
// the chunk is decoded, is the host's to deal with.
bool readChunk(ChunkStream& chunks, ChunkBuffer& chunk) {
  try {
    chunk = chunks.next();
    return true;
  } catch (const std::bad_alloc& error) {
    log::log(log::kError, "Unable to allocate memory: %s", error.what());
  } catch (const std::length_error& error) {
    log::log(log::kError, "Length error: %s", error.what());
  }
  return false;
}

}  // namespace

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
    ChunkStream chunks(m_inputLogFileLocation);
    if (!chunks.isOpen()) {
      log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
      return false;
    }
    if (!startReading() || !readChunks(chunks)) {
      return false;
    }
  }
  m_writeObjectPayloads = writeObjectPayloads;
  std::cout << deriveStatistics();
  return true;
}

bool VynProfileLogReader::readChunks(ChunkStream& chunks) {
  const ChunkRelease release(m_flatBufferReader);
  ChunkBuffer chunk;
  while (readChunk(chunks, chunk)) {
    if (chunk == nullptr) {
      return true;
    }
    if (!m_flatBufferReader.load(chunk)) {
      return false;
    }
    m_nameFingerprints.startChunk(chunk->data(), chunk->capacity());
    if (!m_headerSaved) {
      saveHeader();
    }
    m_reachedEof = false;
    while (!m_reachedEof) {
      processNextMessage();
    }
    chunk.reset();  // before the next one is read: one chunk in memory at a time
  }
  return false;
}

}  // namespace vyn::profiling
