#include "report/console_blocks.h"

#include <iomanip>

#include "report/console_lines.h"

namespace vyn::profiling {
namespace {

constexpr int kSummaryDecimals = 4;  // of the inferences per second

void printExecuteFigure(std::ostream& stream, const ExecuteBlock& block,
                        const ExecuteFigure& figure) {
  stream << indent() << "NetRun" << (block.isAsync ? " (Host Round-Trip)" : "") << ": "
         << figure.duration << " us\n";
  if (block.isAsync && !block.omitsDetails && figure.durationWithoutWait) {
    stream << indent()
           << "NetRun (Host Round-Trip excluding queue wait): " << *figure.durationWithoutWait
           << std::endl;  // microseconds, but without the unit
  }
}

}  // namespace

void printStepBlock(std::ostream& stream, const Heading& heading, std::uint64_t duration,
                    const EventLister& listEvents) {
  printHeading(stream, heading);
  printTimeLine(stream, duration);
  if (listEvents) {
    listEvents(stream);
  }
  stream << std::endl;
}

void printFinalizeBlock(std::ostream& stream, const std::vector<EventGroup>& groups,
                        const GraphEventLister& listEvents) {
  printHeading(stream, kFinalizeHeading);
  if (groups.empty()) {
    stream << std::endl;
  }
  for (std::size_t i = 0; i < groups.size(); ++i) {
    printGraphHeading(stream, i, groups[i].name);
    printTimeLine(stream, groups[i].duration);
    if (listEvents) {
      listEvents(stream, i);
    }
    stream << std::endl;
  }
}

void printExecuteBlock(std::ostream& stream, const ExecuteBlock& block,
                       const GraphEventLister& listEvents) {
  printHeading(stream, block.heading);
  printHeading(stream, kTotalInferenceTimeHeading);
  if (block.figures.empty()) {
    stream << std::endl;
  }
  for (std::size_t i = 0; i < block.figures.size(); ++i) {
    printGraphHeading(stream, i, block.figures[i].name);
    printExecuteFigure(stream, block, block.figures[i]);
    if (!block.omitsDetails && listEvents) {
      listEvents(stream, i);
    }
    stream << std::endl;
  }
}

void printRateBlock(std::ostream& stream, float inferencesPerSecond) {
  stream << std::fixed << std::setprecision(kSummaryDecimals);
  printHeading(stream, kExecuteOverallHeading);
  stream << indent() << "NetRun IPS (includes IO and misc. time): " << inferencesPerSecond
         << " inf/sec " << std::endl
         << std::endl;
}

void printLibLoadBlock(std::ostream& stream, std::uint64_t backendLatency) {
  stream << std::fixed << std::setprecision(kSummaryDecimals);
  printHeading(stream, kLibLoadHeading);
  stream << indent() << "Backend Latency: " << backendLatency << " us\n" << std::endl;
}

void printBinarySectionBlock(std::ostream& stream, const Heading& heading,
                             const std::vector<EventGroup>& figures,
                             const GraphEventLister& listEvents) {
  printHeading(stream, heading);
  // Unlike in the other blocks, no empty line follows when there is no graph.
  for (std::size_t i = 0; i < figures.size(); ++i) {
    printGraphHeading(stream, i, figures[i].name);
    printTimeLine(stream, figures[i].duration);
    if (listEvents) {
      listEvents(stream, i);
    }
    stream << std::endl;
  }
}

}  // namespace vyn::profiling
