#include "input/event_averager.h"

#include <utility>

#include "input/event_kind.h"

namespace vyn::profiling {
namespace {

EventNode copyWithoutChildren(const EventNode& event) {
  return {event.type,          event.dataType, event.value,      event.rawData, event.identifier,
          event.secondaryName, event.unit,     event.extraValue, event.count,   {}};
}

}  // namespace

void EventAverager::add(const std::vector<EventNode>& events) { m_root.merge(events); }

std::vector<EventNode> EventAverager::takeAverages() { return m_root.takeAverages(); }

void EventAverager::Level::merge(const std::vector<EventNode>& events) {
  // Appended only after the whole list has been looked up, so that its siblings stay apart.
  std::vector<const EventNode*> newcomers;
  std::size_t expected = 0;
  for (const EventNode& event : events) {
    if (Entry* entry = find(event.identifier, expected)) {
      entry->node.value.uint64 += event.value.uint64;
      entry->node.dataType = EventDataType::UINT_64;
      ++entry->node.count;
      entry->children.merge(event.children);
      expected = static_cast<std::size_t>(entry - entries.data()) + 1;
    } else if (!isObjectEvent(event)) {
      newcomers.push_back(&event);
    }
  }
  for (const EventNode* newcomer : newcomers) {
    append(*newcomer);
  }
}

// Executions list the same events in the same order, so the entry behind the last one found is
// nearly always the one: looking there first spares a look-up that misses the cache.
EventAverager::Entry* EventAverager::Level::find(const std::string& identifier,
                                                 std::size_t expected) {
  if (expected < entries.size() && entries[expected].isFirst &&
      entries[expected].node.identifier == identifier) {
    return &entries[expected];
  }
  const auto found = firstByIdentifier.find(identifier);
  return found != firstByIdentifier.end() ? &entries[found->second] : nullptr;
}

void EventAverager::Level::append(const EventNode& event) {
  const bool isFirst = firstByIdentifier.try_emplace(event.identifier, entries.size()).second;
  Entry& entry = entries.emplace_back(Entry{copyWithoutChildren(event), isFirst, {}});
  // The newcomer's own subtree comes along whole, payloads included.
  for (const EventNode& child : event.children) {
    entry.children.append(child);
  }
}

std::vector<EventNode> EventAverager::Level::takeAverages() {
  std::vector<EventNode> averages;
  averages.reserve(entries.size());
  for (Entry& entry : entries) {
    if (entry.node.dataType == EventDataType::UINT_64) {
      entry.node.value.uint64 /= entry.node.count;
    }
    entry.node.children = entry.children.takeAverages();
    averages.push_back(std::move(entry.node));
  }
  return averages;
}

}  // namespace vyn::profiling
