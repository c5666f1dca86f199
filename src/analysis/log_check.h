#pragma once

#include <optional>
#include <string>

#include "analysis/check_site.h"
#include "analysis/chunk_fault.h"
#include "analysis/event_check.h"
#include "analysis/findings.h"
#include "analysis/header_check.h"
#include "analysis/message_check.h"
#include "analysis/text_check.h"
#include "input/log_walk.h"

namespace vyn::profiling {

/// Finds what is wrong with a log while it is walked over. Its memory does not grow with the log,
/// and its time is in proportion to the log's bytes and to the tables that the verifier lets it
/// name.
class LogCheck : public MessageSink {
 public:
  LogCheck() = default;
  LogCheck(const LogCheck&) = delete;
  LogCheck& operator=(const LogCheck&) = delete;

  void chunk(const Chunk& chunk, const ChunkPlace& place) override;
  void header(const schema::LogHeader& header) override;
  void message(const schema::Message& message) override;
  void refused(const Chunk& chunk, const ChunkPlace& place) override;

  /// To be called once, behind the walk, with what it returned.
  Findings finish(const WalkResult& walk);

 private:
  void enterChunk(const Chunk& chunk, const ChunkPlace& place);

  Findings m_findings;
  CheckSite m_site{m_findings};
  TextCheck m_texts{m_site};
  HeaderCheck m_headers{m_site, m_texts};
  MessageCheck m_messages{m_site};
  EventCheck m_events{m_site, m_texts};
  std::string m_start;                // the log's first bytes, when its first chunk is refused
  std::optional<ChunkFault> m_fault;  // of the refused chunk, when it is all there
};

}  // namespace vyn::profiling
