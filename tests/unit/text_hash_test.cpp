#include "base/text_hash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vyn::profiling {
namespace {

constexpr std::uint64_t kMultiplier = 0xC6A4A7935BD1E995;
constexpr std::uint64_t kTopBit = std::uint64_t{1} << 63;
constexpr int kShift = 47;

std::uint64_t inverse(std::uint64_t odd) {
  std::uint64_t result = odd;
  for (int i = 0; i < 6; ++i) {
    result *= 2 - odd * result;
  }
  return result;
}

// The eight bytes that the standard library's hash mixes to `mixed`.
std::string blockMixedTo(std::uint64_t mixed) {
  std::uint64_t word = mixed * inverse(kMultiplier);
  word ^= word >> kShift;
  word *= inverse(kMultiplier);
  std::string block(sizeof(word), '\0');
  std::memcpy(block.data(), &word, sizeof(word));
  return block;
}

// Two neighbours whose top bits differ cancel each other out, whatever came before them: each pair
// of blocks doubles the number of texts with one hash.
std::vector<std::string> collidingTexts(int pairs) {
  std::vector<std::string> texts = {""};
  for (std::uint64_t pair = 1; std::cmp_less_equal(pair, pairs); ++pair) {
    const std::string plain = blockMixedTo(pair) + blockMixedTo(pair);
    const std::string flipped = blockMixedTo(pair ^ kTopBit) + blockMixedTo(pair ^ kTopBit);
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
      longer.push_back(text + plain);
      longer.push_back(text + flipped);
    }
    texts = std::move(longer);
  }
  return texts;
}

TEST(TextHash, TextsThatCollideInTheStandardHashStayApart) {
  const std::vector<std::string> texts = collidingTexts(10);
  std::set<std::size_t> standardHashes;
  std::set<std::size_t> hashes;
  for (const std::string& text : texts) {
    standardHashes.insert(std::hash<std::string>{}(text));
    hashes.insert(TextHash{}(text));
  }
  ASSERT_EQ(standardHashes.size(), 1U) << "the standard hash has changed: find new texts";
  EXPECT_EQ(hashes.size(), texts.size());
}

TEST(TextHash, IsTheSameForEqualTextsInOneProcess) {
  EXPECT_EQ(TextHash{}(std::string("node")), TextHash{}(std::string_view("nodes").substr(0, 4)));
}

}  // namespace
}  // namespace vyn::profiling
