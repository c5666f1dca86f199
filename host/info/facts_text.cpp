#include "host/info/facts_text.h"

#include <array>
#include <charconv>
#include <optional>
#include <vector>

#include "host/info/creation_time.h"
#include "host/info/facts_tables.h"
#include "host/info/shown_text.h"
#include "host/info/text_table.h"
#include "host/output/shown_numbers.h"
#include "input/damage_text.h"

namespace vyn::host {
namespace {

using profiling::LogFacts;

constexpr char kWritersUnit[] = " in the writer's unit";

std::string versionText(const std::optional<profiling::KeptText>& text) {
  return text ? shown(*text) : "none";
}

std::string shortest(float number) {
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
         ", largest " + groupedCount(chunks.largest, "byte");
}

std::string rangeOf(const profiling::TimeStampFacts& stamps) {
  return grouped(stamps.first) + " to " + grouped(stamps.last) + ", a span of " +
         grouped(stamps.largest - stamps.smallest) + kWritersUnit + ", " +
         groupedCount(stamps.stepsBack, "step") + " back";
}

std::string courseOf(const profiling::SequenceFacts& sequence) {
  std::string text = grouped(sequence.smallest) + " to " + grouped(sequence.largest) + ": ";
  text += groupedCount(sequence.gaps, "gap");
  if (sequence.gaps > 0) {
    text += " (" + groupedCount(sequence.missing, "number") + " left out)";
  }
  return text + ", " + groupedCount(sequence.repeats, "repeat") + ", " +
         groupedCount(sequence.stepsBack, "step") + " back";
}

void printNoDamage(const LogFacts& facts, TextList& list) {
  list.add("damage", "none");
  if (facts.hasBytesBehind()) {
    list.add("", "behind the last chunk, at byte offset " + grouped(facts.walk.last.offset) + ": " +
                     profiling::whyDamaged(facts.walk.end, facts.walk.last));
    list.add("", profiling::kMayStillBeWritten);
  }
}

void printDamage(const profiling::WalkResult& walk, TextList& list) {
  using profiling::WalkEnd;
  list.add("damage", "in chunk " + grouped(walk.last.index + 1) + " at byte offset " +
                         grouped(walk.last.offset) + ": " +
                         profiling::whyDamaged(walk.end, walk.last));
  if (profiling::mayStillBeWritten(walk.end, walk.last)) {
    list.add("", profiling::kMayStillBeWritten);
  }
  if (walk.end == WalkEnd::kCutShort && walk.isAccepted) {
    list.add("", "its messages are all there and are counted");
  } else if (walk.soundChunks == 0) {
    list.add("", "nothing sound stands before it: it may be no profiling log at all");
  }
  list.add("", "whole before it: " + groupedCount(walk.soundChunks, "chunk") +
                   ", with their lengths " + groupedCount(walk.soundBytes, "byte"));
  list.add("",
           "save what is whole: vyn-profile-viewer recover LOG -o FILE, with --search also what "
           "stands behind it");
}

void printOverview(const LogFacts& facts, std::ostream& out) {
  TextList list(out);
  list.add("size", groupedCount(facts.size, "byte"));
  list.add("chunks", sizesOf(facts.chunks));
  list.add("messages", grouped(facts.messages.count));
  list.add("events", facts.events.count == 0 ? "0"
                                             : grouped(facts.events.count) + ", at most " +
                                                   grouped(facts.events.greatestDepth) + " deep");
  list.add("identifiers", (facts.events.mayHaveMoreIdentifiers ? "at least " : "") +
                              grouped(facts.events.identifiers) + " different");
  list.add("payloads", facts.payloads.count == 0 ? "0"
                                                 : grouped(facts.payloads.count) + ", together " +
                                                       groupedCount(facts.payloads.bytes, "byte"));
  if (facts.timeStamps) {
    list.add("time stamps", rangeOf(*facts.timeStamps));
  }
  if (facts.sequence) {
    list.add("sequence numbers", courseOf(*facts.sequence));
  }
  if (facts.isDamaged()) {
    printDamage(facts.walk, list);
  } else {
    printNoDamage(facts, list);
  }
}

std::string versionText(const std::optional<profiling::VersionFacts>& version) {
  return version ? std::to_string(version->major) + "." + std::to_string(version->minor) + "." +
                       std::to_string(version->teeny) + ", flag " + std::to_string(version->flag)
                 : "none";
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
  if (!facts.header) {
    out << "  none\n";
    return;
  }
  TextList list(out);
  list.add("created", utcTime(facts.header->epochTime) + ", " + grouped(facts.header->epochTime) +
                          " us since 1970");
  list.add("", localTime(facts.header->epochTime) + " in the local time zone");
  list.add("time stamp", grouped(facts.header->timestamp) + kWritersUnit);
  list.add("time scale", shortest(facts.header->timeScale));
  list.add("log version", versionText(facts.header->version));
  list.add("vyn-net-run", versionText(facts.header->netRunVersion));
  list.add("back end", versionText(facts.header->backendVersion));
  if (facts.headers > 1) {
    list.add("headers", grouped(facts.headers) + ", " + differencesOf(facts.differingHeaders));
  }
}

}  // namespace

void printFacts(const std::string& logName, const LogFacts& facts, std::ostream& out) {
  out << shown(logName) << '\n';
  printOverview(facts, out);
  printHeader(facts, out);
  printTables(facts, out);
}

}  // namespace vyn::host
