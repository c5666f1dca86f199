#include "message_check.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "check.h"

namespace vyn::fuzz {
namespace {

using profiling::schema::Event;
using profiling::schema::EventValueType;
using profiling::schema::Message;
using Events = flatbuffers::Vector<flatbuffers::Offset<Event>>;

std::string textOf(const flatbuffers::String* text) { return text != nullptr ? text->c_str() : ""; }

const rapidjson::Value& member(const rapidjson::Value& object, const char* name) {
  const auto found = object.FindMember(name);
  check(found != object.MemberEnd(), std::string("the document has ") + name);
  return found->value;
}

void checkText(const rapidjson::Value& object, const char* name, const std::string& expected) {
  const rapidjson::Value& value = member(object, name);
  check(value.IsString() && value.GetString() == expected, name);
}

void checkUnsigned(const rapidjson::Value& object, const char* name, std::uint64_t expected) {
  const rapidjson::Value& value = member(object, name);
  check(value.IsUint64() && value.GetUint64() == expected, name);
}

void checkValue(const rapidjson::Value& parsed, const Event& event) {
  switch (event.valueType()) {
    case EventValueType::INT64:
      return check(member(parsed, "value").IsInt64() &&
                       member(parsed, "value").GetInt64() == event.int64Value(),
                   "signed value");
    case EventValueType::UINT64:
      return checkUnsigned(parsed, "value", event.uint64Value());
    case EventValueType::FLOAT:
      return check(member(parsed, "value").GetDouble() == static_cast<double>(event.floatValue()),
                   "float value");
    case EventValueType::DOUBLE:
      return check(member(parsed, "value").GetDouble() == event.doubleValue(), "double value");
    case EventValueType::STRING:
      return checkText(parsed, "value", textOf(event.stringValue()));
    default:
      return check(!parsed.HasMember("value"), "no value");
  }
}

void checkEvents(const rapidjson::Value& parsed, const char* name, const Events* events);

void checkEvent(const rapidjson::Value& parsed, const Event& event) {
  if (event.identifier() != nullptr) {
    checkText(parsed, "identifier", textOf(event.identifier()));
  }
  check(parsed.HasMember("identifier") == (event.identifier() != nullptr), "identifier is there");
  check(member(parsed, "unit").IsString() && member(parsed, "type").IsString(), "unit and type");
  checkValue(parsed, event);
  checkEvents(parsed, "sub-events", event.subEvents());
}

void checkEvents(const rapidjson::Value& parsed, const char* name, const Events* events) {
  check(parsed.HasMember(name) == (events != nullptr), name);
  if (events == nullptr) {
    return;
  }
  const rapidjson::Value& array = member(parsed, name);
  check(array.IsArray() && array.Size() == events->size(), "as many events");
  for (rapidjson::SizeType i = 0; i < array.Size(); ++i) {
    checkEvent(array[i], *events->Get(i));
  }
}

bool hasUnwritableNumber(const Events* events) {
  return events != nullptr && std::any_of(events->begin(), events->end(), [](const Event* event) {
           const EventValueType type = event->valueType();
           return (type == EventValueType::FLOAT && !std::isfinite(event->floatValue())) ||
                  (type == EventValueType::DOUBLE && !std::isfinite(event->doubleValue())) ||
                  hasUnwritableNumber(event->subEvents());
         });
}

}  // namespace

void checkMessage(const rapidjson::Value& parsed, const Message& message) {
  checkUnsigned(member(parsed, "header"), "timestamp", message.header()->timestamp());
  checkUnsigned(member(parsed, "header"), "sequenceNumber", message.header()->sequenceNumber());
  const auto& metrics = *message.appMetrics();
  const bool hasMetrics = metrics.startTime() != 0 || metrics.stopTime() != 0 ||
                          metrics.startMem() != 0 || metrics.stopMem() != 0;
  check(parsed.HasMember("appMetrics") == hasMetrics, "metrics are there");
  const auto checkMetric = [&](const char* name, std::uint64_t expected) {
    if (expected != 0) {
      checkUnsigned(member(parsed, "appMetrics"), name, expected);
    }
  };
  checkMetric("startTime", metrics.startTime());
  checkMetric("stopTime", metrics.stopTime());
  checkMetric("startMem", metrics.startMem());
  checkMetric("stopMem", metrics.stopMem());
  checkEvents(parsed, "profilingEvents", message.profilingEvents());
}

bool hasUnwritableNumber(const Message& message) {
  return hasUnwritableNumber(message.profilingEvents());
}

}  // namespace vyn::fuzz
