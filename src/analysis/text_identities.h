#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/text_hash.h"

namespace vyn::profiling {

/// Tells the texts of a log apart, however often they are named and however much they overlap. All
/// texts of a chunk together take time in proportion to the chunk's bytes and to how often they are
/// named, for a long text is remembered by its place and looked at once; where so many of them
/// overlap, or are forgotten again, that they come to more than kLooksAtAByte times the chunk's
/// bytes, the others stay unknown.
class TextIdentities {
 public:
  static constexpr std::size_t kLooksAtAByte = 8;

  /// To be called before the first text of each chunk, in which all texts up to the next call lie.
  void startChunk(std::span<const std::uint8_t> chunk);

  /// The same 64 bits for equal texts of the log. That two different ones have them too has a
  /// probability of about 2^-64, whatever a log holds, for they are drawn anew for each process.
  /// None when the text was not looked at; which these are depends on the log alone.
  std::optional<std::uint64_t> of(const flatbuffers::String& text) {
    return text.size() <= kShortText ? std::optional(std::uint64_t{m_hash(text.string_view())})
                                     : ofLong(text);
  }

 private:
  // Bytes. To look at a shorter text takes no longer than to look up whether it is known.
  static constexpr flatbuffers::uoffset_t kShortText = 64;

  struct Known {
    std::uint64_t chunk = 0;  // from 1 on: what earlier chunks left need not be cleared
    const flatbuffers::String* text = nullptr;
    std::uint64_t identity = 0;
  };

  std::optional<std::uint64_t> ofLong(const flatbuffers::String& text);
  Known& slotOf(const flatbuffers::String& text);

  static constexpr unsigned kSlotBits = 13;

  TextHash m_hash;
  std::vector<Known> m_known = std::vector<Known>(std::size_t{1} << kSlotBits);
  const std::uint8_t* m_start = nullptr;  // of the chunk
  std::uint64_t m_chunk = 0;              // its number
  std::uint64_t m_budget = 0;             // bytes of texts that may still be looked at
};

}  // namespace vyn::profiling
