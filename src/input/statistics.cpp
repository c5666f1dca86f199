#include "input/statistics.h"

#include "input/event_averager.h"
#include "input/event_kind.h"

namespace vyn::profiling {

EventGroup averageOf(const ExecutionGroup& group) {
  std::uint64_t durations = 0;
  for (const ExecutionRecord& record : group.records) {
    durations += record.duration;
  }
  return {group.name, durations / group.records.size(), group.records.back().timestamp, {}};
}

const ExecutionRecord& slowestOf(const ExecutionGroup& group) {
  const ExecutionRecord* slowest = &group.records.front();
  for (const ExecutionRecord& record : group.records) {
    if (record.duration >= slowest->duration) {
      slowest = &record;
    }
  }
  return *slowest;
}

const ExecutionRecord& fastestOf(const ExecutionGroup& group) {
  const ExecutionRecord* fastest = &group.records.front();
  for (const ExecutionRecord& record : group.records) {
    if (record.duration <= fastest->duration) {
      fastest = &record;
    }
  }
  return *fastest;
}

std::vector<EventNode> averageEventsOf(const ExecutionGroup& group, Payloads payloads) {
  EventAverager averager;
  for (const ExecutionRecord& record : group.records) {
    averager.add(record.events);
  }
  return averager.takeAverages(payloads);
}

std::vector<EventNode> slowestEventsOf(const ExecutionGroup& group, Payloads payloads) {
  return copyOf(slowestOf(group).events, payloads);
}

std::vector<EventNode> fastestEventsOf(const ExecutionGroup& group, Payloads payloads) {
  return copyOf(fastestOf(group).events, payloads);
}

std::optional<std::uint64_t> queueWaitOf(const std::vector<EventNode>& events) {
  std::optional<std::uint64_t> wait;
  int count = 0;
  const auto look = [&](const EventNode& event) {
    if (hasType(event, schema::EventType::EXECUTE_QUEUE_WAIT)) {
      wait = numberOf(event);
      ++count;
    }
  };
  for (const EventNode& event : events) {
    look(event);
    for (const EventNode& child : event.children) {
      look(child);
    }
  }
  return count == 1 ? wait : std::nullopt;
}

}  // namespace vyn::profiling
