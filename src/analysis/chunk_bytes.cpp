#include "analysis/chunk_bytes.h"

#include <algorithm>

namespace vyn::profiling {

using flatbuffers::uoffset_t;
using flatbuffers::voffset_t;

void ChunkBytes::startChunk(std::span<const std::uint8_t> chunk) {
  m_chunk = chunk;
  m_unit = chunk.size() > m_maxExactChunk ? kCoarseUnit : 1;
  m_claimed.reset(chunk.size() / m_unit);
  m_total += chunk.size();
  claimRange(chunk.data(), sizeof(uoffset_t), m_facts.otherTables);  // where the root is
  const schema::ProfileLog* root = schema::GetProfileLog(chunk.data());
  claimTable(root, m_facts.otherTables);
  claimList(root->messages());
}

void ChunkBytes::claim(const schema::Event& event) {
  claimTable(&event, m_facts.events);
  claimText(event.identifier());
  claimText(event.secondaryName());
  claimText(event.stringValue());
  claimRawData(event.rawData());
  claimList(event.subEvents());
}

void ChunkBytes::claim(const schema::Message& message) {
  claimTable(&message, m_facts.otherTables);
  claimTable(message.header(), m_facts.otherTables);
  claimTable(message.appMetrics(), m_facts.otherTables);
  claimText(message.graphName());
  claimList(message.profilingEvents());
}

void ChunkBytes::claim(const schema::LogHeader& header) {
  claimTable(&header, m_facts.otherTables);
  claimTable(header.version(), m_facts.otherTables);
  claimText(header.netRunVersion());
  claimText(header.backendVersion());
}

// With its vtable, which tables share. The verifier has looked at the size of a vtable; that of a
// table may reach out of the chunk.
template <typename Table>
void ChunkBytes::claimTable(const Table* table, std::uint64_t& use) {
  if (table == nullptr) {
    return;
  }
  const auto* const start = reinterpret_cast<const std::uint8_t*>(table);
  const std::uint8_t* const vtable = start - flatbuffers::ReadScalar<flatbuffers::soffset_t>(start);
  const std::size_t vtableSize = flatbuffers::ReadScalar<voffset_t>(vtable);
  const std::size_t size = vtableSize >= 2 * sizeof(voffset_t)
                               ? flatbuffers::ReadScalar<voffset_t>(vtable + sizeof(voffset_t))
                               : sizeof(uoffset_t);
  claimRange(vtable, vtableSize, use);
  claimRange(start, size, use);
}

template <typename Element>
void ChunkBytes::claimList(const flatbuffers::Vector<Element>* list) {
  if (list != nullptr) {
    claimRange(list->Data() - sizeof(uoffset_t),
               sizeof(uoffset_t) + sizeof(Element) * std::size_t{list->size()}, m_facts.lists);
  }
}

void ChunkBytes::claimText(const flatbuffers::String* text) {
  if (text != nullptr) {
    claimRange(text->Data() - sizeof(uoffset_t), sizeof(uoffset_t), m_facts.lists);
    claimRange(text->Data(), std::size_t{text->size()} + 1, m_facts.texts);
  }
}

void ChunkBytes::claimRawData(const flatbuffers::Vector<std::uint8_t>* bytes) {
  if (bytes != nullptr) {
    claimRange(bytes->Data() - sizeof(uoffset_t), sizeof(uoffset_t), m_facts.lists);
    claimRange(bytes->Data(), bytes->size(), m_facts.rawData);
  }
}

void ChunkBytes::claimRange(const std::uint8_t* start, std::size_t size, std::uint64_t& use) {
  const auto first = static_cast<std::size_t>(start - m_chunk.data());
  const std::size_t units = m_chunk.size() / m_unit;
  const std::size_t end = std::min((first + size + m_unit - 1) / m_unit, units);
  use += m_claimed.set(std::min(first / m_unit, end), end) * m_unit;
}

ByteFacts ChunkBytes::facts() const {
  ByteFacts facts = m_facts;
  facts.unused = m_total - facts.sum();
  return facts;
}

}  // namespace vyn::profiling
