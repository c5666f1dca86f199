#include "support/log_event.h"

#include <set>
#include <utility>

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;

Event numberOfUnit(EventUnit unit, const std::string& identifier, std::uint64_t value,
                   const Events& subEvents) {
  return {.identifier = identifier, .value = value, .unit = unit, .subEvents = subEvents};
}

const char* keptText(const std::string& text) {
  static std::set<std::string> texts;
  return texts.insert(text).first->c_str();
}

/// Puts a value into a node, as its type wants it.
struct SetValue {
  EventNode& node;

  void operator()(std::monostate /*none*/) const {}
  void operator()(std::int64_t value) const {
    node.dataType = EventDataType::INT_64;
    node.value.int64 = value;
  }
  void operator()(std::uint64_t value) const {
    node.dataType = EventDataType::UINT_64;
    node.value.uint64 = value;
  }
  void operator()(float value) const {
    node.dataType = EventDataType::FLOAT_32;
    node.value.float32 = value;
  }
  void operator()(double value) const {
    node.dataType = EventDataType::FLOAT_64;
    node.value.float64 = value;
  }
  void operator()(const std::string& value) const {
    node.dataType = EventDataType::STRING;
    node.value.text = keptText(value);
  }
  void operator()(const Event::Bytes& value) const { node.rawData = value; }
};

}  // namespace

Event::operator EventNode() const {
  EventNode node;
  node.identifier = identifier.value_or("null");
  node.unit = static_cast<std::uint32_t>(unit);
  node.type = static_cast<std::uint32_t>(type);
  node.secondaryName = secondaryName.value_or("");
  node.extraValue = extraValue;
  node.children.assign(subEvents.begin(), subEvents.end());
  std::visit(SetValue{node}, value);
  return node;
}

Event number(const std::string& identifier, std::uint64_t value, const Events& subEvents) {
  return numberOfUnit(EventUnit::UNSPECIFIED, identifier, value, subEvents);
}

Event microseconds(const std::string& identifier, std::uint64_t value, const Events& subEvents) {
  return numberOfUnit(EventUnit::MICROSEC, identifier, value, subEvents);
}

Event bytes(const std::string& identifier, std::uint64_t value, const Events& subEvents) {
  return numberOfUnit(EventUnit::BYTES, identifier, value, subEvents);
}

Event cycles(const std::string& identifier, std::uint64_t value, const Events& subEvents) {
  return numberOfUnit(EventUnit::CYCLES, identifier, value, subEvents);
}

Event count(const std::string& identifier, std::uint64_t value, const Events& subEvents) {
  return numberOfUnit(EventUnit::COUNT, identifier, value, subEvents);
}

Event object(const std::string& fileName, const std::string& payload, const Events& subEvents) {
  return {.identifier = "object",
          .value = Event::Bytes(payload.begin(), payload.end()),
          .unit = EventUnit::OBJECT,
          .secondaryName = fileName,
          .subEvents = subEvents};
}

Event text(const std::string& identifier, const std::string& value) {
  return {.identifier = identifier, .value = value};
}

Event initEvent(const std::string& identifier, std::uint64_t value) {
  return ofType(EventType::INIT, number(identifier, value));
}

Event finalizeEvent(const std::string& identifier, std::uint64_t value) {
  return ofType(EventType::FINALIZE, number(identifier, value));
}

Event queueWait(std::uint64_t value) {
  return ofType(EventType::EXECUTE_QUEUE_WAIT, number("queue wait", value));
}

Event ofUnit(EventUnit unit, Event event) {
  event.unit = unit;
  return event;
}

Event ofType(EventType type, Event event) {
  event.type = type;
  return event;
}

}  // namespace vyn::test
