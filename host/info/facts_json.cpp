#include "host/info/facts_json.h"

#include <profile_log_generated.h>

#include <cmath>
#include <cstdint>

#include "base/utf8.h"
#include "host/info/creation_time.h"
#include "input/damage_text.h"

namespace vyn::host {
namespace {

using Writer = FactsDocument::Writer;
using profiling::NumberCounts;

constexpr int kSchemaVersion = 1;

void addText(Writer& out, const char* name, const std::string& text) {
  const std::string sound = profiling::withoutInvalidUtf8(text);
  out.Key(name);
  out.String(sound.data(), static_cast<rapidjson::SizeType>(sound.size()));
}

void addNumber(Writer& out, const char* name, std::uint64_t number) {
  out.Key(name);
  out.Uint64(number);
}

void addFlag(Writer& out, const char* name, bool flag) {
  out.Key(name);
  out.Bool(flag);
}

void addNone(Writer& out, const char* name) {
  out.Key(name);
  out.Null();
}

void startObject(Writer& out, const char* name) {
  out.Key(name);
  out.StartObject();
}

void addKeptText(Writer& out, const char* name, const std::optional<profiling::KeptText>& text) {
  if (!text) {
    addNone(out, name);
    return;
  }
  startObject(out, name);
  addText(out, "text", text->start);
  addNumber(out, "whole_bytes", text->size);
  out.EndObject();
}

void addChunks(Writer& out, const profiling::ChunkFacts& chunks) {
  startObject(out, "chunks");
  addNumber(out, "count", chunks.count);
  addNumber(out, "smallest_bytes", chunks.smallest);
  addNumber(out, "median_bytes", chunks.median);
  addNumber(out, "median_precision_bytes", chunks.medianPrecision);
  addNumber(out, "largest_bytes", chunks.largest);
  out.EndObject();
}

void addVersion(Writer& out, const std::optional<profiling::VersionFacts>& version) {
  if (!version) {
    addNone(out, "version");
    return;
  }
  startObject(out, "version");
  addNumber(out, "major", version->major);
  addNumber(out, "minor", version->minor);
  addNumber(out, "teeny", version->teeny);
  addNumber(out, "flag", version->flag);
  out.EndObject();
}

void addHeader(Writer& out, const std::optional<profiling::HeaderFacts>& header) {
  if (!header) {
    addNone(out, "header");
    return;
  }
  startObject(out, "header");
  addText(out, "created", utcTime(header->epochTime));
  addNumber(out, "epoch_time_us", header->epochTime);
  addNumber(out, "time_stamp", header->timestamp);
  if (std::isfinite(header->timeScale)) {
    out.Key("time_scale");
    out.Double(static_cast<double>(header->timeScale));
  } else {
    addNone(out, "time_scale");
  }
  addVersion(out, header->version);
  addKeptText(out, "net_run_version", header->netRunVersion);
  addKeptText(out, "backend_version", header->backendVersion);
  out.EndObject();
}

void addHeaders(Writer& out, const profiling::LogFacts& facts) {
  addHeader(out, facts.header);
  startObject(out, "headers");
  addNumber(out, "count", facts.headers);
  out.Key("differing_fields");
  out.StartArray();
  for (const std::string& field : facts.differingHeaders) {
    out.String(field.data(), static_cast<rapidjson::SizeType>(field.size()));
  }
  out.EndArray();
  out.EndObject();
}

template <typename Enumeration>
void addCounts(Writer& out, const char* name, const NumberCounts& counts,
               const char* (*textOf)(Enumeration)) {
  startObject(out, name);
  out.Key("numbers");
  out.StartArray();
  for (const NumberCounts::Entry& entry : counts.entries) {
    out.StartObject();
    out.Key("number");
    out.Int64(entry.number);
    addText(out, "text", textOf(static_cast<Enumeration>(entry.number)));
    addNumber(out, "count", entry.count);
    out.EndObject();
  }
  out.EndArray();
  addNumber(out, "others", counts.others);
  out.EndObject();
}

const char* noText(std::int8_t /*level*/) { return ""; }

void addGraphs(Writer& out, const profiling::MessageFacts& messages) {
  out.Key("graphs");
  out.StartArray();
  for (const profiling::GraphFacts& graph : messages.graphs) {
    out.StartObject();
    addKeptText(out, "name", graph.name);
    addNumber(out, "messages", graph.messages);
    addNumber(out, "executions", graph.executions);
    out.EndObject();
  }
  out.EndArray();
  startObject(out, "more_graphs");
  addNumber(out, "messages", messages.otherGraphs.messages);
  addNumber(out, "executions", messages.otherGraphs.executions);
  out.EndObject();
}

void addMessages(Writer& out, const profiling::MessageFacts& messages) {
  startObject(out, "messages");
  addNumber(out, "count", messages.count);
  addNumber(out, "without_graph", messages.withoutGraph);
  addCounts(out, "by_method", messages.methods, profiling::schema::EnumNameMethodType);
  addCounts(out, "by_visibility_level", messages.visibilityLevels, noText);
  addGraphs(out, messages);
  out.EndObject();
}

void addEvents(Writer& out, const profiling::EventFacts& events) {
  startObject(out, "events");
  addNumber(out, "count", events.count);
  addNumber(out, "greatest_depth", events.greatestDepth);
  addNumber(out, "identifiers", events.identifiers);
  addFlag(out, "has_more_identifiers", events.mayHaveMoreIdentifiers);
  addCounts(out, "by_type", events.types, profiling::schema::EnumNameEventType);
  addCounts(out, "by_unit", events.units, profiling::schema::EnumNameEventUnit);
  addCounts(out, "by_value_type", events.valueTypes, profiling::schema::EnumNameEventValueType);
  out.EndObject();
}

void addPayloads(Writer& out, const profiling::PayloadFacts& payloads) {
  startObject(out, "payloads");
  addNumber(out, "count", payloads.count);
  addNumber(out, "bytes", payloads.bytes);
  out.EndObject();
}

void addTimeStamps(Writer& out, const std::optional<profiling::TimeStampFacts>& stamps) {
  if (!stamps) {
    addNone(out, "time_stamps");
    return;
  }
  startObject(out, "time_stamps");
  addNumber(out, "first", stamps->first);
  addNumber(out, "last", stamps->last);
  addNumber(out, "smallest", stamps->smallest);
  addNumber(out, "largest", stamps->largest);
  addNumber(out, "steps_back", stamps->stepsBack);
  out.EndObject();
}

void addSequence(Writer& out, const std::optional<profiling::SequenceFacts>& sequence) {
  if (!sequence) {
    addNone(out, "sequence_numbers");
    return;
  }
  startObject(out, "sequence_numbers");
  addNumber(out, "smallest", sequence->smallest);
  addNumber(out, "largest", sequence->largest);
  addNumber(out, "gaps", sequence->gaps);
  addNumber(out, "missing", sequence->missing);
  addNumber(out, "repeats", sequence->repeats);
  addNumber(out, "steps_back", sequence->stepsBack);
  out.EndObject();
}

void addBytes(Writer& out, const profiling::ByteFacts& bytes) {
  startObject(out, "bytes");
  addNumber(out, "event_tables", bytes.events);
  addNumber(out, "other_tables", bytes.otherTables);
  addNumber(out, "texts", bytes.texts);
  addNumber(out, "lists", bytes.lists);
  addNumber(out, "raw_data", bytes.rawData);
  addNumber(out, "padding_and_unused", bytes.unused);
  addNumber(out, "chunk_lengths", bytes.chunkLengths);
  addNumber(out, "from_the_damage_on", bytes.refused);
  out.EndObject();
}

void addDamage(Writer& out, const profiling::LogFacts& facts) {
  if (!facts.isDamaged()) {
    addNone(out, "damage");
    return;
  }
  const profiling::WalkResult& walk = facts.walk;
  startObject(out, "damage");
  addText(out, "reason", profiling::whyDamaged(walk.end, walk.last));
  addNumber(out, "chunk_number", walk.last.index + 1);
  addNumber(out, "offset_bytes", walk.last.offset);
  addFlag(out, "may_still_be_written", profiling::mayStillBeWritten(walk.end, walk.last));
  addFlag(out, "is_counted", walk.end == profiling::WalkEnd::kCutShort && walk.isAccepted);
  addNumber(out, "whole_chunks", walk.soundChunks);
  addNumber(out, "whole_bytes", walk.soundBytes);
  out.EndObject();
}

}  // namespace

FactsDocument::FactsDocument(std::ostream& out) : m_out(out) {
  m_writer.SetIndent(' ', 2);
  m_writer.StartObject();
  m_writer.Key("schema_version");
  m_writer.Int(kSchemaVersion);
  m_writer.Key("logs");
  m_writer.StartArray();
}

void FactsDocument::add(const std::string& logName, const profiling::LogFacts& facts) {
  m_writer.StartObject();
  addText(m_writer, "log", logName);
  addNumber(m_writer, "size_bytes", facts.size);
  addChunks(m_writer, facts.chunks);
  addHeaders(m_writer, facts);
  addMessages(m_writer, facts.messages);
  addEvents(m_writer, facts.events);
  addPayloads(m_writer, facts.payloads);
  addTimeStamps(m_writer, facts.timeStamps);
  addSequence(m_writer, facts.sequence);
  addBytes(m_writer, facts.bytes);
  addDamage(m_writer, facts);
  m_writer.EndObject();
  passOn();
}

void FactsDocument::finish() {
  m_writer.EndArray();
  m_writer.EndObject();
  passOn();
  m_out << '\n';
}

void FactsDocument::passOn() {
  m_out.write(m_text.GetString(), static_cast<std::streamsize>(m_text.GetSize()));
  m_text.Clear();
}

}  // namespace vyn::host
