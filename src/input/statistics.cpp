#include "input/statistics.h"

#include "input/event_averager.h"
#include "input/event_kind.h"

namespace vyn::profiling {
namespace {

EventGroup copyOf(const ExecutionGroup& group, const ExecutionRecord& record) {
  return {group.name, record.duration, record.timestamp, record.events};
}

}  // namespace

EventGroup averageOf(const ExecutionGroup& group) {
  std::uint64_t durations = 0;
  EventAverager averager;
  for (const ExecutionRecord& record : group.records) {
    durations += record.duration;
    averager.add(record.events);
  }
  return {group.name, durations / group.records.size(), group.records.back().timestamp,
          averager.averages()};
}

EventGroup slowestOf(const ExecutionGroup& group) {
  const ExecutionRecord* slowest = &group.records.front();
  for (const ExecutionRecord& record : group.records) {
    if (record.duration >= slowest->duration) {
      slowest = &record;
    }
  }
  return copyOf(group, *slowest);
}

EventGroup fastestOf(const ExecutionGroup& group) {
  const ExecutionRecord* fastest = &group.records.front();
  for (const ExecutionRecord& record : group.records) {
    if (record.duration <= fastest->duration) {
      fastest = &record;
    }
  }
  return copyOf(group, *fastest);
}

std::optional<std::uint64_t> queueWaitOf(const std::vector<EventNode>& events) {
  std::optional<std::uint64_t> wait;
  int count = 0;
  const auto look = [&](const EventNode& event) {
    if (hasType(event, schema::EventType::EXECUTE_QUEUE_WAIT)) {
      wait = event.value.uint64;
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
