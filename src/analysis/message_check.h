#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <optional>

#include "analysis/check_site.h"

namespace vyn::profiling {

/// Checks a message by itself and against the ones before it, but for its events.
class MessageCheck {
 public:
  explicit MessageCheck(CheckSite& site) : m_site(site) {}

  void check(const schema::Message& message);

 private:
  void checkMethod(const schema::Message& message);
  void checkMetrics(const schema::AppMetrics& metrics);
  void checkTime(const schema::MessageHeader& header);
  void checkSequence(const schema::MessageHeader& header);

  CheckSite& m_site;
  // Of the last message that has one: a builder leaves out a 0, and so does one that records none.
  std::optional<std::uint64_t> m_lastTime;
  std::optional<std::uint64_t> m_lastNumber;
};

}  // namespace vyn::profiling
