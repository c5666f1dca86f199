// What the summary reader puts into the blocks of its console summary.

#include <ostream>
#include <utility>

#include "core/vyn_profile_log_reader.h"
#include "input/event_kind.h"
#include "input/inferences_per_second.h"
#include "input/queue_waits.h"
#include "report/console_events.h"
#include "report/headings.h"
#include "report/payload_files.h"

namespace vyn::profiling {

void VynProfileLogReader::printSummary(std::ostream& stream) {
  printHeaderDetails(stream);
  printStatisticsTitle(stream);
  printExecuteStatsOverall(stream);
  printExecuteStatsAverage(stream);
  printExecuteStatsMin(stream);
  printExecuteStatsMax(stream);
  printLibLoadStats(stream);
  printApplyBinarySectionStatsAverage(stream);
  printApplyBinarySectionStatsMin(stream);
  printApplyBinarySectionStatsMax(stream);
}

void VynProfileLogReader::printHeaderDetails(std::ostream& stream) {
  stream << getHeaderDetails() << std::endl;
}

void VynProfileLogReader::printStatisticsTitle(std::ostream& stream) {
  printHeading(stream, kStatisticsTitle);
  printInitStats(stream);
  printComposeGraphsStats(stream);
  printFinalizeStats(stream);
  printDeInitStats(stream);
}

void VynProfileLogReader::printInitStats(std::ostream& stream) {
  const std::vector<EventNode>* events = listedInitEvents();
  printStepBlock(stream, kInitHeading, m_initTime, events != nullptr ? listerOf(*events) : nullptr);
}

void VynProfileLogReader::printComposeGraphsStats(std::ostream& stream) const {
  printStepBlock(stream, kComposeGraphsHeading, m_composeGraphsTime, nullptr);
}

void VynProfileLogReader::printFinalizeStats(std::ostream& stream) {
  printFinalizeBlock(stream, m_finalizeGroups,
                     m_hasFinalizeEvents ? listerOf(m_finalizeGroups) : nullptr);
}

void VynProfileLogReader::printDeInitStats(std::ostream& stream) {
  printStepBlock(stream, kDeInitHeading, m_deInitTime, listerOf(m_deInitEvents));
}

void VynProfileLogReader::printExecuteStatsOverall(std::ostream& stream) {
  if (const auto rate = executeRate()) {
    printRateBlock(stream, *rate);
  }
}

void VynProfileLogReader::printExecuteStatsAverage(std::ostream& stream) {
  printExecuteBlock(
      stream,
      executeBlock(kExecuteAverageHeading, withoutQueueWait(m_executeAverage, m_queueWaitSeries)),
      listerOf(m_executeGroups, averageEventsOf));
  if (!m_executeAverage.empty() && m_writeObjectPayloads) {
    forEachExecutionPayload(m_executeGroups,
                            [this](const EventNode& event) { writeObjectPayload(event); });
  }
}

void VynProfileLogReader::printExecuteStatsMin(std::ostream& stream) {
  printExecuteBlock(
      stream, executeBlock(kExecuteMinHeading, withoutQueueWait(m_executeMin, m_queueWaitMin)),
      listerOf(m_executeGroups, fastestEventsOf));
}

void VynProfileLogReader::printExecuteStatsMax(std::ostream& stream) {
  printExecuteBlock(
      stream, executeBlock(kExecuteMaxHeading, withoutQueueWait(m_executeMax, m_queueWaitMax)),
      listerOf(m_executeGroups, slowestEventsOf));
}

ExecuteBlock VynProfileLogReader::executeBlock(const Heading& heading,
                                               std::vector<ExecuteFigure> figures) const {
  return {heading, std::move(figures), m_asyncExecute, m_omitExecuteDetails};
}

void VynProfileLogReader::printLibLoadStats(std::ostream& stream) {
  if (const auto latency = backendLatency(); m_hasLibLoad && latency) {
    printLibLoadBlock(stream, *latency);
  }
}

void VynProfileLogReader::printApplyBinarySectionStatsAverage(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionAverageHeading,
                               m_applyBinarySectionAverage, averageEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStatsMin(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMinHeading, m_applyBinarySectionMin,
                               fastestEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStatsMax(std::ostream& stream) {
  printApplyBinarySectionStats(stream, kApplyBinarySectionMaxHeading, m_applyBinarySectionMax,
                               slowestEventsOf);
}

void VynProfileLogReader::printApplyBinarySectionStats(std::ostream& stream, const Heading& heading,
                                                       const std::vector<EventGroup>& figures,
                                                       EventsOf eventsOf) {
  if (m_hasApplyBinarySection) {
    printBinarySectionBlock(stream, heading, figures,
                            listerOf(m_applyBinarySectionGroups, eventsOf));
  }
}

std::optional<float> VynProfileLogReader::executeRate() const {
  return m_hasExecuteIps ? inferencesPerSecond(m_executeIpsEvents) : std::nullopt;
}

std::optional<std::uint64_t> VynProfileLogReader::backendLatency() const {
  return m_libLoadEvents.empty() ? std::nullopt : std::optional(numberOf(m_libLoadEvents.front()));
}

const std::vector<EventNode>* VynProfileLogReader::listedInitEvents() const {
  if (m_hasInitEvents) {
    return &m_initEvents;
  }
  return m_hasCreateFromBinaryEvents ? &m_createFromBinaryEvents : nullptr;
}

Payloads VynProfileLogReader::listedPayloads() const {
  return m_writeObjectPayloads ? Payloads::kKept : Payloads::kLeftOut;
}

EventLister VynProfileLogReader::listerOf(const std::vector<EventNode>& events) {
  return [this, &events](std::ostream& stream) {
    printEvents(stream, copyOf(events, listedPayloads()));
  };
}

GraphEventLister VynProfileLogReader::listerOf(const std::vector<EventGroup>& groups) {
  return [this, &groups](std::ostream& stream, std::size_t graph) {
    printEvents(stream, copyOf(groups[graph].events, listedPayloads()));
  };
}

GraphEventLister VynProfileLogReader::listerOf(const std::vector<ExecutionGroup>& groups,
                                               EventsOf eventsOf) {
  return [this, &groups, eventsOf](std::ostream& stream, std::size_t graph) {
    // Figures and executions stand apart: those of a derived reader may not agree.
    if (graph < groups.size()) {
      printEvents(stream, eventsOf(groups[graph], listedPayloads()));
    }
  };
}

void VynProfileLogReader::printEvents(std::ostream& stream, std::vector<EventNode> events) {
  const PayloadNames::Scope oneListing(m_payloadNames);
  printEventLines(stream, events, [this](const EventNode& event) {
    if (m_writeObjectPayloads) {
      writeObjectPayload(event);
    }
  });
}

void VynProfileLogReader::writeObjectPayload(const EventNode& event) {
  writePayloadFile(event, m_payloadNames);
}

}  // namespace vyn::profiling
