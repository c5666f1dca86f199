#include "input/event_decoder.h"

#include <bit>

namespace vyn::profiling {
namespace {

std::string textOr(const flatbuffers::String* text, const char* fallback) {
  return text != nullptr ? text->str() : fallback;
}

const char* keepText(const flatbuffers::String* text, std::list<std::string>& strings) {
  return strings.emplace_back(textOr(text, "")).c_str();
}

void decodeValue(const schema::Event& event, std::list<std::string>& strings, EventNode& node) {
  switch (event.valueType()) {
    case schema::EventValueType::INT64:
      node.dataType = EventDataType::INT_64;
      node.value.int64 = event.int64Value();
      break;
    case schema::EventValueType::UINT64:
      node.dataType = EventDataType::UINT_64;
      node.value.uint64 = event.uint64Value();
      break;
    case schema::EventValueType::FLOAT:
      node.dataType = EventDataType::FLOAT_32;
      // Through the whole word, so that its upper half is 0.
      node.value.uint64 = std::bit_cast<std::uint32_t>(event.floatValue());
      break;
    case schema::EventValueType::DOUBLE:
      node.dataType = EventDataType::FLOAT_64;
      node.value.float64 = event.doubleValue();
      break;
    case schema::EventValueType::STRING:
      node.dataType = EventDataType::STRING;
      node.value.text = keepText(event.stringValue(), strings);
      break;
    case schema::EventValueType::RAW_DATA:
      if (const auto* bytes = event.rawData()) {
        node.rawData.assign(bytes->begin(), bytes->end());
      }
      break;
    default:
      break;
  }
}

EventNode decodeEvent(const schema::Event& event, std::list<std::string>& strings) {
  EventNode node;
  decodeValue(event, strings, node);
  node.identifier = textOr(event.identifier(), "null");
  node.secondaryName = textOr(event.secondaryName(), "");
  node.type = static_cast<std::uint32_t>(event.type());
  node.unit = static_cast<std::uint32_t>(event.unit());
  node.extraValue = event.extraValue();
  // The verifier's depth limit bounds the recursion.
  node.children = decodeEvents(event.subEvents(), strings);
  return node;
}

}  // namespace

std::vector<EventNode> decodeEvents(const EventVector* events, std::list<std::string>& strings) {
  std::vector<EventNode> nodes;
  if (events == nullptr) {
    return nodes;
  }
  nodes.reserve(events->size());
  for (const schema::Event* event : *events) {
    nodes.push_back(decodeEvent(*event, strings));
  }
  return nodes;
}

}  // namespace vyn::profiling
