#include "analysis/number_tally.h"

#include <algorithm>
#include <tuple>

namespace vyn::profiling {

void NumberTally::addOther(std::int64_t number) {
  const auto found = std::lower_bound(
      m_entries.begin(), m_entries.end(), number,
      [](const NumberCounts::Entry& entry, std::int64_t wanted) { return entry.number < wanted; });
  const auto place = static_cast<std::size_t>(found - m_entries.begin());
  if (found != m_entries.end() && found->number == number) {
    ++found->count;
  } else if (m_entries.size() < kMaxNumbers) {
    m_entries.insert(found, {number, 1});
  } else {
    ++m_others;
    return;
  }
  m_recent = place;
}

NumberCounts NumberTally::counts() const {
  NumberCounts counts{m_entries, m_others};
  std::sort(counts.entries.begin(), counts.entries.end(),
            [](const NumberCounts::Entry& left, const NumberCounts::Entry& right) {
              return std::tie(right.count, left.number) < std::tie(left.count, right.number);
            });
  return counts;
}

}  // namespace vyn::profiling
