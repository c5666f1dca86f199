#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vyn::test {

struct LogEvent {
  std::string identifier;
  profiling::schema::EventUnit unit = profiling::schema::EventUnit::MICROSEC;
  std::uint64_t value = 0;
  std::optional<double> doubleValue = {};  ///< instead of `value`
  std::string payload = {};                ///< instead of both, of an OBJECT event
  std::string payloadFile = {};
};

struct LogMessage {
  profiling::schema::MethodType method = profiling::schema::MethodType::BACKEND_EXECUTE;
  std::int8_t level = 0;
  std::vector<LogEvent> events = {};
};

struct LogHeader {
  std::string netRunVersion;
  float timeScale = 1;
};

/// One chunk of a log with its length in front. Messages are numbered from 1, their time stamp is
/// their number times 10, each starts at 100 and stops at 107 microseconds; graph names are "net".
std::string makeChunk(const std::vector<LogMessage>& messages,
                      const std::optional<LogHeader>& header = {});

}  // namespace vyn::test
