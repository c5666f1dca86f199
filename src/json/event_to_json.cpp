#include <optional>

#include "input/enum_texts.h"
#include "json/json_document.h"
#include "json/json_text.h"
#include "json/vyn_profile_log_reader_json.h"

namespace vyn::profiling {
namespace {

// Raw data and kinds that readers do not know have no value in the document.
std::optional<rapidjson::Value> eventValueToJson(const schema::Event& event) {
  switch (event.valueType()) {
    case schema::EventValueType::INT64:
      return rapidjson::Value(event.int64Value());
    case schema::EventValueType::UINT64:
      return rapidjson::Value(event.uint64Value());
    case schema::EventValueType::FLOAT:
      return rapidjson::Value(static_cast<double>(event.floatValue()));
    case schema::EventValueType::DOUBLE:
      return rapidjson::Value(event.doubleValue());
    case schema::EventValueType::STRING:
      return copiedJsonText(event.stringValue());
    default:
      return std::nullopt;
  }
}

}  // namespace

// The verifier's depth limit bounds the recursion.
rapidjson::Value VynProfileLogReaderJSON::eventToJson(const schema::Event* event) {
  auto& allocator = g_jsonDocument.GetAllocator();
  rapidjson::Value object(rapidjson::kObjectType);
  if (event->identifier() != nullptr) {
    object.AddMember(rapidjson::StringRef("identifier"), copiedJsonText(event->identifier()),
                     allocator);
  }
  // Consumers of the document rely on "unit" standing before "type".
  object.AddMember(rapidjson::StringRef("unit"), copiedJsonText(eventUnitText(event->unit())),
                   allocator);
  object.AddMember(rapidjson::StringRef("type"), copiedJsonText(eventTypeText(event->type())),
                   allocator);
  if (auto value = eventValueToJson(*event)) {
    object.AddMember(rapidjson::StringRef("value"), *value, allocator);
  }
  if (const auto* subEvents = event->subEvents()) {
    rapidjson::Value array(rapidjson::kArrayType);
    for (const schema::Event* subEvent : *subEvents) {
      array.PushBack(eventToJson(subEvent), allocator);
    }
    object.AddMember(rapidjson::StringRef("sub-events"), array, allocator);
  }
  return object;
}

}  // namespace vyn::profiling
