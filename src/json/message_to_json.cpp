#include "input/enum_texts.h"
#include "json/json_document.h"
#include "json/json_text.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

rapidjson::Value messageHeaderToJson(const schema::MessageHeader& header) {
  auto& allocator = g_jsonDocument.GetAllocator();
  rapidjson::Value object(rapidjson::kObjectType);
  object.AddMember(rapidjson::StringRef("timestamp"), header.timestamp(), allocator);
  object.AddMember(rapidjson::StringRef("sequenceNumber"), header.sequenceNumber(), allocator);
  return object;
}

// A metric of 0 is left out, like an absent one.
rapidjson::Value appMetricsToJson(const schema::AppMetrics& metrics) {
  rapidjson::Value object(rapidjson::kObjectType);
  const auto addUnlessZero = [&object](rapidjson::Value::StringRefType key, std::uint64_t value) {
    if (value != 0) {
      object.AddMember(key, value, g_jsonDocument.GetAllocator());
    }
  };
  addUnlessZero("startTime", metrics.startTime());
  addUnlessZero("stopTime", metrics.stopTime());
  addUnlessZero("startMem", metrics.startMem());
  addUnlessZero("stopMem", metrics.stopMem());
  return object;
}

}  // namespace

bool VynProfileLogReaderJSON::addNextMessageToJson(rapidjson::Value& messages) {
  const schema::Message* message = m_flatBufferReader.nextMessage();
  if (message == nullptr) {
    m_reachedEof = true;
    log::log(log::kDebug, "profiling::VynProfileLogReader reached EOF!");
    return false;
  }
  auto& allocator = g_jsonDocument.GetAllocator();
  rapidjson::Value object(rapidjson::kObjectType);
  object.AddMember(rapidjson::StringRef("header"), messageHeaderToJson(*message->header()),
                   allocator);
  object.AddMember(rapidjson::StringRef("method"), copiedJsonText(methodText(message->method())),
                   allocator);
  rapidjson::Value metrics = appMetricsToJson(*message->appMetrics());
  if (!metrics.ObjectEmpty()) {
    object.AddMember(rapidjson::StringRef("appMetrics"), metrics, allocator);
  }
  if (const auto* events = message->profilingEvents()) {
    rapidjson::Value array(rapidjson::kArrayType);
    for (const schema::Event* event : *events) {
      array.PushBack(eventToJson(event), allocator);
    }
    object.AddMember(rapidjson::StringRef("profilingEvents"), array, allocator);
  }
  messages.PushBack(object, allocator);
  return true;
}

}  // namespace vyn::profiling
