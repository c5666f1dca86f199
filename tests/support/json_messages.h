#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

#include "support/json_log.h"

namespace vyn::test {

/// The fields of a message in the JSON form: its method, time stamp, a duration in microseconds,
/// and the rest.
inline std::string message(const std::string& method, int timestamp, int duration,
                           const std::string& rest = "") {
  return "{header:{timestamp:" + std::to_string(timestamp) +
         "},appMetrics:{startTime:1000,stopTime:" + std::to_string(1000 + duration) +
         "},method:" + method + (rest.empty() ? "" : "," + rest) + "}";
}

/// An event with an unsigned value and, in the JSON form, the rest of its fields.
inline std::string event(const std::string& identifier, std::uint64_t value,
                         const std::string& rest = "") {
  return "{identifier:\"" + identifier + "\",valueType:2,uint64Value:" + std::to_string(value) +
         (rest.empty() ? "" : "," + rest) + "}";
}

/// One chunk of these messages.
inline std::string chunkOf(std::initializer_list<std::string> messages) {
  std::string list;
  for (const std::string& text : messages) {
    list += (list.empty() ? "" : ",") + text;
  }
  return "{messages:[" + list + "]}";
}

}  // namespace vyn::test
