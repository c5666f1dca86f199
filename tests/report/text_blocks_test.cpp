#include "report/text_blocks.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vyn::profiling {
namespace {

TEST(TextBlocks, GiveBackTextsOfAnyLength) {
  for (const std::size_t length : {0U, 1U, 65'535U, 65'536U, 65'537U, 131'072U, 300'000U}) {
    std::string expected;
    TextBlocks blocks;
    std::ostream stream(&blocks);
    while (expected.size() < length) {
      const std::string piece = std::to_string(expected.size()).substr(0, length - expected.size());
      stream << piece;
      expected += piece;
    }
    std::ostringstream written;
    blocks.writeTo(written);
    EXPECT_EQ(written.str(), expected);
  }
}

TEST(TextBlocks, TakeSingleBytesAndPiecesLongerThanABlock) {
  TextBlocks blocks;
  std::ostream stream(&blocks);
  stream.put('a');
  stream << std::string(200'000, 'b');
  stream.put('c');
  std::ostringstream written;
  blocks.writeTo(written);
  EXPECT_EQ(written.str(), "a" + std::string(200'000, 'b') + "c");
}

}  // namespace
}  // namespace vyn::profiling
