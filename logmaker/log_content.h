#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace vyn::logmaker {

// What a log says, as plain values; zero and empty ones stay absent from the file.

namespace schema = profiling::schema;

/// The alternatives stand in the order of EventValueType, so that the index is the value's type.
using EventValue = std::variant<std::monostate, std::int64_t, std::uint64_t, float,
                                std::vector<std::uint8_t>, double, std::string>;

struct Event {
  std::string identifier;
  schema::EventType type = schema::EventType::NONE;
  schema::EventUnit unit = schema::EventUnit::UNSPECIFIED;
  EventValue value = {};
  std::vector<Event> subEvents = {};
  /// File name of an OBJECT event's payload.
  std::string secondaryName = {};
};

struct AppMetrics {
  std::uint64_t startTime = 0;  ///< microseconds
  std::uint64_t stopTime = 0;   ///< microseconds
  std::uint64_t startMem = 0;   ///< bytes
  std::uint64_t stopMem = 0;    ///< bytes
};

struct Message {
  std::uint64_t timestamp = 0;  ///< microseconds
  std::uint64_t sequenceNumber = 0;
  schema::MethodType method = schema::MethodType::NONE;
  AppMetrics appMetrics = {};
  std::int8_t visibilityLevel = 0;
  std::vector<Event> profilingEvents = {};
  std::string graphName = {};
};

struct LogHeader {
  float timeScale = 1.0F;
  std::uint64_t epochTime = 0;  ///< microseconds since the Unix epoch
  std::uint64_t timestamp = 0;  ///< microseconds of the steady clock
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
  std::uint32_t teeny = 0;
  std::string netRunVersion;
  std::string backendVersion;
};

}  // namespace vyn::logmaker
