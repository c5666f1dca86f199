#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vyn::profiling {

/// The keys of the document. None of them needs escaping.
enum class JsonKey : std::size_t {
  kMetadata,
  kMessages,
  kInputLogFileLocation,
  kTimeScale,
  kEpochTime,
  kTimestamp,
  kVersion,
  kMajor,
  kMinor,
  kTeeny,
  kVynProfileViewerVersion,
  kVynNetRunVersion,
  kBackendVersion,
  kHeader,
  kSequenceNumber,
  kMethod,
  kAppMetrics,
  kStartTime,
  kStopTime,
  kStartMem,
  kStopMem,
  kProfilingEvents,
  kIdentifier,
  kUnit,
  kType,
  kValue,
  kSubEvents,
};

inline constexpr std::array<std::string_view, 27> kJsonKeyNames{
    "metadata",
    "messages",
    "inputLogFileLocation",
    "timeScale",
    "epochTime",
    "timestamp",
    "version",
    "major",
    "minor",
    "teeny",
    "vynProfileViewerVersion",
    "vynNetRunVersion",
    "backendVersion",
    "header",
    "sequenceNumber",
    "method",
    "appMetrics",
    "startTime",
    "stopTime",
    "startMem",
    "stopMem",
    "profilingEvents",
    "identifier",
    "unit",
    "type",
    "value",
    "sub-events",
};

constexpr std::string_view nameOf(JsonKey key) {
  return kJsonKeyNames[static_cast<std::size_t>(key)];
}

static_assert(nameOf(JsonKey::kSubEvents) == "sub-events", "one name for each key");

}  // namespace vyn::profiling
