#pragma once

#include <cstdint>
#include <optional>

#include "analysis/chunk_bytes.h"
#include "analysis/chunk_sizes.h"
#include "analysis/event_tally.h"
#include "analysis/graph_tally.h"
#include "analysis/header_collector.h"
#include "analysis/log_facts.h"
#include "analysis/number_course.h"
#include "analysis/number_tally.h"
#include "analysis/text_identities.h"
#include "input/log_walk.h"

namespace vyn::profiling {

/// Collects the facts of one log. Its time is in proportion to the log's bytes and to the events
/// that it names; its memory has a bound, whatever the log holds.
class FactsCollector : public MessageSink {
 public:
  void chunk(const Chunk& chunk, const ChunkPlace& place) override;
  void header(const schema::LogHeader& header) override;
  void message(const schema::Message& message) override;

  /// The facts of the log whose walk ended so. `fileSize` in bytes; without it, or when the walk
  /// came to more, the log is as long as what was read of it.
  LogFacts facts(const WalkResult& walk, std::optional<std::uint64_t> fileSize) const;

 private:
  using Events = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

  void addEvents(const Events* events, std::uint32_t depth);

  TextIdentities m_identities;
  ChunkSizes m_chunkSizes;
  HeaderCollector m_headers;
  std::uint64_t m_messages = 0;
  std::uint64_t m_withoutGraph = 0;
  NumberTally m_methods;
  NumberTally m_visibilityLevels;
  GraphTally m_graphs;
  TimeStampCourse m_timeStamps;
  SequenceCourse m_sequence;
  EventTally m_events;
  ChunkBytes m_bytes;
};

}  // namespace vyn::profiling
