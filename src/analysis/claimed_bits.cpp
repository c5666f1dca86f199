#include "analysis/claimed_bits.h"

#include <algorithm>
#include <bit>

namespace vyn::profiling {

void ClaimedBits::reset(std::size_t size) {
  std::size_t words = size / kWordBits + 1;
  m_bits.assign(words, 0);
  std::size_t rows = 0;
  while (words > 1) {
    words = words / kWordBits + 1;
    m_full.resize(std::max(m_full.size(), rows + 1));
    m_full[rows++].assign(words, 0);
  }
}

std::size_t ClaimedBits::setWords(std::size_t first, std::size_t end) {
  std::size_t added = 0;
  for (std::size_t word = first / kWordBits; word * kWordBits < end;) {
    const std::size_t start = word * kWordBits;
    const bool wasFull = m_bits[word] == kFull;
    added += setInWord(word, std::max(first, start) - start, std::min(end - start, kWordBits));
    ++word;
    if (wasFull) {
      word = nextOpen(0, word);
    }
  }
  return added;
}

void ClaimedBits::markFull(std::size_t word) {
  for (std::vector<std::uint64_t>& row : m_full) {
    std::uint64_t& bits = row[word / kWordBits];
    bits |= std::uint64_t{1} << word % kWordBits;
    if (bits != kFull) {
      return;
    }
    word /= kWordBits;
  }
}

std::size_t ClaimedBits::nextOpen(std::size_t row, std::size_t bit) const {
  std::size_t word = bit / kWordBits;
  std::uint64_t open = ~m_full[row][word] & (kFull << bit % kWordBits);
  if (open == 0) {
    word = nextOpen(row + 1, word + 1);
    open = ~m_full[row][word];
  }
  return word * kWordBits + static_cast<std::size_t>(std::countr_zero(open));
}

}  // namespace vyn::profiling
