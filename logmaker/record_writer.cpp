#include "logmaker/record_writer.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

#include "input/enum_texts.h"
#include "json/throwing_allocator.h"

namespace vyn::logmaker {
namespace {

using profiling::ThrowingAllocator;
using TextBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, ThrowingAllocator>;
using JsonWriter =
    rapidjson::Writer<TextBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

void writeText(JsonWriter& json, const std::string& text) {
  json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void writeNumberUnlessZero(JsonWriter& json, const char* key, std::uint64_t number) {
  if (number != 0) {
    json.Key(key);
    json.Uint64(number);
  }
}

/// Writes the member "value"; a payload and no value at all have none.
struct ValueWriter {
  void operator()(std::monostate) const {}
  void operator()(const std::vector<std::uint8_t>&) const {}
  void operator()(std::int64_t value) const { key().Int64(value); }
  void operator()(std::uint64_t value) const { key().Uint64(value); }
  void operator()(float value) const { key().Double(static_cast<double>(value)); }
  void operator()(double value) const { key().Double(value); }
  void operator()(const std::string& value) const { writeText(key(), value); }

  JsonWriter& key() const {
    json.Key("value");
    return json;
  }

  JsonWriter& json;
};

void writeEvents(JsonWriter& json, const char* key, const std::vector<Event>& events);

void writeEvent(JsonWriter& json, const Event& event) {
  json.StartObject();
  json.Key("identifier");
  writeText(json, event.identifier);
  json.Key("unit");
  json.String(profiling::eventUnitText(event.unit));
  json.Key("type");
  json.String(profiling::eventTypeText(event.type));
  std::visit(ValueWriter{json}, event.value);
  writeEvents(json, "sub-events", event.subEvents);
  json.EndObject();
}

void writeEvents(JsonWriter& json, const char* key, const std::vector<Event>& events) {
  if (events.empty()) {
    return;
  }
  json.Key(key);
  json.StartArray();
  for (const Event& event : events) {
    writeEvent(json, event);
  }
  json.EndArray();
}

void writeAppMetrics(JsonWriter& json, const AppMetrics& metrics) {
  if ((metrics.startTime | metrics.stopTime | metrics.startMem | metrics.stopMem) == 0) {
    return;
  }
  json.Key("appMetrics");
  json.StartObject();
  writeNumberUnlessZero(json, "startTime", metrics.startTime);
  writeNumberUnlessZero(json, "stopTime", metrics.stopTime);
  writeNumberUnlessZero(json, "startMem", metrics.startMem);
  writeNumberUnlessZero(json, "stopMem", metrics.stopMem);
  json.EndObject();
}

void writeMessage(JsonWriter& json, const Message& message) {
  json.StartObject();
  json.Key("header");
  json.StartObject();
  json.Key("timestamp");
  json.Uint64(message.timestamp);
  json.Key("sequenceNumber");
  json.Uint64(message.sequenceNumber);
  json.EndObject();
  json.Key("method");
  json.String(profiling::methodText(message.method));
  writeAppMetrics(json, message.appMetrics);
  writeEvents(json, "profilingEvents", message.profilingEvents);
  json.EndObject();
}

void writeVersion(JsonWriter& json, const LogHeader& header) {
  json.StartObject();
  json.Key("major");
  json.Uint(header.major);
  json.Key("minor");
  json.Uint(header.minor);
  json.Key("teeny");
  json.Uint(header.teeny);
  json.EndObject();
}

void writeHeader(JsonWriter& json, const LogHeader& header) {
  json.StartObject();
  json.Key("timeScale");
  json.Double(static_cast<double>(header.timeScale));
  json.Key("epochTime");
  json.Uint64(header.epochTime);
  json.Key("timestamp");
  json.Uint64(header.timestamp);
  json.Key("version");
  writeVersion(json, header);
  json.Key("vynNetRunVersion");
  writeText(json, header.netRunVersion);
  json.Key("backendVersion");
  writeText(json, header.backendVersion);
  json.EndObject();
}

void endLine(TextBuffer& text, OutputFile& output) {
  text.Put('\n');
  output.write(text.GetString(), text.GetSize());
}

}  // namespace

RecordWriter::RecordWriter(OutputFile& output, const LogHeader& header) : m_output(output) {
  TextBuffer text;
  JsonWriter json(text);
  writeHeader(json, header);
  endLine(text, m_output);
}

void RecordWriter::write(const Message& message) {
  TextBuffer text;
  JsonWriter json(text);
  writeMessage(json, message);
  endLine(text, m_output);
}

}  // namespace vyn::logmaker
