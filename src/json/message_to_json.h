#pragma once

#include <profile_log_generated.h>

#include <cstdint>

#include "input/enum_texts.h"
#include "json/event_to_json.h"
#include "json/json_keys.h"

namespace vyn::profiling {

template <typename Handler>
void messageHeaderToJson(const schema::MessageHeader& header, Handler& out) {
  out.startObject();
  out.key(JsonKey::kTimestamp);
  out.number(header.timestamp());
  out.key(JsonKey::kSequenceNumber);
  out.number(header.sequenceNumber());
  out.endObject();
}

/// Sends the member "appMetrics", unless all metrics are 0. A metric of 0 is left out, like an
/// absent one.
template <typename Handler>
void metricsToJson(const schema::AppMetrics& metrics, Handler& out) {
  if ((metrics.startTime() | metrics.stopTime() | metrics.startMem() | metrics.stopMem()) == 0) {
    return;
  }
  const auto sendUnlessZero = [&out](JsonKey key, std::uint64_t value) {
    if (value != 0) {
      out.key(key);
      out.number(value);
    }
  };
  out.key(JsonKey::kAppMetrics);
  out.startObject();
  sendUnlessZero(JsonKey::kStartTime, metrics.startTime());
  sendUnlessZero(JsonKey::kStopTime, metrics.stopTime());
  sendUnlessZero(JsonKey::kStartMem, metrics.startMem());
  sendUnlessZero(JsonKey::kStopMem, metrics.stopMem());
  out.endObject();
}

/// Sends a message with all its events to a JSON handler: a ValueBuilder or a JsonText.
template <typename Handler>
void messageToJson(const schema::Message& message, Handler& out) {
  out.startObject();
  out.key(JsonKey::kHeader);
  messageHeaderToJson(*message.header(), out);
  out.key(JsonKey::kMethod);
  out.constantText(methodText(message.method()));
  metricsToJson(*message.appMetrics(), out);
  if (message.profilingEvents() != nullptr) {
    out.key(JsonKey::kProfilingEvents);
    eventsToJson(*message.profilingEvents(), out);
  }
  out.endObject();
}

}  // namespace vyn::profiling
