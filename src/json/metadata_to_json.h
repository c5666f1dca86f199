#pragma once

#include <profile_log_generated.h>

#include <string>

#include "base/version/profile_viewer_version.h"
#include "json/json_keys.h"

namespace vyn::profiling {

/// Sends a log's format version; an absent one is an empty object.
template <typename Handler>
void versionToJson(const schema::Version* version, Handler& out) {
  out.startObject();
  if (version != nullptr) {
    out.key(JsonKey::kMajor);
    out.number(version->major());
    out.key(JsonKey::kMinor);
    out.number(version->minor());
    out.key(JsonKey::kTeeny);
    out.number(version->teeny());
  }
  out.endObject();
}

/// Sends what the document says of a log as a whole to a JSON handler: a ValueBuilder or a
/// JsonText.
template <typename Handler>
void metadataToJson(const schema::LogHeader& header, const std::string& inputLogFileLocation,
                    Handler& out) {
  out.startObject();
  out.key(JsonKey::kInputLogFileLocation);
  out.copiedText(inputLogFileLocation.c_str());  // up to its first zero byte
  out.key(JsonKey::kTimeScale);
  out.number(static_cast<double>(header.timeScale()));
  out.key(JsonKey::kEpochTime);
  out.number(header.epochTime());
  out.key(JsonKey::kTimestamp);
  out.number(header.timestamp());
  out.key(JsonKey::kVersion);
  versionToJson(header.version(), out);
  out.key(JsonKey::kVynProfileViewerVersion);
  out.constantText(kProfileViewerVersion);
  out.key(JsonKey::kVynNetRunVersion);
  out.logText(header.netRunVersion());
  out.key(JsonKey::kBackendVersion);
  out.logText(header.backendVersion());
  out.endObject();
}

}  // namespace vyn::profiling
