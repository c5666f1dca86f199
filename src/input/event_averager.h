#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "input/event_copies.h"
#include "input/text_hash.h"
#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Merges the event lists of several executions into one list of means. Takes time proportional to
/// the events, however many siblings they have.
///
/// A list's event joins the first event of an earlier list, at the same place in the tree, that has
/// the same identifier; two siblings of one list never join each other. An event that joins none
/// is appended, but not one of unit OBJECT. Joined values are added up as unsigned words, whatever
/// their types were, so means are integers; a text counts as 0.
class EventAverager {
 public:
  /// Adds one execution's events, which must outlive the averager.
  void add(const std::vector<EventNode>& events);

  /// The means of all that was added.
  std::vector<EventNode> averages(Payloads payloads = Payloads::kKept) const;

 private:
  // What joining an event reads and writes, apart from all else: packed, so that thousands of
  // siblings stay in the processor's cache.
  struct Sum {
    std::string_view identifier;
    std::uint64_t value;
    std::uint64_t count;
    bool isFirst;  // of its identifier
  };

  // Siblings of the merged tree; the three vectors have one element for each.
  struct Level {
    std::vector<Sum> sums;
    std::vector<const EventNode*> events;  // as first met
    std::vector<Level> children;
    std::unordered_map<std::string_view, std::size_t, TextHash> firstByIdentifier;

    void merge(const std::vector<EventNode>& list);
    std::size_t find(std::string_view identifier, std::size_t expected) const;
    void append(const EventNode& event);
    std::vector<EventNode> averages(Payloads payloads) const;
  };

  Level m_root;
};

}  // namespace vyn::profiling
