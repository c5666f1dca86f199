#include "analysis/chunk_bytes.h"

#include <algorithm>

namespace vyn::profiling {

using flatbuffers::uoffset_t;
using flatbuffers::voffset_t;

// How many units there are whose byte that stands for them is in front of the position. Which byte
// of a unit that is varies from one to the next, for tables of equal sizes come at equal distances:
// if it were always the first, it might always be one of the same field.
inline std::size_t ChunkBytes::unitsBefore(std::size_t position) const {
  if (m_unit == 0) {
    return position;
  }
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;  // of 2^64
  const std::size_t unit = position >> m_unit;
  const std::uint64_t chosen = unit * kGoldenRatio >> (64U - m_unit);
  return unit + (chosen < position - (unit << m_unit) ? 1 : 0);
}

// Inline, for nothing is called as often.
inline void ChunkBytes::claimRange(const std::uint8_t* start, std::size_t size,
                                   std::uint64_t& use) {
  const auto first = static_cast<std::size_t>(start - m_chunk.data());
  const std::size_t end = std::min(unitsBefore(first + size), m_units);
  use += m_claimed.set(unitsBefore(first), end) << m_unit;
}

void ChunkBytes::startChunk(std::span<const std::uint8_t> chunk) {
  m_chunk = chunk;
  m_unit = 0;
  while (chunk.size() >> m_unit > m_maxBits) {
    ++m_unit;
  }
  m_units = chunk.size() >> m_unit;
  m_claimed.reset(m_units);
  m_recentVtables.fill(nullptr);
  m_total += chunk.size();
  claimRange(chunk.data(), sizeof(uoffset_t), m_facts.otherTables);  // where the root is
  const schema::ProfileLog* root = schema::GetProfileLog(chunk.data());
  claimTable(root, m_facts.otherTables);
  claimList(root->messages(), m_facts.lists);
}

void ChunkBytes::claim(const schema::Event& event) {
  claimTable(&event, m_facts.events);
  claimText(event.identifier());
  claimText(event.secondaryName());
  claimText(event.stringValue());
  claimList(event.rawData(), m_facts.rawData);
  claimList(event.subEvents(), m_facts.lists);
}

void ChunkBytes::claim(const schema::Message& message) {
  claimTable(&message, m_facts.otherTables);
  claimTable(message.header(), m_facts.otherTables);
  claimTable(message.appMetrics(), m_facts.otherTables);
  claimText(message.graphName());
  claimList(message.profilingEvents(), m_facts.lists);
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
  const std::uint8_t*& recent =
      m_recentVtables[reinterpret_cast<std::uintptr_t>(vtable) / 2 % m_recentVtables.size()];
  if (recent != vtable) {
    claimRange(vtable, vtableSize, use);
    recent = vtable;
  }
  claimRange(start, size, use);
}

template <typename Element>
void ChunkBytes::claimList(const flatbuffers::Vector<Element>* list, std::uint64_t& use) {
  if (list != nullptr) {
    claimRange(list->Data() - sizeof(uoffset_t),
               sizeof(uoffset_t) + sizeof(Element) * std::size_t{list->size()}, use);
  }
}

void ChunkBytes::claimText(const flatbuffers::String* text) {
  if (text != nullptr) {
    claimRange(text->Data() - sizeof(uoffset_t), sizeof(uoffset_t) + std::size_t{text->size()} + 1,
               m_facts.texts);
  }
}

ByteFacts ChunkBytes::facts() const {
  ByteFacts facts = m_facts;
  facts.unused = m_total - facts.sum();
  return facts;
}

}  // namespace vyn::profiling
