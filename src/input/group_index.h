#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "input/execution_records.h"

namespace vyn::profiling {

/// Finds a graph's group by name in constant time, however many graphs a log has.
class GroupIndex {
 public:
  /// The first of `groups` with that name; appended when there is none. Must be given the same,
  /// only ever growing vector each time.
  ExecutionGroup& groupNamed(std::vector<ExecutionGroup>& groups, std::string_view name);

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> m_positions;
  std::size_t m_indexed = 0;  // how many of the groups are in m_positions
};

}  // namespace vyn::profiling
