#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Merges the event lists of several executions into one list of means. Takes time proportional to
/// the events, however many siblings they have.
///
/// A list's event joins the first event of an earlier list, at the same place in the tree, that has
/// the same identifier; two siblings of one list never join each other. An event that joins none
/// is appended, but not one of unit OBJECT. Joined values are added up as unsigned words, whatever
/// their types were, so means are integers.
class EventAverager {
 public:
  /// Adds one execution's events, which must outlive the averager.
  void add(const std::vector<EventNode>& events);

  /// The means. Nothing may be added afterwards.
  std::vector<EventNode> takeAverages();

 private:
  struct Entry;

  // Siblings of the merged tree.
  struct Level {
    std::vector<Entry> entries;
    std::unordered_map<std::string_view, std::size_t> firstByIdentifier;

    void merge(const std::vector<EventNode>& events);
    Entry* find(const std::string& identifier, std::size_t expected);
    void append(const EventNode& event);
    std::vector<EventNode> takeAverages();
  };

  struct Entry {
    EventNode node;       // without its children
    bool isFirst = true;  // of its identifier
    Level children;
  };

  Level m_root;
};

}  // namespace vyn::profiling
