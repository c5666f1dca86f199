#include "core/version/profile_viewer_version.h"
#include "json/json_document.h"
#include "json/json_text.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

rapidjson::Value versionToJson(const schema::Version* version) {
  auto& allocator = g_jsonDocument.GetAllocator();
  rapidjson::Value object(rapidjson::kObjectType);
  if (version != nullptr) {
    object.AddMember(rapidjson::StringRef("major"), version->major(), allocator);
    object.AddMember(rapidjson::StringRef("minor"), version->minor(), allocator);
    object.AddMember(rapidjson::StringRef("teeny"), version->teeny(), allocator);
  }
  return object;
}

}  // namespace

void VynProfileLogReaderJSON::addMetadataToJson() {
  const schema::LogHeader* header = m_flatBufferReader.header();
  if (header == nullptr) {
    log::log(log::kDebug, "hdr is nullptr");
    return;
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  rapidjson::Value metadata(rapidjson::kObjectType);
  metadata.AddMember(rapidjson::StringRef("inputLogFileLocation"),
                     copiedJsonText(m_inputLogFileLocation.c_str()), allocator);
  metadata.AddMember(rapidjson::StringRef("timeScale"), static_cast<double>(header->timeScale()),
                     allocator);
  metadata.AddMember(rapidjson::StringRef("epochTime"), header->epochTime(), allocator);
  metadata.AddMember(rapidjson::StringRef("timestamp"), header->timestamp(), allocator);
  metadata.AddMember(rapidjson::StringRef("version"), versionToJson(header->version()), allocator);
  metadata.AddMember(rapidjson::StringRef("vynProfileViewerVersion"),
                     copiedJsonText(kProfileViewerVersion), allocator);
  metadata.AddMember(rapidjson::StringRef("vynNetRunVersion"),
                     copiedJsonText(header->netRunVersion()), allocator);
  metadata.AddMember(rapidjson::StringRef("backendVersion"),
                     copiedJsonText(header->backendVersion()), allocator);
  m_jsonRoot.AddMember(rapidjson::StringRef("metadata"), metadata, allocator);
  m_metadataAdded = true;
}

}  // namespace vyn::profiling
