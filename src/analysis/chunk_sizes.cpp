#include "analysis/chunk_sizes.h"

#include <algorithm>

namespace vyn::profiling {

void ChunkSizes::add(std::uint64_t size) {
  ++m_count;
  m_smallest = std::min(m_smallest, size);
  m_largest = std::max(m_largest, size);
  ++m_counts[size >> m_droppedBits];
  while (m_counts.size() > kMaxSizes) {
    dropABit();
  }
}

void ChunkSizes::dropABit() {
  ++m_droppedBits;
  std::map<std::uint64_t, std::uint64_t> counts;
  for (const auto& [size, count] : m_counts) {
    // In order, so that each entry goes to the end.
    counts.try_emplace(counts.end(), size / 2, 0)->second += count;
  }
  m_counts = std::move(counts);
}

ChunkFacts ChunkSizes::facts() const {
  ChunkFacts facts;
  if (m_count == 0) {
    return facts;
  }
  facts.count = m_count;
  facts.smallest = m_smallest;
  facts.largest = m_largest;
  facts.medianPrecision = std::uint64_t{1} << m_droppedBits;
  std::uint64_t before = 0;
  for (const auto& [size, count] : m_counts) {
    before += count;
    if (before > (m_count - 1) / 2) {
      facts.median = size << m_droppedBits;
      break;
    }
  }
  return facts;
}

}  // namespace vyn::profiling
