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
  for (const EventNode& event : events) {
    const auto found = firstByIdentifier.find(event.identifier);
    if (found != firstByIdentifier.end()) {
      Entry& entry = entries[found->second];
      entry.node.value.uint64 += event.value.uint64;
      entry.node.dataType = EventDataType::UINT_64;
      ++entry.node.count;
      entry.children.merge(event.children);
    } else if (!isObjectEvent(event)) {
      newcomers.push_back(&event);
    }
  }
  for (const EventNode* newcomer : newcomers) {
    append(*newcomer);
  }
}

void EventAverager::Level::append(const EventNode& event) {
  firstByIdentifier.try_emplace(event.identifier, entries.size());
  Entry& entry = entries.emplace_back(Entry{copyWithoutChildren(event), {}});
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
