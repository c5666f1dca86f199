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

struct NamedJsonKey {
  JsonKey key;
  std::string_view name;
};

/// By the key's number.
inline constexpr auto kJsonKeyNames = std::to_array<NamedJsonKey>({
    {JsonKey::kMetadata, "metadata"},
    {JsonKey::kMessages, "messages"},
    {JsonKey::kInputLogFileLocation, "inputLogFileLocation"},
    {JsonKey::kTimeScale, "timeScale"},
    {JsonKey::kEpochTime, "epochTime"},
    {JsonKey::kTimestamp, "timestamp"},
    {JsonKey::kVersion, "version"},
    {JsonKey::kMajor, "major"},
    {JsonKey::kMinor, "minor"},
    {JsonKey::kTeeny, "teeny"},
    {JsonKey::kVynProfileViewerVersion, "vynProfileViewerVersion"},
    {JsonKey::kVynNetRunVersion, "vynNetRunVersion"},
    {JsonKey::kBackendVersion, "backendVersion"},
    {JsonKey::kHeader, "header"},
    {JsonKey::kSequenceNumber, "sequenceNumber"},
    {JsonKey::kMethod, "method"},
    {JsonKey::kAppMetrics, "appMetrics"},
    {JsonKey::kStartTime, "startTime"},
    {JsonKey::kStopTime, "stopTime"},
    {JsonKey::kStartMem, "startMem"},
    {JsonKey::kStopMem, "stopMem"},
    {JsonKey::kProfilingEvents, "profilingEvents"},
    {JsonKey::kIdentifier, "identifier"},
    {JsonKey::kUnit, "unit"},
    {JsonKey::kType, "type"},
    {JsonKey::kValue, "value"},
    {JsonKey::kSubEvents, "sub-events"},
});

static_assert(
    [] {
      std::size_t count = 0;
      for (const NamedJsonKey& named : kJsonKeyNames) {
        if (named.key != JsonKey{count++}) {
          return false;
        }
      }
      return JsonKey{count - 1} == JsonKey::kSubEvents;
    }(),
    "each key has its name in its place");

constexpr std::string_view nameOf(JsonKey key) {
  return kJsonKeyNames[static_cast<std::size_t>(key)].name;
}

}  // namespace vyn::profiling
