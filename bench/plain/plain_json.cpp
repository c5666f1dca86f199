// The baseline of the JSON path: the same document, made in the plainest way with the same library.
// Members are added one by one, the whole value is copied before it is written, and the whole text
// stands in memory before it goes to the file. Usage: plain_json LOG OUTPUT

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "base/version/profile_viewer_version.h"
#include "input/enum_texts.h"
#include "input/log_walk.h"

namespace vyn::profiling {
namespace {

rapidjson::Document g_document(rapidjson::kArrayType);

rapidjson::Value text(const char* content) {
  return rapidjson::Value(content, g_document.GetAllocator());
}

template <typename Value>
void add(rapidjson::Value& object, rapidjson::Value::StringRefType key, Value&& value) {
  object.AddMember(key, std::forward<Value>(value), g_document.GetAllocator());
}

void addValue(rapidjson::Value& object, const schema::Event& event) {
  switch (event.valueType()) {
    case schema::EventValueType::INT64:
      return add(object, "value", event.int64Value());
    case schema::EventValueType::UINT64:
      return add(object, "value", event.uint64Value());
    case schema::EventValueType::FLOAT:
      return add(object, "value", static_cast<double>(event.floatValue()));
    case schema::EventValueType::DOUBLE:
      return add(object, "value", event.doubleValue());
    case schema::EventValueType::STRING:
      return add(object, "value", text(event.stringValue()->c_str()));
    default:
      return;
  }
}

using Events = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

rapidjson::Value eventsToJson(const Events& events) {
  rapidjson::Value array(rapidjson::kArrayType);
  for (const schema::Event* event : events) {
    rapidjson::Value object(rapidjson::kObjectType);
    if (event->identifier() != nullptr) {
      add(object, "identifier", text(event->identifier()->c_str()));
    }
    add(object, "unit", text(eventUnitText(event->unit())));
    add(object, "type", text(eventTypeText(event->type())));
    addValue(object, *event);
    if (event->subEvents() != nullptr) {
      add(object, "sub-events", eventsToJson(*event->subEvents()));
    }
    array.PushBack(object, g_document.GetAllocator());
  }
  return array;
}

rapidjson::Value metricsToJson(const schema::AppMetrics& metrics) {
  rapidjson::Value object(rapidjson::kObjectType);
  const auto addUnlessZero = [&](rapidjson::Value::StringRefType key, std::uint64_t value) {
    if (value != 0) {
      add(object, key, value);
    }
  };
  addUnlessZero("startTime", metrics.startTime());
  addUnlessZero("stopTime", metrics.stopTime());
  addUnlessZero("startMem", metrics.startMem());
  addUnlessZero("stopMem", metrics.stopMem());
  return object;
}

rapidjson::Value messageToJson(const schema::Message& message) {
  rapidjson::Value header(rapidjson::kObjectType);
  add(header, "timestamp", message.header()->timestamp());
  add(header, "sequenceNumber", message.header()->sequenceNumber());
  rapidjson::Value object(rapidjson::kObjectType);
  add(object, "header", header);
  add(object, "method", text(methodText(message.method())));
  rapidjson::Value metrics = metricsToJson(*message.appMetrics());
  if (!metrics.ObjectEmpty()) {
    add(object, "appMetrics", metrics);
  }
  if (message.profilingEvents() != nullptr) {
    add(object, "profilingEvents", eventsToJson(*message.profilingEvents()));
  }
  return object;
}

rapidjson::Value metadataToJson(const schema::LogHeader& header, const char* logPath) {
  rapidjson::Value version(rapidjson::kObjectType);
  if (header.version() != nullptr) {
    add(version, "major", header.version()->major());
    add(version, "minor", header.version()->minor());
    add(version, "teeny", header.version()->teeny());
  }
  rapidjson::Value object(rapidjson::kObjectType);
  add(object, "inputLogFileLocation", text(logPath));
  add(object, "timeScale", static_cast<double>(header.timeScale()));
  add(object, "epochTime", header.epochTime());
  add(object, "timestamp", header.timestamp());
  add(object, "version", version);
  add(object, "vynProfileViewerVersion", text(kProfileViewerVersion));
  add(object, "vynNetRunVersion", text(header.netRunVersion()->c_str()));
  add(object, "backendVersion", text(header.backendVersion()->c_str()));
  return object;
}

class PlainReader : public MessageSink {
 public:
  explicit PlainReader(const char* logPath) : m_logPath(logPath) {}

  void header(const schema::LogHeader& header) override {
    if (!m_root.HasMember("metadata")) {
      add(m_root, "metadata", metadataToJson(header, m_logPath));
    }
  }
  void message(const schema::Message& message) override {
    m_messages.PushBack(messageToJson(message), g_document.GetAllocator());
  }
  void finish() {
    add(m_root, "messages", m_messages);
    g_document.PushBack(m_root, g_document.GetAllocator());
  }

 private:
  const char* m_logPath;
  rapidjson::Value m_root{rapidjson::kObjectType};
  rapidjson::Value m_messages{rapidjson::kArrayType};
};

bool readLog(const char* logPath) {
  FileSource file(logPath);
  PlainReader reader(logPath);
  const bool isRead = walkLog(file, reader).isAccepted && file.isOpen();
  reader.finish();
  return isRead;
}

bool writeDocument(const char* outputPath) {
  std::ofstream file(outputPath);
  rapidjson::StringBuffer buffer;
  rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
  rapidjson::MemoryPoolAllocator<> scratch;
  rapidjson::Document copy(rapidjson::kObjectType, &scratch);
  copy.CopyFrom(g_document[0], scratch);
  copy.Accept(writer);
  file << buffer.GetString() << std::endl;
  return file.good();
}

}  // namespace
}  // namespace vyn::profiling

int main(int argumentCount, char** arguments) {
  if (argumentCount != 3) {
    std::cerr << "usage: plain_json LOG OUTPUT\n";
    return 2;
  }
  const bool done =
      vyn::profiling::readLog(arguments[1]) && vyn::profiling::writeDocument(arguments[2]);
  return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
