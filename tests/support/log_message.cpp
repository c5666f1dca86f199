#include "support/log_message.h"

#include <array>
#include <charconv>
#include <string_view>

namespace vyn::test {
namespace {

using profiling::schema::EventValueType;

std::string quoted(const std::string& text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string json = "\"";
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20) {
      json += "\\u00";
      json += kDigits[byte >> 4];
      json += kDigits[byte & 0xF];
    } else {
      json += character == '"' || character == '\\' ? "\\" : "";
      json += character;
    }
  }
  return json + "\"";
}

template <typename Items, typename Write>
std::string listOf(const Items& items, const Write& write) {
  std::string list = "[";
  for (const auto& item : items) {
    list += (list.size() == 1 ? "" : ",") + write(item);
  }
  return list + "]";
}

template <typename Enumeration>
std::string codeOf(Enumeration enumerator) {
  return std::to_string(static_cast<std::int64_t>(enumerator));
}

template <typename Number>
std::string shortest(Number number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  return {digits.begin(), end};
}

/// The fields of a value.
struct ValueFields {
  static std::string field(EventValueType type, const char* key, const std::string& value) {
    return ",valueType:" + codeOf(type) + "," + key + ":" + value;
  }

  std::string operator()(std::monostate /*none*/) const { return ""; }
  std::string operator()(std::int64_t value) const {
    return field(EventValueType::INT64, "int64Value", std::to_string(value));
  }
  std::string operator()(std::uint64_t value) const {
    return field(EventValueType::UINT64, "uint64Value", std::to_string(value));
  }
  std::string operator()(float value) const {
    return field(EventValueType::FLOAT, "floatValue", shortest(value));
  }
  std::string operator()(double value) const {
    return field(EventValueType::DOUBLE, "doubleValue", shortest(value));
  }
  std::string operator()(const std::string& value) const {
    return field(EventValueType::STRING, "stringValue", quoted(value));
  }
  std::string operator()(const Event::Bytes& value) const {
    return field(EventValueType::RAW_DATA, "rawData",
                 listOf(value, [](std::uint8_t byte) { return std::to_string(byte); }));
  }
};

std::string textField(const char* key, const std::optional<std::string>& text) {
  return text ? std::string(",") + key + ":" + quoted(*text) : "";
}

std::string jsonOf(const Event& event);

std::string eventsField(const char* key, const Events& events) {
  return events.empty() ? "" : std::string(",") + key + ":" + listOf(events, jsonOf);
}

std::string jsonOf(const Event& event) {
  return "{unit:" + codeOf(event.unit) + ",type:" + codeOf(event.type) +
         ",extraValue:" + std::to_string(event.extraValue) +
         textField("identifier", event.identifier) +
         textField("secondaryName", event.secondaryName) + std::visit(ValueFields{}, event.value) +
         eventsField("subEvents", event.subEvents) + "}";
}

std::string jsonOf(const Message& message) {
  return "{header:{timestamp:" + std::to_string(message.timestamp) +
         ",sequenceNumber:" + std::to_string(message.sequenceNumber) +
         "},appMetrics:{startTime:" + std::to_string(message.startTime) +
         ",stopTime:" + std::to_string(message.stopTime) + "},method:" + codeOf(message.method) +
         ",visibilityLevel:" + std::to_string(message.visibilityLevel) +
         textField("graphName", message.graph) + eventsField("profilingEvents", message.events) +
         "}";
}

}  // namespace

Message stepOf(MethodType method, const Graph& graph, Step step, const Events& events) {
  constexpr std::uint64_t kStart = 1000;  // any time but 0
  return {.method = method,
          .timestamp = step.timestamp,
          .startTime = kStart,
          .stopTime = kStart + step.duration,
          .visibilityLevel = step.visibilityLevel,
          .graph = graph,
          .events = events};
}

Message createContext(Step step) { return stepOf(MethodType::APP_CONTEXT_CREATE, kNoGraph, step); }

Message composeGraphs(Step step) { return stepOf(MethodType::APP_COMPOSE_GRAPHS, kNoGraph, step); }

Message createFromBinary(Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_CREATE_FROM_BINARY, kNoGraph, step, events);
}

Message finalize(const Graph& graph, Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_FINALIZE, graph, step, events);
}

Message execute(const Graph& graph, Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_EXECUTE, graph, step, events);
}

Message executeAsync(const Graph& graph, Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_EXECUTE_ASYNC, graph, step, events);
}

Message graphComponent(const Graph& graph, Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_GRAPH_COMPONENT, graph, step, events);
}

Message applyBinarySection(const Graph& graph, Step step, const Events& events) {
  return stepOf(MethodType::APPLY_BINARY_SECTION, graph, step, events);
}

Message executeIps(Step step, const Events& events) {
  return stepOf(MethodType::APP_EXECUTE_IPS, kNoGraph, step, events);
}

Message loadLibrary(Step step, const Events& events) {
  return stepOf(MethodType::LIBRARY_LOAD, kNoGraph, step, events);
}

Message deInit(Step step, const Events& events) {
  return stepOf(MethodType::BACKEND_DEINIT, kNoGraph, step, events);
}

std::string chunkOf(const std::vector<Message>& messages, const std::string& header) {
  return "{" + (header.empty() ? "" : "header:" + header + ",") +
         "messages:" + listOf(messages, [](const Message& message) { return jsonOf(message); }) +
         "}";
}

std::string logWith(const std::vector<Message>& messages) { return logOf({chunkOf(messages)}); }

}  // namespace vyn::test
