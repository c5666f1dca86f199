#include "json/message_to_json.h"

#include "input/enum_texts.h"
#include "json/event_to_json.h"

namespace vyn::profiling {
namespace {

void sendHeader(const schema::MessageHeader& header, ValueBuilder& builder) {
  builder.startObject();
  builder.key("timestamp");
  builder.number(header.timestamp());
  builder.key("sequenceNumber");
  builder.number(header.sequenceNumber());
  builder.endObject(2);
}

bool hasMetrics(const schema::AppMetrics& metrics) {
  return (metrics.startTime() | metrics.stopTime() | metrics.startMem() | metrics.stopMem()) != 0;
}

// A metric of 0 is left out, like an absent one.
void sendMetrics(const schema::AppMetrics& metrics, ValueBuilder& builder) {
  rapidjson::SizeType memberCount = 0;
  const auto sendUnlessZero = [&](const auto& key, std::uint64_t value) {
    if (value != 0) {
      builder.key(key);
      builder.number(value);
      ++memberCount;
    }
  };
  builder.startObject();
  sendUnlessZero("startTime", metrics.startTime());
  sendUnlessZero("stopTime", metrics.stopTime());
  sendUnlessZero("startMem", metrics.startMem());
  sendUnlessZero("stopMem", metrics.stopMem());
  builder.endObject(memberCount);
}

}  // namespace

void messageToJson(const schema::Message& message, ValueBuilder& builder) {
  rapidjson::SizeType memberCount = 2;
  builder.startObject();
  builder.key("header");
  sendHeader(*message.header(), builder);
  builder.key("method");
  builder.constantText(methodText(message.method()));
  if (hasMetrics(*message.appMetrics())) {
    builder.key("appMetrics");
    sendMetrics(*message.appMetrics(), builder);
    ++memberCount;
  }
  if (message.profilingEvents() != nullptr) {
    builder.key("profilingEvents");
    eventsToJson(*message.profilingEvents(), builder);
    ++memberCount;
  }
  builder.endObject(memberCount);
}

}  // namespace vyn::profiling
