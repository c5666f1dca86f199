#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "analysis/log_facts.h"

namespace vyn::profiling {

/// Counts chunks by their size. Of more than kMaxSizes different ones only the higher bits are
/// kept, one less each time, so that memory has a bound and the median is known to within a few
/// bytes.
class ChunkSizes {
 public:
  static constexpr std::size_t kMaxSizes = 32'768;

  void add(std::uint64_t size);

  ChunkFacts facts() const;

 private:
  void dropABit();

  std::map<std::uint64_t, std::uint64_t> m_counts;  // by the size without its lowest bits
  unsigned m_droppedBits = 0;
  std::uint64_t m_count = 0;
  std::uint64_t m_smallest = UINT64_MAX;
  std::uint64_t m_largest = 0;
};

}  // namespace vyn::profiling
