#include "analysis/distinct_texts.h"

namespace vyn::profiling {

void DistinctTexts::add(std::uint64_t identity) {
  std::uint64_t& recent = m_recent[identity % m_recent.size()];
  if (recent == identity) {
    return;
  }
  recent = identity;
  if (m_identities.size() < kMaxTexts) {
    m_identities.insert(identity);
  } else if (!m_mayHaveMore) {
    m_mayHaveMore = m_identities.count(identity) == 0;
  }
}

}  // namespace vyn::profiling
