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
  void checkSuccessor(std::uint64_t number, std::uint64_t last,
                      const schema::MessageHeader& header);

  CheckSite& m_site;
  std::optional<std::uint64_t> m_lastTime;    // of the last message that has one
  std::optional<std::uint64_t> m_lastNumber;  // none before the first that is not 0
};

}  // namespace vyn::profiling
