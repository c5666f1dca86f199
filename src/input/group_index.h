#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "input/execution_records.h"
#include "input/text_hash.h"

namespace vyn::profiling {

/// Finds a graph's group by name in constant time, however many graphs a log has.
class GroupIndex {
 public:
  /// The first of `groups` with that name; appended when there is none. Must be given the same,
  /// only ever growing vector each time.
  ExecutionGroup& groupNamed(std::vector<ExecutionGroup>& groups, std::string_view name);

 private:
  std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> m_positions;
  std::size_t m_indexed = 0;  // how many of the groups are in m_positions
};

}  // namespace vyn::profiling
