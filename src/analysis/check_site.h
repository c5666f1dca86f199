#pragma once

#include <cstddef>
#include <cstdint>

#include "analysis/chunk_fault.h"
#include "analysis/findings.h"
#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Where in a log the checks are. What they find goes into the findings with that place.
class CheckSite {
 public:
  explicit CheckSite(Findings& findings) : m_findings(findings) {}

  void enterChunk(const Chunk& chunk, const ChunkPlace& place) {
    m_data = chunk.data();
    m_place = place;
    m_isInMessage = false;
  }
  void enterMessage() {
    ++m_messages;
    m_isInMessage = true;
  }

  std::uint64_t chunkNumber() const { return m_place.index + 1; }

  /// Of something in the chunk, in bytes from its start.
  std::uint64_t positionOf(const void* where) const {
    return static_cast<std::uint64_t>(static_cast<const std::uint8_t*>(where) - m_data);
  }

  /// Of something at that place in the chunk's bytes. `describe` returns the evidence.
  template <typename Describe>
  void report(CheckCode code, const void* where, const Describe& describe) {
    reportAt(code, offsetOf(positionOf(where)), m_isInMessage ? m_messages : 0, describe);
  }

  /// Of the chunk as a whole.
  template <typename Describe>
  void reportChunk(CheckCode code, const Describe& describe) {
    reportAt(code, m_place.offset, 0, describe);
  }

  /// Of the chunk that ends the log, none of whose messages was entered.
  void reportFault(const ChunkFault& fault) {
    reportAt(fault.code, offsetOf(fault.position),
             fault.message == 0 ? 0 : m_messages + fault.message,
             [&fault] { return fault.evidence; });
  }

 private:
  // Bytes of the log in front of a position in the chunk.
  std::uint64_t offsetOf(std::uint64_t position) const {
    return m_place.offset + sizeof(ChunkLength) + position;
  }

  template <typename Describe>
  void reportAt(CheckCode code, std::uint64_t offset, std::uint64_t message,
                const Describe& describe) {
    m_findings.add(code, [&] { return Finding{code, chunkNumber(), message, offset, describe()}; });
  }

  Findings& m_findings;
  const std::uint8_t* m_data = nullptr;
  ChunkPlace m_place;
  std::uint64_t m_messages = 0;
  bool m_isInMessage = false;
};

}  // namespace vyn::profiling
