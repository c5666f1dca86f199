#include "input/chunk_loading.h"

#include "input/chunk_walk.h"

namespace vyn::profiling {
namespace {

// The chunk goes with its buffer at the end of the reading.
class ChunkRelease {
 public:
  explicit ChunkRelease(FlatBufferReaderUtil& util) : m_util(util) {}
  ~ChunkRelease() { m_util.release(); }
  ChunkRelease(const ChunkRelease&) = delete;
  ChunkRelease& operator=(const ChunkRelease&) = delete;

 private:
  FlatBufferReaderUtil& m_util;
};

class LoadingSink : public ChunkSink {
 public:
  LoadingSink(FlatBufferReaderUtil& util, const ChunkLoading& loading)
      : m_util(util), m_loading(loading) {}

  ChunkBuffer roomFor(std::size_t size) override { return m_loading.makeRoom(size); }

  bool take(const Chunk& chunk, const ChunkPlace& /*place*/) override {
    if (!m_util.load(chunk)) {
      return false;
    }
    m_loading.take(chunk);
    return true;
  }

 private:
  FlatBufferReaderUtil& m_util;
  const ChunkLoading& m_loading;
};

}  // namespace

bool loadChunks(ByteSource& source, FlatBufferReaderUtil& util, const ChunkLoading& loading) {
  const ChunkRelease release(util);
  LoadingSink sink(util, loading);
  return walkChunks(source, sink).isAccepted;
}

}  // namespace vyn::profiling
