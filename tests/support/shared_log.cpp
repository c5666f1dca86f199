#include "support/shared_log.h"

#include <profile_log_generated.h>

#include <cstdint>
#include <vector>

#include "support/json_log.h"

namespace vyn::test {
namespace {

using namespace profiling;

using Builder = flatbuffers::FlatBufferBuilder;
using Text = flatbuffers::Offset<flatbuffers::String>;
using Message = flatbuffers::Offset<schema::Message>;
using Event = flatbuffers::Offset<schema::Event>;

Message execution(Builder& builder, Text graphName, const std::vector<Event>& events,
                  schema::MethodType method = schema::MethodType::BACKEND_EXECUTE) {
  const auto header = schema::CreateMessageHeader(builder);
  const auto metrics = schema::CreateAppMetrics(builder);
  const auto list = events.empty() ? 0 : builder.CreateVector(events);
  schema::MessageBuilder message(builder);
  message.add_header(header);
  message.add_appMetrics(metrics);
  message.add_method(method);
  message.add_graphName(graphName);
  message.add_profilingEvents(list);
  return message.Finish();
}

std::string logOfMessages(Builder& builder, const std::vector<Message>& messages) {
  const auto list = builder.CreateVector(messages);
  schema::ProfileLogBuilder log(builder);
  log.add_messages(list);
  builder.Finish(log.Finish());
  return framed({reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()});
}

std::string logOfEvent(Builder& builder, Event event, std::size_t count) {
  const Text graphName = builder.CreateString("net");
  return logOfMessages(builder, {execution(builder, graphName, std::vector<Event>(count, event))});
}

Event eventOf(Builder& builder, Text identifier, const std::vector<Event>& subEvents = {}) {
  const auto list = subEvents.empty() ? 0 : builder.CreateVector(subEvents);
  schema::EventBuilder event(builder);
  event.add_identifier(identifier);
  event.add_subEvents(list);
  return event.Finish();
}

// One event with one sub-event, which has these.
Event belowTwo(Builder& builder, Text identifier, const std::vector<Event>& events) {
  return eventOf(builder, identifier, {eventOf(builder, identifier, events)});
}

}  // namespace

std::string logOfSharedEvent(std::size_t count, std::size_t length, char byte) {
  Builder builder;
  const Text identifier = builder.CreateString(std::string(length, byte));
  schema::EventBuilder event(builder);
  event.add_identifier(identifier);
  return logOfEvent(builder, event.Finish(), count);
}

std::string logOfUnlistedEvent(std::size_t count, std::size_t length) {
  Builder builder;
  const Text parent = builder.CreateString("p");
  const Event event = eventOf(builder, builder.CreateString(std::string(length, 'i')));
  return logOfEvent(builder, belowTwo(builder, parent, std::vector<Event>(count, event)), 1);
}

std::string logOfSharedNames(const std::vector<std::string>& names, std::size_t executions) {
  Builder builder;
  std::vector<Text> identifiers;
  identifiers.reserve(names.size());
  for (const std::string& name : names) {
    identifiers.push_back(builder.CreateString(name));
  }
  const Text graphName = builder.CreateString("net");
  std::vector<Message> messages;
  for (std::size_t i = 0; i < executions; ++i) {
    std::vector<Event> events;
    events.reserve(names.size());
    for (const Text identifier : identifiers) {
      events.push_back(eventOf(builder, identifier));
    }
    messages.push_back(execution(builder, graphName, events));
  }
  return logOfMessages(builder, messages);
}

std::string logOfSharedTree(std::size_t depth) {
  Builder builder;
  const Text identifier = builder.CreateString("i");
  Event event = eventOf(builder, identifier);
  for (std::size_t i = 0; i < depth; ++i) {
    event = eventOf(builder, identifier, {event, event});
  }
  return logOfEvent(builder, event, 1);
}

std::string logOfOneMoreSmallExecution(std::size_t count) {
  Builder builder;
  const Text parent = builder.CreateString("p");
  std::vector<Event> events;
  for (std::size_t i = 0; i < count; ++i) {
    events.push_back(eventOf(builder, builder.CreateString(std::to_string(i))));
  }
  const Text graphName = builder.CreateString("net");
  const Event large = belowTwo(builder, parent, events);
  const Event small = belowTwo(builder, parent, {events.back()});
  return logOfMessages(
      builder, {execution(builder, graphName, {large}), execution(builder, graphName, {small})});
}

std::string logOfSharedPayload(std::size_t count, std::size_t length) {
  Builder builder;
  const auto bytes = builder.CreateVector(std::vector<std::uint8_t>(length, 'b'));
  schema::EventBuilder event(builder);
  event.add_unit(schema::EventUnit::OBJECT);
  event.add_valueType(schema::EventValueType::RAW_DATA);
  event.add_rawData(bytes);
  return logOfEvent(builder, event.Finish(), count);
}

std::string logOfPayloadsFor(const std::vector<std::string>& names, std::size_t count) {
  Builder builder;
  std::vector<Event> events;
  for (const std::string& name : names) {
    const Text fileName = builder.CreateString(name);
    schema::EventBuilder event(builder);
    event.add_unit(schema::EventUnit::OBJECT);
    event.add_secondaryName(fileName);
    events.insert(events.end(), count, event.Finish());
  }
  const Text graphName = builder.CreateString("net");
  return logOfMessages(builder, {execution(builder, graphName, events)});
}

std::string logOfPayloadAboveEvents(const std::string& name, std::size_t count) {
  Builder builder;
  const Text fileName = builder.CreateString(name);
  const Event below = eventOf(builder, builder.CreateString("i"));
  const auto subEvents = builder.CreateVector(std::vector<Event>(count, below));
  schema::EventBuilder event(builder);
  event.add_unit(schema::EventUnit::OBJECT);
  event.add_secondaryName(fileName);
  event.add_subEvents(subEvents);
  return logOfEvent(builder, event.Finish(), count);
}

std::string logOfSharedGraphName(std::size_t count, std::size_t length) {
  Builder builder;
  const Text graphName = builder.CreateString(std::string(length, 'g'));
  std::vector<Message> messages;
  for (std::size_t i = 0; i < count; ++i) {
    messages.push_back(execution(builder, graphName, {}));
  }
  return logOfMessages(builder, messages);
}

std::string logOfSharedFinalizeName(std::size_t count, std::size_t length) {
  Builder builder;
  const Text graphName = builder.CreateString(std::string(length, 'g'));
  const Event event = eventOf(builder, builder.CreateString("i"));
  const Message message =
      execution(builder, graphName, {event}, schema::MethodType::BACKEND_FINALIZE);
  return logOfMessages(builder, std::vector<Message>(count, message));
}

// The stretch consists of the lengths that the names have left.
std::string logOfDifferentOverlappingGraphNames(std::size_t count) {
  std::string stretch;
  for (std::size_t i = 0; i < count; ++i) {
    stretch += lengthBytes(4 * (count - 1 - i) + 300);
  }
  Builder builder;
  const Text whole = builder.CreateString(stretch + std::string(300, 'g'));
  std::vector<Message> messages;
  for (std::size_t i = 0; i < count; ++i) {
    const auto distance = static_cast<flatbuffers::uoffset_t>(4 + 4 * i);
    messages.push_back(execution(builder, Text(whole.o - distance), {}));
  }
  return logOfMessages(builder, messages);
}

// The stretch repeats the length of the names, whose lowest byte is 0: every fourth byte starts a
// text that is sound, for the byte at its end is 0 too.
std::string logOfOverlappingGraphNames(std::size_t count) {
  const std::size_t length = 1024 * count;
  std::string stretch;
  while (stretch.size() < length + 4 * (count + 2)) {
    stretch += lengthBytes(length);
  }
  Builder builder;
  const Text whole = builder.CreateString(stretch);
  std::vector<Message> messages;
  for (std::size_t i = 0; i < count; ++i) {
    // Places count from the buffer's end; the stretch starts behind the length of the whole.
    const auto distance = static_cast<flatbuffers::uoffset_t>(4 + 4 * i);
    messages.push_back(execution(builder, Text(whole.o - distance), {}));
  }
  return logOfMessages(builder, messages);
}

}  // namespace vyn::test
