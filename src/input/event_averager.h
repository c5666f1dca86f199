#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text_hash.h"
#include "input/event_copies.h"
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

  /// The means of all that was added, after which the averager is empty: what it keeps for itself
  /// is given up as the means are made.
  std::vector<EventNode> takeAverages(Payloads payloads = Payloads::kKept);

 private:
  class Siblings;

  // An event of the merged tree. Small, so that thousands of siblings stay in the processor's
  // cache.
  struct Entry {
    std::string_view identifier;
    std::uint64_t value;  // the sum
    std::uint64_t count;
    bool isFirst;                         // of its identifier
    const EventNode* event;               // as first met
    std::unique_ptr<Siblings> subEvents;  // none as long as they are those of `event`
  };

  // Siblings of the merged tree. Only lists that something was merged into have one.
  class Siblings {
   public:
    enum class Objects { kKept, kDropped };

    Siblings(const std::vector<EventNode>& list, Objects objects);
    void merge(const std::vector<EventNode>& list);
    std::vector<EventNode> takeAverages(Payloads payloads);

   private:
    std::size_t find(std::string_view identifier, std::size_t expected) const;
    std::size_t lookUp(std::string_view identifier) const;
    void makeRoomFor(std::size_t count);
    void append(const EventNode& event);

    std::vector<Entry> m_entries;
    // By identifier. Empty while there are so few entries that looking at each is faster.
    std::unordered_map<std::string_view, std::size_t, TextHash> m_firstEntries;
  };

  // The first execution's events stay where they are until another execution has some.
  const std::vector<EventNode>* m_first = nullptr;
  std::unique_ptr<Siblings> m_root;
};

}  // namespace vyn::profiling
