#include "analysis/chunk_fault.h"

#include <flatbuffers/flatbuffers.h>

#include <limits>
#include <string>

#include "analysis/schema_rules.h"
#include "input/chunk_format.h"
#include "input/chunk_verifier.h"

namespace vyn::profiling {
namespace {

using flatbuffers::soffset_t;
using flatbuffers::uoffset_t;
using flatbuffers::voffset_t;

// A table and the field of it that is being read; none while its layout is.
struct Reading {
  const TableRule& rule;
  std::size_t position;  // of the table
  std::size_t layout = 0;
  voffset_t layoutSize = 0;
  const FieldRule* field = nullptr;
};

std::string byteAt(std::size_t position) { return "byte " + std::to_string(position); }

std::string nameOf(const Reading& reading) {
  return reading.field == nullptr ? std::string("the table ") + reading.rule.name
                                  : std::string(reading.rule.name) + "." + reading.field->name;
}

std::string offsetName(const Reading* reading) {
  return "the offset of " + (reading == nullptr ? "the root table" : nameOf(*reading));
}

// Every function that returns a truth value returns false behind the first flaw, which then stands
// in m_fault.
class TableReader {
 public:
  TableReader(std::span<const std::uint8_t> chunk, std::uint64_t maxTables)
      : m_chunk(chunk), m_maxTables(maxTables) {}

  std::optional<ChunkFault> run() {
    if (!isPlausibleChunkSize(m_chunk.size())) {
      refuse(CheckCode::kReachesOut, 0,
             {"a chunk of " + std::to_string(m_chunk.size()) + " bytes", "12 bytes or more"});
      return m_fault;
    }
    if (const std::size_t root = targetOf(nullptr, 0); root != kNowhere) {
      readTable(kProfileLogRule, root);
    }
    return m_fault;
  }

 private:
  static constexpr std::size_t kNowhere = std::numeric_limits<std::size_t>::max();

  // As the verifier judges: what takes as many bytes as the chunk has is not inside.
  bool isInside(std::size_t position, std::size_t size) const {
    return size < m_chunk.size() && position <= m_chunk.size() - size;
  }

  template <typename Number>
  Number numberAt(std::size_t position) const {
    return flatbuffers::ReadScalar<Number>(m_chunk.data() + position);
  }

  bool refuse(CheckCode code, std::size_t position, Evidence evidence) {
    m_fault = {code, position, m_message, std::move(evidence)};
    return false;
  }

  std::string insideChunk() const {
    return "an end inside the chunk of " + std::to_string(m_chunk.size()) + " bytes";
  }

  // Where the offset leads that stands in the field, or at the chunk's start for the root; kNowhere
  // when it leads out. The offset itself is inside.
  std::size_t targetOf(const Reading* reading, std::size_t position) {
    const auto offset = numberAt<uoffset_t>(position);
    if (offset != 0 && static_cast<soffset_t>(offset) >= 0 && isInside(position + offset, 1)) {
      return position + offset;
    }
    refuse(CheckCode::kOffsetOut, position,
           {offsetName(reading) + " is " + std::to_string(offset),
            "1 or more, but less than " + std::to_string(m_chunk.size() - position)});
    return kNowhere;
  }

  bool readTable(const TableRule& rule, std::size_t position) {
    Reading reading{rule, position};
    if (!isInside(position, sizeof(soffset_t))) {
      return refuse(CheckCode::kOffsetOut, position,
                    {nameOf(reading) + " at " + byteAt(position), insideChunk()});
    }
    if (!countTable(reading) || !readLayout(reading)) {
      return false;
    }
    ++m_depth;
    for (const FieldRule& field : rule.fields) {
      reading.field = &field;
      if (!readField(reading)) {
        return false;
      }
    }
    --m_depth;
    return true;
  }

  bool countTable(const Reading& reading) {
    if (m_depth == ChunkVerifier::kMaxTableDepth) {
      return refuse(
          CheckCode::kNestedTooDeep, reading.position,
          {nameOf(reading) + " in " + std::to_string(m_depth) + " others",
           "no more than " + std::to_string(ChunkVerifier::kMaxTableDepth) + " tables deep"});
    }
    if (++m_tables > m_maxTables) {
      return refuse(
          CheckCode::kTooManyTables, reading.position,
          {"more than " + std::to_string(m_maxTables) +
               " tables, some of them named again and again",
           "no more of them than the chunk has bytes, " + std::to_string(m_chunk.size()) +
               ", and what is left of the " + std::to_string(ChunkVerifier::kSharedTableAllowance) +
               " that are free for all chunks together"});
    }
    return true;
  }

