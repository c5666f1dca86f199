#include "analysis/facts_collector.h"

#include <algorithm>

#include "input/chunk_format.h"

namespace vyn::profiling {
namespace {

bool isExecution(const schema::Message& message) {
  return message.method() == schema::MethodType::BACKEND_EXECUTE ||
         message.method() == schema::MethodType::BACKEND_EXECUTE_ASYNC;
}

// Bytes that were read of the chunk with which the walk ended, and of its length.
std::uint64_t readOfLast(const WalkResult& walk) {
  switch (walk.end) {
    case WalkEnd::kEndOfLog:
    case WalkEnd::kPartialLength:
      return walk.last.present;
    default:
      return sizeof(ChunkLength) + walk.last.present;
  }
}

}  // namespace

void FactsCollector::chunk(const Chunk& chunk, const ChunkPlace& /*place*/) {
  m_identities.startChunk(chunk.bytes());
  m_chunkSizes.add(chunk.size);
  m_bytes.startChunk(chunk.bytes());
}

void FactsCollector::header(const schema::LogHeader& header) {
  m_headers.add(header);
  m_bytes.claim(header);
}

void FactsCollector::message(const schema::Message& message) {
  ++m_messages;
  m_methods.add(static_cast<std::int8_t>(message.method()));
  m_visibilityLevels.add(message.visibilityLevel());
  if (const flatbuffers::String* graph = message.graphName()) {
    m_graphs.add(*graph, m_identities, isExecution(message));
  } else {
    ++m_withoutGraph;
  }
  m_timeStamps.add(message.header()->timestamp());
  m_sequence.add(message.header()->sequenceNumber());
  m_bytes.claim(message);
  addEvents(message.profilingEvents(), 1);
}

// The verifier's depth limit bounds the recursion.
void FactsCollector::addEvents(const Events* events, std::uint32_t depth) {
  if (events == nullptr) {
    return;
  }
  for (const schema::Event* event : *events) {
    m_events.add(*event, depth, m_identities);
    m_bytes.claim(*event);
    addEvents(event->subEvents(), depth + 1);
  }
}

LogFacts FactsCollector::facts(const WalkResult& walk,
                               std::optional<std::uint64_t> fileSize) const {
  LogFacts facts;
  facts.walk = walk;
  facts.size = std::max(walk.soundBytes + readOfLast(walk), fileSize.value_or(0));
  facts.chunks = m_chunkSizes.facts();
  m_headers.report(facts);
  facts.messages.count = m_messages;
  facts.messages.withoutGraph = m_withoutGraph;
  facts.messages.methods = m_methods.counts();
  facts.messages.visibilityLevels = m_visibilityLevels.counts();
  m_graphs.report(facts.messages);
  facts.timeStamps = m_timeStamps.facts();
  facts.sequence = m_sequence.facts();
  facts.events = m_events.events();
  facts.payloads = m_events.payloads();
  facts.bytes = m_bytes.facts();
  facts.bytes.chunkLengths = sizeof(ChunkLength) * facts.chunks.count;
  // One that is cut short may have been taken all the same.
  facts.bytes.refused = facts.size - facts.bytes.sum();
  return facts;
}

}  // namespace vyn::profiling
