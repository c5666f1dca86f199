#pragma once

#include <cstdint>
#include <optional>

#include "analysis/log_facts.h"

namespace vyn::profiling {

/// Follows the time stamps of messages, in the order of the log.
class TimeStampCourse {
 public:
  void add(std::uint64_t timestamp);

  const std::optional<TimeStampFacts>& facts() const { return m_facts; }

 private:
  std::optional<TimeStampFacts> m_facts;
};

/// Follows the sequence numbers of messages, in the order of the log.
class SequenceCourse {
 public:
  void add(std::uint64_t number);

  const std::optional<SequenceFacts>& facts() const { return m_facts; }

 private:
  std::optional<SequenceFacts> m_facts;
  std::uint64_t m_previous = 0;
};

}  // namespace vyn::profiling
