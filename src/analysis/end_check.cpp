#include "analysis/end_check.h"

#include <optional>
#include <string>
#include <utility>

#include "base/counted.h"
#include "input/damage_text.h"
#include "input/foreign_start.h"

namespace vyn::profiling {
namespace {

std::string behindWholeChunks(const WalkResult& walk) {
  return " behind " + counted(walk.soundChunks, "whole chunk");
}

Evidence evidenceOfCut(const WalkResult& walk) {
  std::string found = std::to_string(walk.last.present) + " of " +
                      counted(walk.last.announced, "byte") + behindWholeChunks(walk);
  if (mayStillBeWritten(walk.end, walk.last)) {
    found += std::string("; ") + kMayStillBeWritten;
  }
  if (walk.isAccepted) {
    found += "; the messages of the chunk can be read, for nothing leads to what is missing";
  }
  return {found, "the whole chunk, or no length of one"};
}

// The code and the evidence; a log that ends where a chunk does has none to report.
struct Ending {
  CheckCode code;
  Evidence evidence;
};

Ending endingOf(const WalkResult& walk) {
  const std::string present = counted(walk.last.present, "byte");
  switch (walk.end) {
    case WalkEnd::kPartialLength:
      return walk.soundChunks == 0
                 ? Ending{CheckCode::kEndsInFirstLength,
                          {present + "; " + kMayStillBeWritten,
                           "the 4 bytes of a length, and a chunk"}}
                 : Ending{CheckCode::kBytesBehind,
                          {present + behindWholeChunks(walk) + "; " + kMayStillBeWritten,
                           "nothing, or another chunk"}};
    case WalkEnd::kImpossibleLength:
      return {CheckCode::kImpossibleLength,
              {"the length " + std::to_string(walk.last.announced) + behindWholeChunks(walk),
               std::to_string(kMinChunkSize) + " to " + std::to_string(kChunkSizeLimit - 1)}};
    case WalkEnd::kCutShort:
      return {CheckCode::kCutShort, evidenceOfCut(walk)};
    default:
      return {CheckCode::kReadError,
              {"an error of the system" + behindWholeChunks(walk), "the rest of the log"}};
  }
}

// What the file holds instead of a log; none when it may be one.
std::optional<std::string> foreignFormat(std::string_view start) {
  const auto format = recogniseForeignStart(start);
  return format || !looksLikeText(start) ? format : std::optional<std::string>("is a plain text");
}

void add(CheckCode code, const WalkResult& walk, Evidence evidence, Findings& findings) {
  findings.add(code, [&] {
    return Finding{code, walk.last.index + 1, 0, walk.last.offset, std::move(evidence)};
  });
}

}  // namespace

bool reportForeignFormat(const WalkResult& walk, std::string_view start, Findings& findings) {
  const auto format = foreignFormat(start);
  if (format) {
    add(CheckCode::kForeignFormat, walk, {"a file that " + *format, "chunks of tables"}, findings);
  }
  return format.has_value();
}

void reportEnd(const WalkResult& walk, Findings& findings) {
  if (walk.end != WalkEnd::kEndOfLog) {
    Ending ending = endingOf(walk);
    add(ending.code, walk, std::move(ending.evidence), findings);
  }
}

void reportNoHeader(Findings& findings) {
  findings.add(CheckCode::kNoHeader, [] {
    return Finding{CheckCode::kNoHeader, 0, 0, 0, {"no chunk with one", "one, in the first chunk"}};
  });
}

}  // namespace vyn::profiling
