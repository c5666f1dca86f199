#include "logmaker/chunk_writer.h"

#include <string>

#include "input/chunk_format.h"

namespace vyn::logmaker {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

// Parts of a table are built in statements of their own: the order of arguments is the compiler's
// choice, and the bytes must not depend on it.

Offset<flatbuffers::String> buildOptionalText(FlatBufferBuilder& builder, const std::string& text) {
  return text.empty() ? 0 : builder.CreateString(text);
}

/// The value if it is of this type, else nothing.
template <typename Value>
Value valueOrNone(const Event& event) {
  const Value* value = std::get_if<Value>(&event.value);
  return value != nullptr ? *value : Value{};
}

using EventVector = flatbuffers::Vector<Offset<schema::Event>>;
Offset<EventVector> buildEvents(FlatBufferBuilder& builder, const std::vector<Event>& events);

Offset<schema::Event> buildEvent(FlatBufferBuilder& builder, const Event& event) {
  const Offset<EventVector> subEvents = buildEvents(builder, event.subEvents);
  const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&event.value);
  const Offset<flatbuffers::Vector<std::uint8_t>> rawData =
      bytes != nullptr ? builder.CreateVector(*bytes) : 0;
  const auto* text = std::get_if<std::string>(&event.value);
  const Offset<flatbuffers::String> stringValue = text != nullptr ? builder.CreateString(*text) : 0;
  const auto identifier = builder.CreateString(event.identifier);
  const auto secondaryName = buildOptionalText(builder, event.secondaryName);
  return schema::CreateEvent(builder, identifier, event.type, valueOrNone<std::uint64_t>(event),
                             event.unit, subEvents,
                             static_cast<schema::EventValueType>(event.value.index()),
                             valueOrNone<std::int64_t>(event), valueOrNone<float>(event), rawData,
                             secondaryName, 0, valueOrNone<double>(event), stringValue);
}

Offset<EventVector> buildEvents(FlatBufferBuilder& builder, const std::vector<Event>& events) {
  if (events.empty()) {
    return 0;
  }
  std::vector<Offset<schema::Event>> built;
  built.reserve(events.size());
  for (const Event& event : events) {
    built.push_back(buildEvent(builder, event));
  }
  return builder.CreateVector(built);
}

Offset<schema::Message> buildMessage(FlatBufferBuilder& builder, const Message& message) {
  const auto events = buildEvents(builder, message.profilingEvents);
  const auto header =
      schema::CreateMessageHeader(builder, message.timestamp, message.sequenceNumber);
  const AppMetrics& metrics = message.appMetrics;
  const auto appMetrics = schema::CreateAppMetrics(builder, metrics.startTime, metrics.stopTime,
                                                   metrics.startMem, metrics.stopMem);
  const auto graphName = buildOptionalText(builder, message.graphName);
  return schema::CreateMessage(builder, header, message.method, appMetrics, message.visibilityLevel,
                               events, graphName);
}

Offset<schema::LogHeader> buildHeader(FlatBufferBuilder& builder, const LogHeader& header) {
  const auto version = schema::CreateVersion(builder, header.major, header.minor, header.teeny);
  const auto netRunVersion = builder.CreateString(header.netRunVersion);
  const auto backendVersion = builder.CreateString(header.backendVersion);
  return schema::CreateLogHeader(builder, header.timeScale, header.epochTime, header.timestamp,
                                 version, netRunVersion, backendVersion);
}

}  // namespace

ChunkWriter::ChunkWriter(OutputFile& output, const LogHeader& header, std::size_t chunkSize)
    : m_output(output), m_chunkSize(chunkSize), m_header(buildHeader(m_builder, header)) {}

void ChunkWriter::write(const Message& message) {
  m_messages.push_back(buildMessage(m_builder, message));
  if (m_builder.GetSize() >= m_chunkSize) {
    endChunk();
  }
}

void ChunkWriter::finish() {
  if (!m_messages.empty()) {
    endChunk();
  }
}

std::uint64_t ChunkWriter::size() const { return m_bytesWritten + m_builder.GetSize(); }

void ChunkWriter::endChunk() {
  const auto messages = m_builder.CreateVector(m_messages);
  m_builder.Finish(schema::CreateProfileLog(m_builder, m_header, messages));

  const auto length = profiling::lengthBytes(m_builder.GetSize());
  m_output.write(length.data(), length.size());
  m_output.write(m_builder.GetBufferPointer(), m_builder.GetSize());
  m_bytesWritten += length.size() + m_builder.GetSize();

  m_builder.Clear();
  m_header = 0;
  m_messages.clear();
}

}  // namespace vyn::logmaker
