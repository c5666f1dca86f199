#pragma once

#include <profile_log_generated.h>

#include <cstdint>

#include "analysis/findings.h"

namespace vyn::profiling {

/// Adds up the parts of an event that are numbers in the event's own unit. Parts in another unit,
/// and events in a unit in which parts do not add up to a whole, count for nothing.
class EventSum {
 public:
  /// `whole` must outlive the sum.
  explicit EventSum(const schema::Event& whole);

  void add(const schema::Event& part) {
    if (m_isAdded && part.unit() == m_event.unit()) {
      addNumber(part);
    }
  }

  /// True when the parts are more than the whole. Where one of them is a floating-point number,
  /// rounding is let pass.
  bool exceedsWhole() const;

  Evidence describe() const;

 private:
  // Holds every whole number of 64 bits exactly.
  using Number = long double;

  void addNumber(const schema::Event& part);
  bool isIntegral() const;
  Number whole() const;
  Number parts() const;

  const schema::Event& m_event;
  bool m_isAdded;  // whether parts add up to this event
  bool m_hasFloating = false;
  std::uint64_t m_count = 0;
  std::uint64_t m_unsignedParts = 0;  // by themselves, for nearly all are, and these add up fast
  Number m_otherParts = 0;
};

}  // namespace vyn::profiling
