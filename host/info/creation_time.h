#pragma once

#include <cstdint>
#include <string>

namespace vyn::host {

/// A time in microseconds since the Unix epoch, to the second, in UTC: "2024-12-11T04:38:54Z".
/// Empty when no calendar goes that far.
std::string utcTime(std::uint64_t epochTime);

/// The same in the user's time zone, with its distance from UTC: "2024-12-11 05:38:54 +0100".
std::string localTime(std::uint64_t epochTime);

}  // namespace vyn::host
