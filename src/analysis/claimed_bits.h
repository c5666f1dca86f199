#pragma once

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

  /// Sets the bits from `first` to `end` - 1 and returns how many of them were not set before.
  std::size_t set(std::size_t first, std::size_t end);

 private:
  void markFull(std::size_t word);
  std::size_t nextOpen(std::size_t level, std::size_t bit) const;

  // The bits and, above them, a row for the full words of each row, up to one of a single word. The
  // last word of a row is never full, for some bit at its end is not used.
  std::vector<std::vector<std::uint64_t>> m_levels;
};

}  // namespace vyn::profiling
