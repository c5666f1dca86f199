#include "input/salvage.h"

#include <optional>
#include <vector>

#include "input/chunk_search.h"
#include "input/log_part.h"

namespace vyn::profiling {
namespace {

// Hands on what a part of the log holds, but for chunks of which the search knows better.
class DoubtingSink : public MessageSink {
 public:
  DoubtingSink(MessageSink& sink, LogPart& part, ChunkSearch* search)
      : m_sink(sink), m_part(part), m_search(search) {}

  // A chunk that would end behind the log is not read.
  ChunkBuffer roomFor(std::size_t size) override {
    return m_sink.roomFor(size <= m_part.left() ? size : 0);
  }

  bool wants(const Chunk& chunk, const ChunkPlace& place) override {
    if (m_search == nullptr || !ChunkSearch::mayHoldOthers(chunk.bytes())) {
      return true;
    }
    m_found = m_search->findInside(chunk.bytes(), place);
    m_part.seekBack();
    return !m_found;
  }

  void chunk(const Chunk& chunk, const ChunkPlace& place) override { m_sink.chunk(chunk, place); }
  void header(const schema::LogHeader& header) override { m_sink.header(header); }
  void message(const schema::Message& message) override { m_sink.message(message); }
  void refused(const Chunk& chunk, const ChunkPlace& place) override {
    m_sink.refused(chunk, place);
  }

  /// Where the log goes on behind a chunk that was doubted; none when the walk ended otherwise.
  std::optional<std::uint64_t> found() const { return m_found; }

 private:
  MessageSink& m_sink;
  LogPart& m_part;
  ChunkSearch* m_search;  // null when nobody searches
  std::optional<std::uint64_t> m_found;
};

class Salvage {
 public:
  Salvage(SeekableSource& source, MessageSink& sink, const LossSink& lost,
          const SalvageOptions& options)
      : m_source(source), m_sink(sink), m_lost(lost), m_options(options), m_size(source.size()) {
    if (m_options.search && m_size) {
      m_search.emplace(source, *m_size);
    }
  }

  WalkEnd run() {
    std::optional<std::uint64_t> start = 0;
    while (start) {
      const WalkResult walk = walkFrom(*start);
      if (walk.end == WalkEnd::kEndOfLog) {
        return WalkEnd::kEndOfLog;
      }
      if (walk.isAccepted && !m_options.wholeChunksOnly) {
        return tellOfTaken(walk);
      }
      if (walk.end == WalkEnd::kReadError) {
        return walk.end;
      }
      start = passBy(walk);
      if (m_source.hasFailed()) {
        return WalkEnd::kReadError;
      }
    }
    return WalkEnd::kEndOfLog;
  }

 private:
  WalkResult walkFrom(std::uint64_t start) {
    if (!m_size || !(m_search || m_options.wholeChunksOnly)) {
      return walkLog(m_source, m_sink, m_verifier, start);
    }
    LogPart part(m_source, start, *m_size);
    DoubtingSink doubting(m_sink, part, m_search ? &*m_search : nullptr);
    WalkResult walk = walkLog(part, doubting, m_verifier, start);
    m_known = doubting.found();
    if (walk.end == WalkEnd::kCutShort) {
      walk.last.present = *m_size - walk.last.offset - sizeof(ChunkLength);
    }
    return walk;
  }

  // Says what is lost with the damage that ended the walk. Returns where the log goes on behind it.
  std::optional<std::uint64_t> passBy(const WalkResult& walk) {
    auto next = m_known;
    if (!next && m_search) {
      next = m_search->findBehind(walk.last);
    }
    if (!next && m_search && takesCutChunk(walk)) {
      tellOfTaken(walk);
      return std::nullopt;
    }
    const std::uint64_t to = next ? *next : endOfLog(walk);
    if (m_source.hasFailed()) {
      return std::nullopt;
    }
    m_lost({walk.last.offset, to, walk.end, walk.last, !next, false});
    if (next) {
      m_source.seek(*next);
    }
    return next;
  }

  // 1 to 3 bytes behind the last chunk are none.
  WalkEnd tellOfTaken(const WalkResult& walk) {
    if (walk.end == WalkEnd::kCutShort) {
      m_lost({walk.last.offset, endOfLog(walk), walk.end, walk.last, true, true});
    }
    return WalkEnd::kEndOfLog;
  }

  // The last chunk, of which no more than its beginning is there, may be sound like that.
  bool takesCutChunk(const WalkResult& walk) {
    if (walk.end != WalkEnd::kCutShort || m_options.wholeChunksOnly) {
      return false;
    }
    m_source.seek(walk.last.offset);
    return walkLog(m_source, m_sink, m_verifier, walk.last.offset).isAccepted;
  }

  std::uint64_t endOfLog(const WalkResult& walk) {
    if (m_size) {
      return *m_size;
    }
    std::uint64_t end = walk.last.offset + walk.last.present;
    if (walk.end != WalkEnd::kPartialLength) {
      end += sizeof(ChunkLength);
    }
    std::vector<std::uint8_t> block(kBlockSize);
    while (const std::size_t count = m_source.read(block.data(), block.size())) {
      end += count;
    }
    return end;
  }

  static constexpr std::size_t kBlockSize = std::size_t{1} << 18;  // bytes

  SeekableSource& m_source;
  MessageSink& m_sink;
  const LossSink& m_lost;
  SalvageOptions m_options;
  std::optional<std::uint64_t> m_size;  // of the log, in bytes
  std::optional<ChunkSearch> m_search;
  std::optional<std::uint64_t> m_known;  // where the log goes on, when the walk itself showed it
  ChunkVerifier m_verifier;
};

}  // namespace

WalkEnd salvageLog(SeekableSource& source, MessageSink& sink, const LossSink& lost,
                   const SalvageOptions& options) {
  return Salvage(source, sink, lost, options).run();
}

}  // namespace vyn::profiling
