#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "input/chunk_walk.h"

namespace vyn::profiling {

// What a log holds, in figures. Counts go by what the log names: an event that several messages
// share counts once for each of them. Only ByteFacts has each byte once.

/// The beginning of a text that may be very long.
struct KeptText {
  std::string start;
  std::uint64_t size = 0;  ///< bytes of the whole text

  bool isWhole() const { return start.size() == size; }
  bool operator==(const KeptText&) const = default;
};

struct ChunkFacts {
  std::uint64_t count = 0;
  // Bytes, without the lengths in front; 0 without a chunk.
  std::uint64_t smallest = 0;
  std::uint64_t median = 0;  ///< the lower one of an even number
  std::uint64_t largest = 0;
  /// The median lies in as many bytes from the one that is given on; 1 when that is it.
  std::uint64_t medianPrecision = 1;
};

struct VersionFacts {
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
  std::uint32_t teeny = 0;
  std::uint8_t flag = 0;
};

struct HeaderFacts {
  float timeScale = 0;
  std::uint64_t epochTime = 0;  ///< microseconds since the Unix epoch
  std::uint64_t timestamp = 0;  ///< in the writer's unit
  std::optional<VersionFacts> version;
  std::optional<KeptText> netRunVersion;
  std::optional<KeptText> backendVersion;
};

/// How often each number came.
struct NumberCounts {
  struct Entry {
    std::int64_t number = 0;
    std::uint64_t count = 0;
    bool operator==(const Entry&) const = default;
  };
  std::vector<Entry> entries;  ///< by count, the largest first, then by number
  std::uint64_t others = 0;    ///< how often there came numbers beyond the most that are told apart
};

struct GraphFacts {
  KeptText name;
  std::uint64_t messages = 0;
  std::uint64_t executions = 0;  ///< of these
  bool operator==(const GraphFacts&) const = default;
};

struct MessageFacts {
  std::uint64_t count = 0;
  std::uint64_t withoutGraph = 0;
  NumberCounts methods;
  NumberCounts visibilityLevels;
  std::vector<GraphFacts> graphs;  ///< by messages, the most first, then by name
  GraphFacts otherGraphs;          ///< all that are not told apart, without a name
};

struct EventFacts {
  std::uint64_t count = 0;
  std::uint32_t greatestDepth = 0;  ///< 1 for events that stand in their message
  NumberCounts types;
  NumberCounts units;
  NumberCounts valueTypes;
  std::uint64_t identifiers = 0;  ///< how many different ones are known
  bool mayHaveMoreIdentifiers = false;
};

/// Events of unit OBJECT that carry raw data.
struct PayloadFacts {
  std::uint64_t count = 0;
  std::uint64_t bytes = 0;
};

/// The messages' time stamps, in the writer's unit.
struct TimeStampFacts {
  std::uint64_t first = 0;  ///< of the first message
  std::uint64_t last = 0;   ///< of the last one
  std::uint64_t smallest = 0;
  std::uint64_t largest = 0;
  std::uint64_t stepsBack = 0;  ///< messages with a smaller one than the message before
};

/// The messages' sequence numbers.
struct SequenceFacts {
  std::uint64_t smallest = 0;
  std::uint64_t largest = 0;
  /// Messages whose number is larger than all before and does not follow the largest of them, and
  /// how many numbers they left out. Some of these may come later, as steps back.
  std::uint64_t gaps = 0;
  std::uint64_t missing = 0;
  std::uint64_t repeats = 0;    ///< messages with the number of the message before
  std::uint64_t stepsBack = 0;  ///< messages with a smaller one
};

/// What the bytes of the log are for, each counted once: where several tables or texts share it,
/// for the one that the log names first.
struct ByteFacts {
  std::uint64_t events = 0;        ///< their tables
  std::uint64_t otherTables = 0;   ///< of messages, headers, metrics, and the chunks' roots
  std::uint64_t texts = 0;         ///< with their lengths and the zero bytes at their ends
  std::uint64_t lists = 0;         ///< of events and messages, with their lengths
  std::uint64_t rawData = 0;       ///< with its lengths
  std::uint64_t unused = 0;        ///< padding, and what nothing names
  std::uint64_t chunkLengths = 0;  ///< in front of the chunks
  std::uint64_t refused = 0;       ///< from the damage on, or behind the last chunk

  std::uint64_t sum() const {
    return events + otherTables + texts + lists + rawData + unused + chunkLengths + refused;
  }
};

struct LogFacts {
  WalkResult walk;         ///< where and why the log ended
  std::uint64_t size = 0;  ///< bytes of the log, as far as they are known
  ChunkFacts chunks;
  std::uint64_t headers = 0;
  std::optional<HeaderFacts> header;          ///< the first one
  std::vector<std::string> differingHeaders;  ///< the fields in which a later one differs from it
  MessageFacts messages;
  EventFacts events;
  PayloadFacts payloads;
  std::optional<TimeStampFacts> timeStamps;  ///< none without a message
  std::optional<SequenceFacts> sequence;     ///< none without a message
  ByteFacts bytes;

  /// 1 to 3 bytes behind whole chunks. They are too few for a length, so that nothing is lost.
  bool hasBytesBehind() const {
    return walk.end == WalkEnd::kPartialLength && walk.soundChunks > 0;
  }

  /// Whether the log ends with something that is no sound chunk.
  bool isDamaged() const { return walk.end != WalkEnd::kEndOfLog && !hasBytesBehind(); }
};

}  // namespace vyn::profiling
