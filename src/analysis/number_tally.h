#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "analysis/log_facts.h"

namespace vyn::profiling {

/// Counts how often numbers come. A log may name billions of different ones: those beyond the first
/// kMaxNumbers are counted together.
class NumberTally {
 public:
  static constexpr std::size_t kMaxNumbers = 1000;

  void add(std::int64_t number) {
    if (m_recent < m_entries.size() && m_entries[m_recent].number == number) {
      ++m_entries[m_recent].count;
    } else {
      addOther(number);
    }
  }

  NumberCounts counts() const;

 private:
  void addOther(std::int64_t number);

  std::vector<NumberCounts::Entry> m_entries;  // by number
  std::size_t m_recent = 0;                    // the entry that counted last: often the next, too
  std::uint64_t m_others = 0;
};

}  // namespace vyn::profiling
