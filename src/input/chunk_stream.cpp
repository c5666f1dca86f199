#include "input/chunk_stream.h"

#include <algorithm>

namespace vyn::profiling {
namespace {

ChunkBuffer emptyChunk(std::size_t capacity) {
  auto chunk = std::make_shared<std::vector<std::uint8_t>>();
  chunk->reserve(capacity);
  return chunk;
}

}  // namespace

ChunkStream::ChunkStream(const std::string& path) : m_file(path, std::ios::in | std::ios::binary) {}

ChunkBuffer ChunkStream::next() {
  ChunkLength length = 0;
  m_file.read(reinterpret_cast<char*>(&length), sizeof(length));
  if (m_file.eof()) {
    return nullptr;
  }
  // A read error leaves a length of 0, which ends the log as a damaged one.
  return isPlausibleChunkSize(length) ? readChunk(length) : emptyChunk(0);
}

ChunkBuffer ChunkStream::readChunk(ChunkLength length) {
  ChunkBuffer chunk = emptyChunk(length);
  m_file.read(reinterpret_cast<char*>(chunk->data()), static_cast<std::streamsize>(length));
  const auto count = static_cast<std::size_t>(m_file.gcount());
  if (count == length) {
    return chunk;
  }
  ChunkBuffer cutChunk = emptyChunk(count);
  std::copy_n(chunk->data(), count, cutChunk->data());
  return cutChunk;
}

}  // namespace vyn::profiling
