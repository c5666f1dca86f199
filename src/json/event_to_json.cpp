#include "json/event_to_json.h"

#include "input/enum_texts.h"

namespace vyn::profiling {
namespace {

// Sends the member "value"; raw data and kinds that readers do not know have none. Returns the
// number of members sent.
rapidjson::SizeType sendValue(const schema::Event& event, ValueBuilder& builder) {
  switch (event.valueType()) {
    case schema::EventValueType::INT64:
      builder.key("value");
      builder.number(event.int64Value());
      return 1;
    case schema::EventValueType::UINT64:
      builder.key("value");
      builder.number(event.uint64Value());
      return 1;
    case schema::EventValueType::FLOAT:
      builder.key("value");
      builder.number(static_cast<double>(event.floatValue()));
      return 1;
    case schema::EventValueType::DOUBLE:
      builder.key("value");
      builder.number(event.doubleValue());
      return 1;
    case schema::EventValueType::STRING:
      builder.key("value");
      builder.logText(event.stringValue());
      return 1;
    default:
      return 0;
  }
}

}  // namespace

// The verifier's depth limit bounds the recursion.
void eventToJson(const schema::Event& event, ValueBuilder& builder) {
  rapidjson::SizeType memberCount = 2;
  builder.startObject();
  if (event.identifier() != nullptr) {
    builder.key("identifier");
    builder.logText(event.identifier());
    ++memberCount;
  }
  // Consumers of the document rely on "unit" standing before "type".
  builder.key("unit");
  builder.constantText(eventUnitText(event.unit()));
  builder.key("type");
  builder.constantText(eventTypeText(event.type()));
  memberCount += sendValue(event, builder);
  if (event.subEvents() != nullptr) {
    builder.key("sub-events");
    eventsToJson(*event.subEvents(), builder);
    ++memberCount;
  }
  builder.endObject(memberCount);
}

void eventsToJson(const flatbuffers::Vector<flatbuffers::Offset<schema::Event>>& events,
                  ValueBuilder& builder) {
  builder.startArray();
  for (const schema::Event* event : events) {
    eventToJson(*event, builder);
  }
  builder.endArray(events.size());
}

}  // namespace vyn::profiling
