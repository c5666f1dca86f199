#include "analysis/number_course.h"

#include <algorithm>

#include "base/saturating.h"

namespace vyn::profiling {

void TimeStampCourse::add(std::uint64_t timestamp) {
  if (!m_facts) {
    m_facts = {timestamp, timestamp, timestamp, timestamp, 0};
  }
  m_facts->stepsBack += timestamp < m_facts->last ? 1 : 0;
  m_facts->last = timestamp;
  m_facts->smallest = std::min(m_facts->smallest, timestamp);
  m_facts->largest = std::max(m_facts->largest, timestamp);
}

void SequenceCourse::add(std::uint64_t number) {
  if (!m_facts) {
    m_facts = {.smallest = number, .largest = number};
  } else if (number == m_previous) {
    ++m_facts->repeats;
  } else if (number < m_previous) {
    ++m_facts->stepsBack;
  }
  if (number > m_facts->largest) {
    const std::uint64_t leftOut = number - m_facts->largest - 1;
    m_facts->gaps += leftOut > 0 ? 1 : 0;
    m_facts->missing = saturatingSum(m_facts->missing, leftOut);
  }
  m_facts->smallest = std::min(m_facts->smallest, number);
  m_facts->largest = std::max(m_facts->largest, number);
  m_previous = number;
}

}  // namespace vyn::profiling
