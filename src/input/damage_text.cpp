#include "input/damage_text.h"

namespace vyn::profiling {
namespace {

std::string presentOf(std::size_t present, std::uint64_t needed) {
  return ": " + std::to_string(present) + " of " + std::to_string(needed) + " bytes are there";
}

}  // namespace

std::string whyDamaged(WalkEnd end, const ChunkPlace& place) {
  switch (end) {
    case WalkEnd::kEndOfLog:
      return "";
    case WalkEnd::kPartialLength:
      return "the log ends inside the length of a chunk" +
             presentOf(place.present, sizeof(ChunkLength));
    case WalkEnd::kImpossibleLength:
      return "no chunk can have the length " + std::to_string(place.announced);
    case WalkEnd::kCutShort:
      return "the log ends inside the chunk" + presentOf(place.present, place.announced);
    case WalkEnd::kCorrupt:
      return "the chunk of " + std::to_string(place.announced) + " bytes is corrupt";
    case WalkEnd::kReadError:
      return "the system could not read on";
    case WalkEnd::kNoRoom:
      return "there is not enough memory for the chunk of " + std::to_string(place.announced) +
             " bytes";
  }
  return "";
}

bool mayStillBeWritten(WalkEnd end, const ChunkPlace& place) {
  return end == WalkEnd::kPartialLength ||
         (end == WalkEnd::kCutShort && place.announced < kLeastOfNoChunk);
}

}  // namespace vyn::profiling
