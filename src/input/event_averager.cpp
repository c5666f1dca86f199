#include "input/event_averager.h"

#include <utility>

#include "input/event_kind.h"

namespace vyn::profiling {
namespace {

constexpr auto kNone = static_cast<std::size_t>(-1);

}  // namespace

void EventAverager::add(const std::vector<EventNode>& events) { m_root.merge(events); }

std::vector<EventNode> EventAverager::averages(Payloads payloads) const {
  return m_root.averages(payloads);
}

void EventAverager::Level::merge(const std::vector<EventNode>& list) {
  // Appended only after the whole list has been looked up, so that its siblings stay apart.
  std::vector<const EventNode*> newcomers;
  std::size_t expected = 0;
  for (const EventNode& event : list) {
    const std::size_t place = find(event.identifier, expected);
    if (place != kNone) {
      sums[place].value += numberOf(event);
      ++sums[place].count;
      if (!event.children.empty()) {
        children[place].merge(event.children);
      }
      expected = place + 1;
    } else if (!isObjectEvent(event)) {
      newcomers.push_back(&event);
    }
  }
  for (const EventNode* newcomer : newcomers) {
    append(*newcomer);
  }
}

// Executions list the same events in the same order, so the one behind the last one found is
// nearly always the one: looking there first spares a look-up that misses the cache.
std::size_t EventAverager::Level::find(std::string_view identifier, std::size_t expected) const {
  if (expected < sums.size() && sums[expected].isFirst && sums[expected].identifier == identifier) {
    return expected;
  }
  const auto found = firstByIdentifier.find(identifier);
  return found != firstByIdentifier.end() ? found->second : kNone;
}

void EventAverager::Level::append(const EventNode& event) {
  const bool isFirst = firstByIdentifier.try_emplace(event.identifier, sums.size()).second;
  sums.push_back({event.identifier, numberOf(event), event.count, isFirst});
  events.push_back(&event);
  // The newcomer's own subtree comes along whole, payloads included.
  Level& subtree = children.emplace_back();
  for (const EventNode& child : event.children) {
    subtree.append(child);
  }
}

std::vector<EventNode> EventAverager::Level::averages(Payloads payloads) const {
  std::vector<EventNode> means;
  means.reserve(sums.size());
  for (std::size_t i = 0; i < sums.size(); ++i) {
    EventNode mean = copyWithoutChildren(*events[i], payloads);
    const Sum& sum = sums[i];
    if (sum.count > mean.count) {
      mean.dataType = EventDataType::UINT_64;
    }
    if (mean.dataType == EventDataType::UINT_64) {
      mean.value.uint64 = sum.value / sum.count;
    }
    mean.count = sum.count;
    mean.children = children[i].averages(payloads);
    means.push_back(std::move(mean));
  }
  return means;
}

}  // namespace vyn::profiling
