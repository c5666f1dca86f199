#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <optional>

#include "analysis/distinct_texts.h"
#include "analysis/log_facts.h"
#include "analysis/number_tally.h"
#include "analysis/text_identities.h"

namespace vyn::profiling {

/// Counts events by what they are.
class EventTally {
 public:
  /// `depth` is 1 for an event that stands in its message. The event's texts belong to the chunk
  /// that `identities` knows.
  void add(const schema::Event& event, std::uint32_t depth, TextIdentities& identities);

  EventFacts events() const;
  const PayloadFacts& payloads() const { return m_payloads; }

 private:
  void addIdentifier(const std::optional<std::uint64_t>& identity);

  std::uint64_t m_count = 0;
  std::uint32_t m_greatestDepth = 0;
  NumberTally m_types;
  NumberTally m_units;
  NumberTally m_valueTypes;
  DistinctTexts m_identifiers;
  PayloadFacts m_payloads;
};

}  // namespace vyn::profiling
