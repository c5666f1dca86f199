#include "input/group_index.h"

namespace vyn::profiling {

ExecutionGroup& GroupIndex::groupNamed(std::vector<ExecutionGroup>& groups, std::string_view name) {
  for (; m_indexed < groups.size(); ++m_indexed) {
    m_positions.try_emplace(groups[m_indexed].name, m_indexed);
  }
  const auto found = m_positions.find(name);
  if (found != m_positions.end()) {
    return groups[found->second];
  }
  return groups.emplace_back(ExecutionGroup{std::string(name), {}});
}

}  // namespace vyn::profiling
