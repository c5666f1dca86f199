#include "input/queue_waits.h"

#include <limits>
#include <unordered_map>
#include <utility>

#include "base/text_hash.h"
#include "input/event_kind.h"
#include "input/statistics.h"

namespace vyn::profiling {
namespace {

// The same text for a missing queue-wait event as for a repeated one.
constexpr char kMessage[] =
    "Multiple queue-wait time events found per execution. Cannot calculate Host Round-Trip "
    "excluding queue wait\n";

// Truncated; 0 for an empty series.
std::uint64_t waitOf(const NamedSeries& series) {
  if (series.values.empty()) {
    return 0;
  }
  double sum = 0.0;
  for (const std::uint64_t value : series.values) {
    sum += static_cast<double>(value);
  }
  const double mean = sum / static_cast<double>(series.values.size());
  // Rounding can lift the mean of huge values to 2^64, which no longer fits.
  constexpr double kTooLarge = 18446744073709551616.0;
  return mean < kTooLarge ? static_cast<std::uint64_t>(mean)
                          : std::numeric_limits<std::uint64_t>::max();
}

std::uint64_t waitOf(const NamedValue& value) { return value.value; }

// In microseconds; none unless there is exactly one.
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

std::optional<NamedSeries> seriesOf(const ExecutionGroup& group) {
  NamedSeries series{group.name, {}};
  for (const ExecutionRecord& record : group.records) {
    const auto wait = queueWaitOf(record.events);
    if (!wait) {
      return std::nullopt;
    }
    series.values.push_back(*wait);
  }
  return series;
}

using Choice = const ExecutionRecord& (*)(const ExecutionGroup&);

template <Choice Choose>
std::optional<NamedValue> chosenOf(const ExecutionGroup& group) {
  const auto wait = queueWaitOf(Choose(group).events);
  return wait ? std::optional(NamedValue{group.name, *wait}) : std::nullopt;
}

// Of all groups, or of none and with a message.
template <typename Entry>
std::vector<Entry> collect(const std::vector<ExecutionGroup>& groups,
                           std::optional<Entry> (*entryOf)(const ExecutionGroup&),
                           std::string& messages) {
  std::vector<Entry> entries;
  for (const ExecutionGroup& group : groups) {
    auto entry = entryOf(group);
    if (!entry) {
      messages += kMessage;
      return {};
    }
    entries.push_back(std::move(*entry));
  }
  return entries;
}

template <typename Entry>
std::vector<ExecuteFigure> subtractWaits(const std::vector<EventGroup>& figures,
                                         const std::vector<Entry>& waits) {
  std::unordered_map<std::string_view, std::uint64_t, TextHash> waitsByGraph;
  for (const Entry& entry : waits) {
    waitsByGraph.try_emplace(entry.name, waitOf(entry));
  }
  std::vector<ExecuteFigure> results;
  results.reserve(figures.size());
  for (const EventGroup& figure : figures) {
    results.push_back({figure.name, figure.duration, std::nullopt});
    if (const auto wait = waitsByGraph.find(figure.name); wait != waitsByGraph.end()) {
      // Not guarded: a wait longer than the duration wraps around, which shows that the log is off.
      results.back().durationWithoutWait = figure.duration - wait->second;
    }
  }
  return results;
}

}  // namespace

QueueWaits queueWaitsOf(const std::vector<ExecutionGroup>& groups) {
  QueueWaits waits;
  waits.series = collect(groups, seriesOf, waits.messages);
  waits.slowest = collect(groups, chosenOf<slowestOf>, waits.messages);
  waits.fastest = collect(groups, chosenOf<fastestOf>, waits.messages);
  return waits;
}

std::vector<ExecuteFigure> withoutQueueWait(const std::vector<EventGroup>& figures,
                                            const std::vector<NamedSeries>& waits) {
  return subtractWaits(figures, waits);
}

std::vector<ExecuteFigure> withoutQueueWait(const std::vector<EventGroup>& figures,
                                            const std::vector<NamedValue>& waits) {
  return subtractWaits(figures, waits);
}

}  // namespace vyn::profiling
