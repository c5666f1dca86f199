#include "support/log_builder.h"

#include <cstring>

namespace vyn::test {
namespace {

namespace schema = profiling::schema;
using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

schema::EventValueType valueTypeOf(const LogEvent& event) {
  if (!event.payloadFile.empty()) {
    return schema::EventValueType::RAW_DATA;
  }
  return event.doubleValue ? schema::EventValueType::DOUBLE : schema::EventValueType::UINT64;
}

Offset<schema::Event> addEvent(FlatBufferBuilder& builder, const LogEvent& event) {
  const auto identifier = builder.CreateString(event.identifier);
  const auto payloadFile = builder.CreateString(event.payloadFile);
  const auto payload = builder.CreateVector(
      reinterpret_cast<const std::uint8_t*>(event.payload.data()), event.payload.size());
  schema::EventBuilder table(builder);
  table.add_identifier(identifier);
  table.add_type(schema::EventType::EXECUTE);
  table.add_unit(event.unit);
  table.add_valueType(valueTypeOf(event));
  table.add_uint64Value(event.value);
  table.add_doubleValue(event.doubleValue.value_or(0));
  table.add_rawData(payload);
  table.add_secondaryName(payloadFile);
  return table.Finish();
}

Offset<schema::Message> addMessage(FlatBufferBuilder& builder, const LogMessage& message,
                                   std::uint64_t number) {
  std::vector<Offset<schema::Event>> events;
  for (const LogEvent& event : message.events) {
    events.push_back(addEvent(builder, event));
  }
  const auto eventVector = builder.CreateVector(events);
  const auto graphName = builder.CreateString("net");
  const auto header = schema::CreateMessageHeader(builder, number * 10, number);
  const auto metrics = schema::CreateAppMetrics(builder, 100, 107);
  return schema::CreateMessage(builder, header, message.method, metrics, message.level, eventVector,
                               graphName);
}

Offset<schema::LogHeader> addHeader(FlatBufferBuilder& builder, const LogHeader& header) {
  const auto version = schema::CreateVersion(builder, 1, 2, 3);
  const auto netRunVersion = builder.CreateString(header.netRunVersion);
  schema::LogHeaderBuilder table(builder);
  table.add_timeScale(header.timeScale);
  table.add_version(version);
  table.add_netRunVersion(netRunVersion);
  return table.Finish();
}

std::string framed(const FlatBufferBuilder& builder) {
  const auto length = static_cast<std::uint32_t>(builder.GetSize());
  std::string chunk(sizeof(length) + length, '\0');
  std::memcpy(chunk.data(), &length, sizeof(length));
  std::memcpy(chunk.data() + sizeof(length), builder.GetBufferPointer(), length);
  return chunk;
}

}  // namespace

std::string makeChunk(const std::vector<LogMessage>& messages,
                      const std::optional<LogHeader>& header) {
  FlatBufferBuilder builder;
  std::vector<Offset<schema::Message>> offsets;
  for (const LogMessage& message : messages) {
    offsets.push_back(addMessage(builder, message, offsets.size() + 1));
  }
  const auto messageVector = builder.CreateVector(offsets);
  const auto headerOffset = header ? addHeader(builder, *header) : Offset<schema::LogHeader>();
  builder.Finish(schema::CreateProfileLog(builder, headerOffset, messageVector));
  return framed(builder);
}

}  // namespace vyn::test
