#include <gtest/gtest.h>

#include "logmaker/noise.h"
#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

std::string madeBytes(const std::string& options) {
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, "-o log " + options).exitStatus, 0);
  return readFile(folder.path("log"));
}

TEST(Reproducibility, SameSeedGivesSameBytes) {
  EXPECT_EQ(madeBytes("--seed 5 --async --components"), madeBytes("--seed 5 --async --components"));
  EXPECT_EQ(madeBytes("--size 1MB"), madeBytes("--size 1MB"));
}

TEST(Reproducibility, OtherSeedGivesOtherBytes) {
  EXPECT_NE(madeBytes("--seed 5"), madeBytes("--seed 6"));
}

TEST(Reproducibility, SeedIsOneUnlessGiven) { EXPECT_EQ(madeBytes(""), madeBytes("--seed 1")); }

TEST(Reproducibility, StandardOutputGetsTheSameBytes) {
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, "-o -").output, madeBytes(""));
}

TEST(Reproducibility, RecordChangesNothingInTheLog) {
  EXPECT_EQ(madeBytes("--record record"), madeBytes(""));
}

// The number that the C++ standard gives for this engine.
TEST(Reproducibility, NoiseIsTheSameOnEveryMachine) {
  Noise noise(5489);
  for (int i = 1; i < 10'000; ++i) {
    noise.next();
  }
  EXPECT_EQ(noise.next(), 9981545732273789042U);
}

TEST(Reproducibility, NoiseStaysInItsRange) {
  Noise noise(1);
  bool reachedLow = false;
  bool reachedHigh = false;
  for (int i = 0; i < 1'000; ++i) {
    const std::uint64_t value = noise.vary(100, 5);
    ASSERT_GE(value, 95U);
    ASSERT_LE(value, 105U);
    reachedLow = reachedLow || value == 95;
    reachedHigh = reachedHigh || value == 105;
  }
  EXPECT_TRUE(reachedLow);
  EXPECT_TRUE(reachedHigh);
}

}  // namespace
}  // namespace vyn::logmaker::test
