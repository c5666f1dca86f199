#include "host/input/loss_report.h"

#include "base/counted.h"
#include "host/report_line.h"
#include "input/damage_text.h"

namespace vyn::host {
namespace {

constexpr std::size_t kMostLines = 20;

std::string describe(const profiling::LostRange& range) {
  std::string text = std::string(range.isTaken ? "not whole: " : "lost ") +
                     profiling::counted(range.to - range.from, "byte") + " from byte offset " +
                     std::to_string(range.from) + " to " + std::to_string(range.to) + ": " +
                     profiling::whyDamaged(range.why, range.place);
  if (range.isLast && profiling::mayStillBeWritten(range.why, range.place)) {
    text += std::string("; ") + profiling::kMayStillBeWritten;
  }
  if (range.isTaken) {
    text += "; its messages are all there";
  }
  return text;
}

}  // namespace

void LossReport::add(const profiling::LostRange& range) {
  if (!range.isTaken) {
    ++m_ranges;
    m_bytes += range.to - range.from;
  }
  if (m_first.size() < kMostLines) {
    m_first.push_back(range);
    m_bytesOfFirst = m_bytes;
  }
}

void LossReport::print(const std::string& log) const {
  for (const profiling::LostRange& range : m_first) {
    reportLine(log + ": " + describe(range));
  }
  if (m_ranges > kMostLines) {
    reportLine(log + ": lost " + profiling::counted(m_ranges - kMostLines, "more range") + ", " +
               profiling::counted(m_bytes - m_bytesOfFirst, "byte"));
  }
}

std::string LossReport::sum() const {
  return profiling::counted(m_ranges, "range") + ", " + profiling::counted(m_bytes, "byte");
}

}  // namespace vyn::host
