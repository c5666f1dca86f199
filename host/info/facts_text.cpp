#include "host/info/facts_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>
#include <vector>

#include "files/printable_text.h"
#include "host/info/creation_time.h"
#include "host/info/text_table.h"
#include "host/input/damage_text.h"
#include "input/enum_texts.h"

namespace vyn::host {
namespace {

using profiling::LogFacts;
using profiling::NumberCounts;

constexpr char kWritersUnit[] = " in the writer's unit";

std::string shown(const std::string& text) {
  return files::printable(text, files::LineFeeds::kEscaped);
}

std::string shown(const profiling::KeptText& text) {
  return text.isWhole() ? shown(text.start)
                        : shown(text.start) + "... (" + counted(text.size, "byte") + ")";
}

std::string shown(const std::optional<profiling::KeptText>& text) {
  return text ? shown(*text) : "none";
}

std::string shown(float number) {
  std::array<char, 24> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string sizesOf(const profiling::ChunkFacts& chunks) {
  if (chunks.count == 0) {
    return "none";
  }
  const std::string median =
      chunks.medianPrecision == 1
          ? grouped(chunks.median)
          : grouped(chunks.median) + " to " + grouped(chunks.median + chunks.medianPrecision - 1);
  return grouped(chunks.count) + ": smallest " + grouped(chunks.smallest) + ", median " + median +
         ", largest " + counted(chunks.largest, "byte");
}

std::string rangeOf(const profiling::TimeStampFacts& stamps) {
  return grouped(stamps.first) + " to " + grouped(stamps.last) + ", a span of " +
         grouped(stamps.largest - stamps.smallest) + kWritersUnit;
}

std::string courseOf(const profiling::SequenceFacts& sequence) {
  std::string text = grouped(sequence.smallest) + " to " + grouped(sequence.largest) + ": ";
  text += counted(sequence.gaps, "gap");
  if (sequence.gaps > 0) {
    text += " (" + counted(sequence.missing, "number") + " left out)";
  }
  return text + ", " + counted(sequence.repeats, "repeat") + ", " +
         counted(sequence.stepsBack, "step") + " back";
}

void printDamage(const profiling::WalkResult& walk, TextList& list) {
  using profiling::WalkEnd;
  if (walk.end == WalkEnd::kEndOfLog) {
    list.add("damage", "none");
    return;
  }
  list.add("damage", "in chunk " + grouped(walk.last.index + 1) + " at byte offset " +
                         grouped(walk.last.offset) + ": " + whyDamaged(walk.end, walk.last));
  if (mayStillBeWritten(walk.end)) {
    list.add("", kMayStillBeWritten);
  }
  if (walk.end == WalkEnd::kCutShort && walk.isAccepted) {
    list.add("", "its messages are all there and are counted here");
  } else if (walk.soundChunks == 0) {
    list.add("", "nothing sound stands before it: it may be no profiling log at all");
  }
  list.add("", "whole before it: " + counted(walk.soundChunks, "chunk") + " with " +
                   counted(walk.soundBytes, "byte"));
}

void printOverview(const LogFacts& facts, std::ostream& out) {
  TextList list(out);
  list.add("size", counted(facts.bytes.sum(), "byte"));
  list.add("chunks", sizesOf(facts.chunks));
  list.add("messages", grouped(facts.messages.count));
  list.add("events", facts.events.count == 0 ? "0"
                                             : grouped(facts.events.count) + ", at most " +
                                                   grouped(facts.events.greatestDepth) + " deep");
  list.add("identifiers", (facts.events.hasMoreIdentifiers ? "more than " : "") +
                              grouped(facts.events.identifiers) + " different");
  list.add("payloads", facts.payloads.count == 0 ? "0"
                                                 : grouped(facts.payloads.count) + ", together " +
                                                       counted(facts.payloads.bytes, "byte"));
  if (facts.timeStamps) {
    list.add("time stamps", rangeOf(*facts.timeStamps));
    list.add("", counted(facts.timeStamps->stepsBack, "step") + " back");
  }
  if (facts.sequence) {
    list.add("sequence numbers", courseOf(*facts.sequence));
  }
  printDamage(facts.walk, list);
}

std::string shown(const std::optional<profiling::VersionFacts>& version) {
  return version ? std::to_string(version->major) + "." + std::to_string(version->minor) + "." +
                       std::to_string(version->teeny) + ", flag " + std::to_string(version->flag)
                 : "none";
}

std::string creationOf(const profiling::HeaderFacts& header) {
  const std::string utc = utcTime(header.epochTime);
  const std::string local = localTime(header.epochTime);
  return utc + " (here " + local + "), " + grouped(header.epochTime) + " us since 1970";
}

std::string differencesOf(const std::vector<std::string>& fields) {
  std::string text;
  for (const std::string& field : fields) {
    text += (text.empty() ? "" : ", ") + field;
  }
  return text.empty() ? "all alike" : "later ones differ in " + text;
}

void printHeader(const LogFacts& facts, std::ostream& out) {
  out << "\nHeader\n";
  TextList list(out);
  if (!facts.header) {
    list.add("none", "");
    return;
  }
  list.add("created", creationOf(*facts.header));
  list.add("time stamp", grouped(facts.header->timestamp) + kWritersUnit);
  list.add("time scale", shown(facts.header->timeScale));
  list.add("log version", shown(facts.header->version));
  list.add("vyn-net-run", shown(facts.header->netRunVersion));
  list.add("back end", shown(facts.header->backendVersion));
  if (facts.headers > 1) {
    list.add("headers", grouped(facts.headers) + ", " + differencesOf(facts.differingHeaders));
  }
}

// One row for each number, by the text that `textOf` has for it.
template <typename TextOf>
void printCounts(const std::string& heading, const NumberCounts& counts, std::uint64_t whole,
                 const TextOf& textOf, std::ostream& out) {
  if (whole == 0) {
    return;
  }
  TextTable table({heading, "count", "share"});
  for (const NumberCounts::Entry& entry : counts.entries) {
    const std::string text = textOf(entry.number);
    table.add({text.empty() ? "(number " + std::to_string(entry.number) + ")" : text,
               grouped(entry.count), share(entry.count, whole)});
  }
  if (counts.others > 0) {
    table.add({"(more numbers)", grouped(counts.others), share(counts.others, whole)});
  }
  out << '\n';
  table.print(out);
}

void printGraphs(const profiling::MessageFacts& messages, std::ostream& out) {
  if (messages.count == 0) {
    return;
  }
  TextTable table({"Messages by graph", "count", "share", "executions"});
  const auto addRow = [&](const std::string& name, std::uint64_t count, const std::string& runs) {
    table.add({name, grouped(count), share(count, messages.count), runs});
  };
  for (const profiling::GraphFacts& graph : messages.graphs) {
    addRow(shown(graph.name), graph.messages, grouped(graph.executions));
  }
  if (messages.otherGraphs.messages > 0) {
    addRow("(more graphs)", messages.otherGraphs.messages,
           grouped(messages.otherGraphs.executions));
  }
  if (messages.withoutGraph > 0) {
    addRow("(no graph)", messages.withoutGraph, "");
  }
  out << '\n';
  table.print(out);
}

void printMessages(const profiling::MessageFacts& messages, std::ostream& out) {
  printCounts(
      "Messages by method", messages.methods, messages.count,
      [](std::int64_t number) {
        return std::string(
            profiling::methodText(static_cast<profiling::schema::MethodType>(number)));
      },
      out);
  printCounts(
      "Messages by visibility level", messages.visibilityLevels, messages.count,
      [](std::int64_t number) { return std::to_string(number); }, out);
  printGraphs(messages, out);
}

void printEvents(const profiling::EventFacts& events, std::ostream& out) {
  namespace schema = profiling::schema;
  printCounts(
      "Events by type", events.types, events.count,
      [](std::int64_t number) {
        return std::string(profiling::eventTypeText(static_cast<schema::EventType>(number)));
      },
      out);
  printCounts(
      "Events by unit", events.units, events.count,
      [](std::int64_t number) {
        return std::string(profiling::eventUnitText(static_cast<schema::EventUnit>(number)));
      },
      out);
  printCounts(
      "Events by value type", events.valueTypes, events.count,
      [](std::int64_t number) {
        return std::string(
            profiling::eventValueTypeText(static_cast<schema::EventValueType>(number)));
      },
      out);
}

void printBytes(const profiling::ByteFacts& bytes, std::ostream& out) {
  if (bytes.sum() == 0) {
    return;
  }
  std::vector<std::pair<std::string, std::uint64_t>> uses = {{"event tables", bytes.events},
                                                             {"other tables", bytes.otherTables},
                                                             {"texts", bytes.texts},
                                                             {"lists and lengths", bytes.lists},
                                                             {"raw data", bytes.rawData},
                                                             {"padding, unused", bytes.unused},
                                                             {"chunk lengths", bytes.chunkLengths},
                                                             {"from the damage on", bytes.refused}};
  std::stable_sort(uses.begin(), uses.end(),
                   [](const auto& left, const auto& right) { return left.second > right.second; });
  TextTable table({"Where the bytes go", "bytes", "share"});
  for (const auto& [name, size] : uses) {
    if (size > 0) {
      table.add({name, grouped(size), share(size, bytes.sum())});
    }
  }
  out << '\n';
  table.print(out);
}

}  // namespace

void printFacts(const std::string& logName, const LogFacts& facts, std::ostream& out) {
  out << shown(logName) << '\n';
  printOverview(facts, out);
  printHeader(facts, out);
  printMessages(facts.messages, out);
  printEvents(facts.events, out);
  printBytes(facts.bytes, out);
}

}  // namespace vyn::host
