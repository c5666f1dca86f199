#include "analysis/claimed_bits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace vyn::profiling {
namespace {

TEST(ClaimedBits, CountsWhatWasNotSetBefore) {
  ClaimedBits bits;
  bits.reset(1000);
  EXPECT_EQ(bits.set(10, 20), 10U);
  EXPECT_EQ(bits.set(15, 25), 5U);
  EXPECT_EQ(bits.set(5, 30), 10U);
  EXPECT_EQ(bits.set(5, 30), 0U);
  EXPECT_EQ(bits.set(0, 1000), 975U);
  EXPECT_EQ(bits.set(0, 1000), 0U);
}

TEST(ClaimedBits, AnEmptyRangeSetsNothing) {
  ClaimedBits bits;
  bits.reset(100);
  EXPECT_EQ(bits.set(50, 50), 0U);
  EXPECT_EQ(bits.set(51, 50), 0U);
  EXPECT_EQ(bits.set(0, 100), 100U);
}

TEST(ClaimedBits, StartsAnewWithAnySize) {
  ClaimedBits bits;
  for (const std::size_t size :
       std::vector<std::size_t>{0, 1, 63, 64, 65, 5000, 300'000, 64, 4096, 262'144, 1}) {
    bits.reset(size);
    EXPECT_EQ(bits.set(0, size), size);
    EXPECT_EQ(bits.set(0, size), 0U);
  }
}

TEST(ClaimedBits, AgreesWithAPlainRowOfFlags) {
  constexpr std::size_t kSize = 20'000;  // three rows
  std::mt19937 random(1);                // NOLINT(cert-msc51-cpp): the same each time
  for (int round = 0; round < 20; ++round) {
    ClaimedBits bits;
    bits.reset(kSize);
    std::vector<bool> flags(kSize);
    for (int i = 0; i < 200; ++i) {
      const std::size_t first = random() % kSize;
      const std::size_t longest = i % 2 == 0 ? 100 : 9000;
      const std::size_t end = std::min(first + random() % longest, kSize);
      std::size_t expected = 0;
      for (std::size_t bit = first; bit < end; ++bit) {
        expected += flags[bit] ? 0 : 1;
        flags[bit] = true;
      }
      ASSERT_EQ(bits.set(first, end), expected) << round << " " << i;
    }
  }
}

// Word by word this would look at a million words a million times.
TEST(ClaimedBits, LongRangesThatOverlapAreSteppedOver) {
  constexpr std::size_t kSize = std::size_t{1} << 26;
  constexpr std::size_t kRanges = 1'000'000;
  ClaimedBits bits;
  bits.reset(kSize);
  std::size_t added = 0;
  for (std::size_t i = 0; i < kRanges; ++i) {
    added += bits.set(i, kSize - kRanges + i);
  }
  EXPECT_EQ(added, kSize - 1);
}

}  // namespace
}  // namespace vyn::profiling
