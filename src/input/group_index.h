#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text_hash.h"
#include "input/execution_records.h"
#include "input/text_fingerprints.h"

namespace vyn::profiling {

/// Finds a graph's group by name in constant time, however many graphs a log has and however long
/// their names are.
class GroupIndex {
 public:
  /// Adds the execution to the first of `groups` with that name, or in a new group behind the last.
  /// `name` belongs to the chunk that `fingerprints` knows. Must be given the same vector each
  /// time, which nothing else adds to. When it throws, the groups are as before.
  void add(std::vector<ExecutionGroup>& groups, std::string_view name,
           TextFingerprints& fingerprints, ExecutionRecord&& record);

 private:
  std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> m_shortNames;
  std::unordered_map<TextFingerprint, std::size_t, TextFingerprintHash> m_longNames;
};

}  // namespace vyn::profiling
