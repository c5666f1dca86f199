#pragma once

#include <profile_log_generated.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "analysis/claimed_bits.h"
#include "analysis/log_facts.h"

namespace vyn::profiling {

/// Sorts the bytes of chunks by what they are for. Each byte is counted once, for what claims it
/// first. To know which are counted takes a bit for each byte of a chunk; in a chunk of more bytes
/// than `maxBits` one for each 2, 4, 8 or more: one byte among them stands for them all.
class ChunkBytes {
 public:
  static constexpr std::size_t kMaxBits = std::size_t{32} * 1024 * 1024;

  explicit ChunkBytes(std::size_t maxBits = kMaxBits) : m_maxBits(maxBits) {}

  /// To be called before what the chunk holds is claimed. All that is claimed must lie in it.
  void startChunk(std::span<const std::uint8_t> chunk);

  void claim(const schema::Event& event);
  void claim(const schema::Message& message);
  void claim(const schema::LogHeader& header);

  /// What the bytes of all chunks up to now are for. Leaves out what no chunk holds.
  ByteFacts facts() const;

 private:
  template <typename Table>
  void claimTable(const Table* table, std::uint64_t& use);
  template <typename Element>
  void claimList(const flatbuffers::Vector<Element>* list, std::uint64_t& use);
  void claimText(const flatbuffers::String* text);
  void claimRange(const std::uint8_t* start, std::size_t size, std::uint64_t& use);
  std::size_t unitsBefore(std::size_t position) const;

  std::size_t m_maxBits;
  std::span<const std::uint8_t> m_chunk;
  unsigned m_unit = 0;      // one bit stands for two to the power of that many bytes
  std::size_t m_units = 0;  // in the chunk
  ClaimedBits m_claimed;
  // Vtables that were claimed lately, by their place: most tables share one with the table before.
  std::array<const std::uint8_t*, 16> m_recentVtables{};
  ByteFacts m_facts;
  std::uint64_t m_total = 0;  // bytes of all chunks
};

}  // namespace vyn::profiling
