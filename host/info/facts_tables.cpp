#include "host/info/facts_tables.h"

#include <profile_log_generated.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/info/shown_text.h"
#include "host/info/text_table.h"
#include "host/output/shown_numbers.h"

namespace vyn::host {
namespace {

using profiling::NumberCounts;

constexpr std::size_t kMaxRows = 40;
constexpr char kNoGraph[] = "(no graph)";

// What stands for the rows that are not shown, and for what no row was kept of.
std::string othersOf(std::size_t hiddenRows, bool hasMore) {
  if (hiddenRows == 0) {
    return "(others)";
  }
  return (hasMore ? "(at least " : "(") + groupedCount(hiddenRows, "other") + ")";
}

// One row for each number, by the text that `textOf` has for it.
template <typename TextOf>
void printCounts(const std::string& heading, const NumberCounts& counts, std::uint64_t whole,
                 const TextOf& textOf, std::ostream& out) {
  if (whole == 0) {
    return;
  }
  TextTable table({heading, "count", "share"});
  const std::size_t rows = std::min(counts.entries.size(), kMaxRows);
  std::uint64_t rest = whole;
  for (std::size_t i = 0; i < rows; ++i) {
    const auto [number, count] = counts.entries[i];
    const std::string text = textOf(number);
    table.add({text.empty() ? "(number " + std::to_string(number) + ")" : text, grouped(count),
               share(count, whole)});
    rest -= count;
  }
  if (rest > 0) {
    table.add({othersOf(counts.entries.size() - rows, counts.others > 0), grouped(rest),
               share(rest, whole)});
  }
  out << '\n';
  table.print(out);
}

// Told apart from the row of messages without a graph, whatever the name.
std::string rowNameOf(const profiling::KeptText& name) {
  return name.size == 0           ? "(empty name)"
         : name.start == kNoGraph ? "\"" + shown(name) + "\""
                                  : shown(name);
}

void printGraphs(const profiling::MessageFacts& messages, std::ostream& out) {
  if (messages.count == 0) {
    return;
  }
  TextTable table({"Messages by graph", "count", "share", "executions"});
  const auto addRow = [&](const std::string& name, const profiling::GraphFacts& graph) {
    table.add({name, grouped(graph.messages), share(graph.messages, messages.count),
               grouped(graph.executions)});
  };
  const std::size_t rows = std::min(messages.graphs.size(), kMaxRows);
  for (std::size_t i = 0; i < rows; ++i) {
    addRow(rowNameOf(messages.graphs[i].name), messages.graphs[i]);
  }
  profiling::GraphFacts rest = messages.otherGraphs;
  for (std::size_t i = rows; i < messages.graphs.size(); ++i) {
    rest.messages += messages.graphs[i].messages;
    rest.executions += messages.graphs[i].executions;
  }
  if (rest.messages > 0) {
    addRow(othersOf(messages.graphs.size() - rows, messages.otherGraphs.messages > 0), rest);
  }
  if (messages.withoutGraph > 0) {
    table.add({kNoGraph, grouped(messages.withoutGraph),
               share(messages.withoutGraph, messages.count), "-"});
  }
  out << '\n';
  table.print(out);
}

template <typename Enumeration>
auto withText(const char* (*textOf)(Enumeration)) {
  return [textOf](std::int64_t number) {
    return std::string(textOf(static_cast<Enumeration>(number)));
  };
}

void printMessages(const profiling::MessageFacts& messages, std::ostream& out) {
  printCounts("Messages by method", messages.methods, messages.count,
              withText(profiling::schema::EnumNameMethodType), out);
  printCounts(
      "Messages by visibility level", messages.visibilityLevels, messages.count,
      [](std::int64_t number) { return std::to_string(number); }, out);
  printGraphs(messages, out);
}

void printEvents(const profiling::EventFacts& events, std::ostream& out) {
  printCounts("Events by type", events.types, events.count,
              withText(profiling::schema::EnumNameEventType), out);
  printCounts("Events by unit", events.units, events.count,
              withText(profiling::schema::EnumNameEventUnit), out);
  printCounts("Events by value type", events.valueTypes, events.count,
              withText(profiling::schema::EnumNameEventValueType), out);
}

void printBytes(const profiling::LogFacts& facts, std::ostream& out) {
  const profiling::ByteFacts& bytes = facts.bytes;
  if (facts.size == 0) {
    return;
  }
  const char* const rest = facts.hasBytesBehind() ? "behind the last chunk" : "from the damage on";
  std::vector<std::pair<std::string, std::uint64_t>> uses = {{"event tables", bytes.events},
                                                             {"other tables", bytes.otherTables},
                                                             {"texts", bytes.texts},
                                                             {"lists", bytes.lists},
                                                             {"raw data", bytes.rawData},
                                                             {"padding and unused", bytes.unused},
                                                             {"chunk lengths", bytes.chunkLengths},
                                                             {rest, bytes.refused}};
  std::stable_sort(uses.begin(), uses.end(),
                   [](const auto& left, const auto& right) { return left.second > right.second; });
  TextTable table({"Where the bytes go", "bytes", "share"});
  for (const auto& [name, size] : uses) {
    if (size > 0) {
      table.add({name, grouped(size), share(size, facts.size)});
    }
  }
  out << '\n';
  table.print(out);
}

}  // namespace

void printTables(const profiling::LogFacts& facts, std::ostream& out) {
  printMessages(facts.messages, out);
  printEvents(facts.events, out);
  printBytes(facts, out);
}

}  // namespace vyn::host
