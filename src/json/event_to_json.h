#pragma once

#include <profile_log_generated.h>

#include "input/enum_texts.h"
#include "json/json_keys.h"

namespace vyn::profiling {

/// Sends the member "value" to a JSON handler; raw data and kinds that readers do not know have
/// none.
template <typename Handler>
void eventValueToJson(const schema::Event& event, Handler& out) {
  const auto send = [&out](auto number) {
    out.key(JsonKey::kValue);
    out.number(number);
  };
  switch (event.valueType()) {
    case schema::EventValueType::INT64:
      send(event.int64Value());
      return;
    case schema::EventValueType::UINT64:
      send(event.uint64Value());
      return;
    case schema::EventValueType::FLOAT:
      send(static_cast<double>(event.floatValue()));
      return;
    case schema::EventValueType::DOUBLE:
      send(event.doubleValue());
      return;
    case schema::EventValueType::STRING:
      out.key(JsonKey::kValue);
      out.logText(event.stringValue());
      return;
    default:
      return;
  }
}

/// Sends an event with, recursively, its sub-events to a JSON handler: a ValueBuilder or a
/// JsonText. The verifier's depth limit bounds the recursion.
template <typename Handler>
void eventToJson(const schema::Event& event, Handler& out);

/// Sends events as an array.
template <typename Handler>
void eventsToJson(const flatbuffers::Vector<flatbuffers::Offset<schema::Event>>& events,
                  Handler& out) {
  out.startArray();
  for (const schema::Event* event : events) {
    eventToJson(*event, out);
  }
  out.endArray();
}

template <typename Handler>
void eventToJson(const schema::Event& event, Handler& out) {
  out.startObject();
  if (event.identifier() != nullptr) {
    out.key(JsonKey::kIdentifier);
    out.logText(event.identifier());
  }
  // Consumers of the document rely on "unit" standing before "type".
  out.key(JsonKey::kUnit);
  out.constantText(eventUnitText(event.unit()));
  out.key(JsonKey::kType);
  out.constantText(eventTypeText(event.type()));
  eventValueToJson(event, out);
  if (event.subEvents() != nullptr) {
    out.key(JsonKey::kSubEvents);
    eventsToJson(*event.subEvents(), out);
  }
  out.endObject();
}

}  // namespace vyn::profiling
