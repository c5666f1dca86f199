#include "input/group_index.h"

#include <utility>

namespace vyn::profiling {
namespace {

// Names of more bytes are known by their fingerprints.
constexpr std::size_t kMaxComparedLength = 256;

bool isShort(std::string_view name) { return name.size() <= kMaxComparedLength; }

}  // namespace

void GroupIndex::add(std::vector<ExecutionGroup>& groups, std::string_view name,
                     TextFingerprints& fingerprints, ExecutionRecord&& record) {
  catchUp(groups);
  if (const auto position = find(name, fingerprints)) {
    groups[*position].records.push_back(std::move(record));
    return;
  }
  // The group is appended with its execution: no failure leaves one that has none.
  ExecutionGroup group{std::string(name), {}};
  group.records.push_back(std::move(record));
  groups.push_back(std::move(group));
}

std::optional<std::size_t> GroupIndex::find(std::string_view name,
                                            TextFingerprints& fingerprints) const {
  if (isShort(name)) {
    const auto found = m_shortNames.find(name);
    return found != m_shortNames.end() ? std::optional(found->second) : std::nullopt;
  }
  const auto found = m_longNames.find(fingerprints.ofChunkText(name));
  return found != m_longNames.end() ? std::optional(found->second) : std::nullopt;
}

void GroupIndex::catchUp(const std::vector<ExecutionGroup>& groups) {
  for (; m_indexed < groups.size(); ++m_indexed) {
    const std::string& name = groups[m_indexed].name;
    if (isShort(name)) {
      m_shortNames.try_emplace(name, m_indexed);
    } else {
      m_longNames.try_emplace(TextFingerprints::of(name), m_indexed);
    }
  }
}

}  // namespace vyn::profiling
