#pragma once

#include <cstdint>
#include <string>

namespace vyn::profiling {

/// What is told of a log's header.
struct HeaderValues {
  const std::string& inputLogFileLocation;
  std::uint64_t epochTime;  ///< microseconds since the Unix epoch
  std::uint64_t steadyClockTimestamp;
  float timeScale;
  const std::string& netRunVersion;   ///< may be empty
  const std::string& backendVersion;  ///< may be empty
};

/// The header as text, several lines. Empty when its time has a local calendar form that has no
/// text.
std::string headerDetails(const HeaderValues& header);

}  // namespace vyn::profiling
