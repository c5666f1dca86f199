#include "input/event_averager.h"

#include <algorithm>
#include <utility>

#include "input/event_kind.h"

namespace vyn::profiling {
namespace {

constexpr auto kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kMaxWithoutIndex = 8;  // siblings

}  // namespace

void EventAverager::add(const std::vector<EventNode>& events) {
  if (m_root != nullptr) {
    m_root->merge(events);
  } else if (m_first == nullptr) {
    m_first = &events;
  } else {
    m_root = std::make_unique<Siblings>(*m_first, Siblings::Objects::kDropped);
    m_root->merge(events);
  }
}

std::vector<EventNode> EventAverager::takeAverages(Payloads payloads) {
  const auto root = std::move(m_root);
  const auto* first = std::exchange(m_first, nullptr);
  if (root != nullptr) {
    return root->takeAverages(payloads);
  }
  return first != nullptr ? copyWithoutObjects(*first, payloads) : std::vector<EventNode>();
}

EventAverager::Siblings::Siblings(const std::vector<EventNode>& list, Objects objects) {
  makeRoomFor(list.size());
  for (const EventNode& event : list) {
    if (objects == Objects::kKept || !isObjectEvent(event)) {
      append(event);
    }
  }
}

void EventAverager::Siblings::merge(const std::vector<EventNode>& list) {
  // Appended only after the whole list has been looked up, so that its siblings stay apart.
  std::vector<const EventNode*> newcomers;
  std::size_t expected = 0;
  for (const EventNode& event : list) {
    const std::size_t place = find(event.identifier, expected);
    if (place != kNone) {
      Entry& entry = m_entries[place];
      entry.value += numberOf(event);
      ++entry.count;
      if (!event.children.empty()) {
        if (entry.subEvents == nullptr) {
          // The event's own sub-events come along whole, OBJECT ones included.
          entry.subEvents = std::make_unique<Siblings>(entry.event->children, Objects::kKept);
        }
        entry.subEvents->merge(event.children);
      }
      expected = place + 1;
    } else if (!isObjectEvent(event)) {
      newcomers.push_back(&event);
    }
  }
  makeRoomFor(newcomers.size());
  for (const EventNode* newcomer : newcomers) {
    append(*newcomer);
  }
}

// Executions list the same events in the same order, so the one behind the last one found is
// nearly always the one: looking there first spares a look-up that misses the cache.
std::size_t EventAverager::Siblings::find(std::string_view identifier, std::size_t expected) const {
  if (expected < m_entries.size() && m_entries[expected].isFirst &&
      m_entries[expected].identifier == identifier) {
    return expected;
  }
  return lookUp(identifier);
}

std::size_t EventAverager::Siblings::lookUp(std::string_view identifier) const {
  if (m_entries.size() <= kMaxWithoutIndex) {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
      return entry.identifier == identifier;
    });
    return found != m_entries.end() ? static_cast<std::size_t>(found - m_entries.begin()) : kNone;
  }
  const auto found = m_firstEntries.find(identifier);
  return found != m_firstEntries.end() ? found->second : kNone;
}

// In steps that keep both the time for all of them and the unused room small.
void EventAverager::Siblings::makeRoomFor(std::size_t count) {
  if (m_entries.capacity() - m_entries.size() < count) {
    m_entries.reserve(m_entries.size() + std::max(count, m_entries.size() / 4));
  }
}

void EventAverager::Siblings::append(const EventNode& event) {
  const std::size_t place = m_entries.size();
  bool isFirst = false;
  if (place < kMaxWithoutIndex) {
    isFirst = lookUp(event.identifier) == kNone;
  } else {
    if (place == kMaxWithoutIndex) {
      for (std::size_t i = 0; i < place; ++i) {
        m_firstEntries.try_emplace(m_entries[i].identifier, i);
      }
    }
    isFirst = m_firstEntries.try_emplace(event.identifier, place).second;
  }
  m_entries.push_back({event.identifier, numberOf(event), event.count, isFirst, &event, nullptr});
}

std::vector<EventNode> EventAverager::Siblings::takeAverages(Payloads payloads) {
  m_firstEntries = decltype(m_firstEntries)();
  std::vector<EventNode> means;
  means.reserve(m_entries.size());
  for (Entry& entry : m_entries) {
    const auto subEvents = std::move(entry.subEvents);
    EventNode mean = subEvents != nullptr ? copyWithoutChildren(*entry.event, payloads)
                                          : copyOf(*entry.event, payloads);
    if (entry.count > mean.count) {
      mean.dataType = EventDataType::UINT_64;
    }
    if (mean.dataType == EventDataType::UINT_64) {
      mean.value.uint64 = entry.value / entry.count;
    }
    mean.count = entry.count;
    if (subEvents != nullptr) {
      mean.children = subEvents->takeAverages(payloads);
    }
    means.push_back(std::move(mean));
  }
  return means;
}

}  // namespace vyn::profiling
