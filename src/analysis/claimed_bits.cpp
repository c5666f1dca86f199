#include "analysis/claimed_bits.h"

#include <algorithm>
#include <bit>

namespace vyn::profiling {
namespace {

constexpr std::size_t kWordBits = 64;
constexpr std::uint64_t kFull = ~std::uint64_t{0};

}  // namespace

void ClaimedBits::reset(std::size_t size) {
  std::size_t words = size;
  std::size_t level = 0;
  do {
    words = words / kWordBits + 1;
    if (level == m_levels.size()) {
      m_levels.emplace_back();
    }
    m_levels[level++].assign(words, 0);
  } while (words > 1);
  m_levels.resize(level);
}

std::size_t ClaimedBits::set(std::size_t first, std::size_t end) {
  std::size_t added = 0;
  for (std::size_t word = first / kWordBits; word * kWordBits < end;) {
    const std::size_t start = word * kWordBits;
    const std::size_t before = first > start ? first - start : 0;
    const std::size_t behind = std::max(start + kWordBits, end) - end;
    const std::uint64_t mask = (kFull << before) & (kFull >> behind);
    std::uint64_t& bits = m_levels[0][word];
    added += static_cast<std::size_t>(std::popcount(mask & ~bits));
    bits |= mask;
    ++word;
    if (bits == kFull) {
      markFull(word - 1);
      word = nextOpen(1, word);
    }
  }
  return added;
}

void ClaimedBits::markFull(std::size_t word) {
  for (std::size_t level = 1; level < m_levels.size(); ++level) {
    std::uint64_t& bits = m_levels[level][word / kWordBits];
    bits |= std::uint64_t{1} << word % kWordBits;
    if (bits != kFull) {
      return;
    }
    word /= kWordBits;
  }
}

std::size_t ClaimedBits::nextOpen(std::size_t level, std::size_t bit) const {
  const std::size_t word = bit / kWordBits;
  const std::uint64_t open = ~m_levels[level][word] >> bit % kWordBits;
  if (open != 0) {
    return bit + static_cast<std::size_t>(std::countr_zero(open));
  }
  const std::size_t openWord = nextOpen(level + 1, word + 1);
  return openWord * kWordBits +
         static_cast<std::size_t>(std::countr_zero(~m_levels[level][openWord]));
}

}  // namespace vyn::profiling
