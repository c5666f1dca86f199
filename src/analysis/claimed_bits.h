#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vyn::profiling {

/// A row of bits, of which whole ranges are set. All ranges together take time in proportion to the
/// number of bits and to their own number, however long they are and however often they overlap:
/// above the bits stands a row with one bit for each full word of them, above that another one, and
/// so on, by which a range steps over what is set already.
class ClaimedBits {
 public:
  /// Starts anew with that many bits, none of them set.
  void reset(std::size_t size);

  /// Sets the bits from `first` to `end` - 1, if any, and returns how many of them were not set
  /// before.
  std::size_t set(std::size_t first, std::size_t end) {
    if (first >= end) {
      return 0;
    }
    const std::size_t word = first / kWordBits;
    if ((end - 1) / kWordBits == word) {
      return setInWord(word, first % kWordBits, end - word * kWordBits);
    }
    return setWords(first, end);
  }

 private:
  static constexpr std::size_t kWordBits = 64;
  static constexpr std::uint64_t kFull = ~std::uint64_t{0};

  // The same for bits of one word, counted from its own first one.
  std::size_t setInWord(std::size_t word, std::size_t first, std::size_t end) {
    std::uint64_t& bits = m_bits[word];
    const std::uint64_t mask = (kFull << first) & (kFull >> (kWordBits - end));
    const std::uint64_t before = bits & mask;
    if (before == mask) {
      return 0;
    }
    bits |= mask;
    if (bits == kFull) {
      markFull(word);
    }
    // To count them takes longer, and nearly always none was set.
    return before == 0 ? end - first : static_cast<std::size_t>(std::popcount(mask ^ before));
  }

  std::size_t setWords(std::size_t first, std::size_t end);
  void markFull(std::size_t word);
  std::size_t nextOpen(std::size_t row, std::size_t bit) const;

  // The last word of each row is never full, for some bit at its end is not used.
  std::vector<std::uint64_t> m_bits;
  std::vector<std::vector<std::uint64_t>> m_full;  // by the row; the topmost is a single word
};

}  // namespace vyn::profiling