  bool readLayout(Reading& reading) {
    // Counts backwards; it wraps around when the layout is behind its table.
    const auto back = numberAt<soffset_t>(reading.position);
    reading.layout = reading.position - static_cast<std::size_t>(back);
    if (!isInside(reading.layout, sizeof(voffset_t))) {
      return refuse(CheckCode::kBadLayout, reading.position,
                    {nameOf(reading) + " has its layout " + std::to_string(back) + " bytes back",
                     "a layout inside the chunk"});
    }
    reading.layoutSize = numberAt<voffset_t>(reading.layout);
    if (reading.layoutSize % sizeof(voffset_t) != 0 ||
        !isInside(reading.layout, reading.layoutSize)) {
      return refuse(
          CheckCode::kBadLayout, reading.layout,
          {nameOf(reading) + " has a layout of " + std::to_string(reading.layoutSize) + " bytes",
           "an even number that ends inside the chunk"});
    }
    return true;
  }

  // Where the field stands in the chunk; kNowhere for an absent one.
  std::size_t placeOf(const Reading& reading) const {
    const voffset_t slot = reading.field->slot;
    const voffset_t place =
        slot < reading.layoutSize ? numberAt<voffset_t>(reading.layout + slot) : voffset_t{0};
    return place == 0 ? kNowhere : reading.position + place;
  }

  bool readField(const Reading& reading) {
    const std::size_t place = placeOf(reading);
    if (place == kNowhere) {
      return !reading.field->isRequired ||
             refuse(CheckCode::kMissingField, reading.position,
                    {nameOf(reading) + " is not there", "it, for the schema demands it"});
    }
    if (reading.field->kind == FieldRule::Kind::kNumber) {
      return isInside(place, reading.field->size) || refusePlace(reading, place);
    }
    if (!isInside(place, sizeof(uoffset_t))) {
      return refusePlace(reading, place);
    }
    const std::size_t target = targetOf(&reading, place);
    return target != kNowhere && readTarget(reading, target);
  }

  // Of a field that is not inside. Where it is comes from the layout: there is the flaw.
  bool refusePlace(const Reading& reading, std::size_t place) {
    return refuse(CheckCode::kReachesOut, reading.layout + reading.field->slot,
                  {nameOf(reading) + " at " + byteAt(place), insideChunk()});
  }

  bool readTarget(const Reading& reading, std::size_t target) {
    switch (reading.field->kind) {
      case FieldRule::Kind::kText:
        return readText(reading, target);
      case FieldRule::Kind::kBytes:
        return readList(reading, target, sizeof(std::uint8_t));
      case FieldRule::Kind::kTable:
        return readTable(*reading.field->table, target);
      case FieldRule::Kind::kTables:
        return readTables(reading, target);
      case FieldRule::Kind::kNumber:
        break;
    }
    return true;
  }

  bool readList(const Reading& reading, std::size_t position, std::size_t elementSize) {
    if (!isInside(position, sizeof(uoffset_t))) {
      return refuse(CheckCode::kReachesOut, position,
                    {nameOf(reading) + " at " + byteAt(position), insideChunk()});
    }
    const std::size_t count = numberAt<uoffset_t>(position);
    return isInside(position, sizeof(uoffset_t) + count * elementSize) ||
           refuse(CheckCode::kReachesOut, position,
                  {nameOf(reading) + " at " + byteAt(position) + " has " + std::to_string(count) +
                       " elements of " + std::to_string(elementSize) +
                       (elementSize == 1 ? " byte" : " bytes"),
                   insideChunk()});
  }

  bool readText(const Reading& reading, std::size_t position) {
    if (!readList(reading, position, sizeof(char))) {
      return false;
    }
    const std::size_t end = position + sizeof(uoffset_t) + numberAt<uoffset_t>(position);
    if (isInside(end, 1) && m_chunk[end] == 0) {
      return true;
    }
    return refuse(CheckCode::kUnendedText, end,
                  {nameOf(reading) + ", which ends at " + byteAt(end), "a zero byte there"});
  }

  bool readTables(const Reading& reading, std::size_t position) {
    if (!readList(reading, position, sizeof(uoffset_t))) {
      return false;
    }
    const bool areMessages = m_depth == 1;
    const std::size_t count = numberAt<uoffset_t>(position);
    for (std::size_t i = 0; i < count; ++i) {
      m_message = areMessages ? i + 1 : m_message;
      const std::size_t element = position + (i + 1) * sizeof(uoffset_t);
      const std::size_t target = element + numberAt<uoffset_t>(element);
      if (!isInside(target, sizeof(soffset_t))) {
        return refuse(CheckCode::kOffsetOut, element,
                      {"element " + std::to_string(i + 1) + " of " + nameOf(reading) + " is " +
                           std::to_string(target - element),
                       "less than " + std::to_string(m_chunk.size() - element)});
      }
      if (!readTable(*reading.field->table, target)) {
        return false;
      }
    }
    return true;
  }

  std::span<const std::uint8_t> m_chunk;
  std::uint64_t m_maxTables;
  std::uint64_t m_tables = 0;
  std::uint64_t m_message = 0;
  std::size_t m_depth = 0;  // tables that are being read
  std::optional<ChunkFault> m_fault;
};

}  // namespace

std::optional<ChunkFault> findChunkFault(std::span<const std::uint8_t> chunk,
                                         std::uint64_t maxTables) {
  return TableReader(chunk, maxTables).run();
}

}  // namespace vyn::profiling
