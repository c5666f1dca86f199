#include "analysis/log_check.h"

#include <algorithm>
#include <utility>

#include "analysis/end_check.h"
#include "input/foreign_start.h"

namespace vyn::profiling {
namespace {

// From the log's first chunk, with the length in front of it.
std::string startOf(const ChunkPlace& place, std::span<const std::uint8_t> chunk) {
  const auto length = lengthBytes(place.announced);
  std::string start(length.begin(), length.end());
  const auto shown = chunk.first(std::min(chunk.size(), kLongestForeignStart - start.size()));
  return start.append(shown.begin(), shown.end());
}

// Of a chunk that the verifier refused.
ChunkFault faultOf(std::span<const std::uint8_t> chunk) {
  auto fault = findChunkFault(chunk, chunk.size() + ChunkVerifier::kSharedTableAllowance);
  if (!fault) {
    // The chunks before it may have used up what is free for all together.
    fault = findChunkFault(chunk, chunk.size());
  }
  return fault.value_or(
      ChunkFault{CheckCode::kUnexplained, 0, 0, {"no flaw that is known", "a sound chunk"}});
}

bool endsWell(const WalkResult& walk) {
  return walk.end == WalkEnd::kEndOfLog ||
         (walk.end == WalkEnd::kPartialLength && walk.soundChunks > 0);
}

}  // namespace

void LogCheck::enterChunk(const Chunk& chunk, const ChunkPlace& place) {
  m_texts.leaveChunk();
  m_site.enterChunk(chunk, place);
  m_texts.enterChunk(chunk.size);
}

void LogCheck::chunk(const Chunk& chunk, const ChunkPlace& place) { enterChunk(chunk, place); }

void LogCheck::header(const schema::LogHeader& header) { m_headers.check(header); }

void LogCheck::message(const schema::Message& message) {
  m_site.enterMessage();
  m_texts.check(message.graphName(), "graphName");
  m_messages.check(message);
  m_events.check(message);
}

void LogCheck::refused(const Chunk& chunk, const ChunkPlace& place) {
  enterChunk(chunk, place);
  if (place.index == 0) {
    m_start = startOf(place, chunk.bytes());
  }
  if (isPlausibleChunkSize(place.announced) && chunk.size == place.announced) {
    m_fault = faultOf(chunk.bytes());
  }
}

Findings LogCheck::finish(const WalkResult& walk) {
  m_texts.leaveChunk();
  if (reportForeignFormat(walk, m_start, m_findings)) {
    // What is wrong with it as a log is of no use.
  } else if (m_fault) {
    m_site.reportFault(*m_fault);
  } else {
    reportEnd(walk, m_findings);
  }
  if (!m_headers.hasHeader() && endsWell(walk)) {
    reportNoHeader(m_findings);
  }
  m_findings.chunks = walk.soundChunks;
  m_findings.messages = walk.messages;
  m_findings.soundBytes = walk.soundBytes;
  return std::move(m_findings);
}

}  // namespace vyn::profiling
