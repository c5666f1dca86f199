#include <algorithm>

#include "core/vyn_profile_log_reader.h"
#include "input/statistics.h"

namespace vyn::profiling {
namespace {

// The same text for a missing queue-wait event as for a repeated one.
constexpr char kQueueWaitMessage[] =
    "Multiple queue-wait time events found per execution. Cannot calculate Host Round-Trip "
    "excluding queue wait\n";

using Choice = const ExecutionRecord& (*)(const ExecutionGroup&);

void deriveAverages(const std::vector<ExecutionGroup>& groups, std::vector<EventGroup>& results) {
  results.reserve(results.size() + groups.size());
  for (const ExecutionGroup& group : groups) {
    results.push_back(averageOf(group));
  }
}

// Without the events, which stay where they are until they are listed.
void deriveExtremes(const std::vector<ExecutionGroup>& groups, Choice choice,
                    std::vector<EventGroup>& results) {
  results.reserve(results.size() + groups.size());
  for (const ExecutionGroup& group : groups) {
    const ExecutionRecord& record = choice(group);
    results.push_back({group.name, record.duration, record.timestamp, {}});
  }
}

// Each of the two below empties its result and returns false at the first execution that has not
// exactly one queue wait.
bool collectQueueWaitSeries(const std::vector<ExecutionGroup>& groups,
                            std::vector<NamedSeries>& results) {
  for (const ExecutionGroup& group : groups) {
    NamedSeries series{group.name, {}};
    for (const ExecutionRecord& record : group.records) {
      const auto wait = queueWaitOf(record.events);
      if (!wait) {
        results.clear();
        return false;
      }
      series.values.push_back(*wait);
    }
    results.push_back(std::move(series));
  }
  return true;
}

bool collectQueueWaits(const std::vector<ExecutionGroup>& groups, Choice choice,
                       std::vector<NamedValue>& results) {
  for (const ExecutionGroup& group : groups) {
    const auto wait = queueWaitOf(choice(group).events);
    if (!wait) {
      results.clear();
      return false;
    }
    results.push_back({group.name, *wait});
  }
  return true;
}

}  // namespace

std::string VynProfileLogReader::deriveStatistics() {
  deriveAverages(m_executeGroups, m_executeAverage);
  deriveExtremes(m_executeGroups, slowestOf, m_executeMax);
  deriveExtremes(m_executeGroups, fastestOf, m_executeMin);
  deriveAverages(m_applyBinarySectionGroups, m_applyBinarySectionAverage);
  deriveExtremes(m_applyBinarySectionGroups, slowestOf, m_applyBinarySectionMax);
  deriveExtremes(m_applyBinarySectionGroups, fastestOf, m_applyBinarySectionMin);
  std::string messages;
  if (m_asyncExecute) {
    messages = deriveQueueWaits();
  }
  deriveInitTotals();
  return messages;
}

std::string VynProfileLogReader::deriveQueueWaits() {
  std::string messages;
  if (!collectQueueWaitSeries(m_executeGroups, m_queueWaitSeries)) {
    messages += kQueueWaitMessage;
  }
  if (!collectQueueWaits(m_executeGroups, slowestOf, m_queueWaitMax)) {
    messages += kQueueWaitMessage;
  }
  if (!collectQueueWaits(m_executeGroups, fastestOf, m_queueWaitMin)) {
    messages += kQueueWaitMessage;
  }
  return messages;
}

void VynProfileLogReader::deriveInitTotals() {
  if (m_hasFinalize) {
    m_initTimestamp = m_contextCreateTimestamp;
    m_initTime = m_contextCreateTime + m_composeGraphsTime;
    for (const EventGroup& group : m_finalizeGroups) {
      m_initTime += group.duration;
    }
  }
  if (m_initTime == 0 && m_hasCreateFromBinaryEvents) {
    m_initTimestamp = m_createFromBinaryTimestamp;
    m_initTime = m_createFromBinaryTime;
  }
}

}  // namespace vyn::profiling
