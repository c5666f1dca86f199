#include "json/metadata_to_json.h"

#include "core/version/profile_viewer_version.h"

namespace vyn::profiling {
namespace {

void sendVersion(const schema::Version* version, ValueBuilder& builder) {
  builder.startObject();
  if (version == nullptr) {
    builder.endObject(0);
    return;
  }
  builder.key("major");
  builder.number(version->major());
  builder.key("minor");
  builder.number(version->minor());
  builder.key("teeny");
  builder.number(version->teeny());
  builder.endObject(3);
}

}  // namespace

void metadataToJson(const schema::LogHeader& header, const std::string& inputLogFileLocation,
                    ValueBuilder& builder) {
  builder.startObject();
  builder.key("inputLogFileLocation");
  builder.copiedText(inputLogFileLocation.c_str());  // up to its first zero byte
  builder.key("timeScale");
  builder.number(static_cast<double>(header.timeScale()));
  builder.key("epochTime");
  builder.number(header.epochTime());
  builder.key("timestamp");
  builder.number(header.timestamp());
  builder.key("version");
  sendVersion(header.version(), builder);
  builder.key("vynProfileViewerVersion");
  builder.constantText(kProfileViewerVersion);
  builder.key("vynNetRunVersion");
  builder.logText(header.netRunVersion());
  builder.key("backendVersion");
  builder.logText(header.backendVersion());
  builder.endObject(8);
}

}  // namespace vyn::profiling
