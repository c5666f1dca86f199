#include "input/group_index.h"

#include <utility>

#include "input/room_for_one.h"

namespace vyn::profiling {
namespace {

// Names of more bytes are known by their fingerprints.
constexpr std::size_t kMaxComparedLength = 256;

// Adds to the group that `index` has for the key, or else to a new one, which it has from then on.
template <typename Index, typename Key>
void addTo(std::vector<ExecutionGroup>& groups, Index& index, const Key& key, std::string_view name,
           ExecutionRecord&& record) {
  if (const auto found = index.find(key); found != index.end()) {
    groups[found->second].records.push_back(std::move(record));
    return;
  }
  // The group is appended with its execution: no failure leaves one that has none.
  ExecutionGroup group{std::string(name), {}};
  makeRoomForOne(group.records);
  makeRoomForOne(groups);
  index.emplace(key, groups.size());
  group.records.push_back(std::move(record));
  groups.push_back(std::move(group));
}

}  // namespace

void GroupIndex::add(std::vector<ExecutionGroup>& groups, std::string_view name,
                     TextFingerprints& fingerprints, ExecutionRecord&& record) {
  if (name.size() <= kMaxComparedLength) {
    addTo(groups, m_shortNames, name, name, std::move(record));
  } else {
    addTo(groups, m_longNames, fingerprints.ofChunkText(name), name, std::move(record));
  }
}

}  // namespace vyn::profiling
