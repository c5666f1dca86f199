#include "input/statistics.h"

#include "input/event_averager.h"

namespace vyn::profiling {
namespace {

EventGroup figureOf(const ExecutionGroup& group, const ExecutionRecord& record) {
  return {
      .name = group.name,
      .duration = record.duration,
      .timestamp = record.timestamp,
      .events = {},
  };
}

template <typename Figure>
std::vector<EventGroup> figuresOf(const std::vector<ExecutionGroup>& groups, const Figure& figure) {
  std::vector<EventGroup> figures;
  figures.reserve(groups.size());
  for (const ExecutionGroup& group : groups) {
    figures.push_back(figure(group));
  }
  return figures;
}

EventGroup averageOf(const ExecutionGroup& group) {
  std::uint64_t durations = 0;
  for (const ExecutionRecord& record : group.records) {
    durations += record.duration;
  }
  return {
      .name = group.name,
      .duration = durations / group.records.size(),
      .timestamp = group.records.back().timestamp,
      .events = {},
  };
}

}  // namespace

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

std::vector<EventGroup> averagesOf(const std::vector<ExecutionGroup>& groups) {
  return figuresOf(groups, averageOf);
}

std::vector<EventGroup> slowestFiguresOf(const std::vector<ExecutionGroup>& groups) {
  return figuresOf(groups,
                   [](const ExecutionGroup& group) { return figureOf(group, slowestOf(group)); });
}

std::vector<EventGroup> fastestFiguresOf(const std::vector<ExecutionGroup>& groups) {
  return figuresOf(groups,
                   [](const ExecutionGroup& group) { return figureOf(group, fastestOf(group)); });
}

}  // namespace vyn::profiling
