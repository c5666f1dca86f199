#include "json/block_output_stream.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace vyn::profiling {
namespace {

constexpr std::size_t kBlockSize = BlockOutputStream::kBlockSize;

// What comes out when these calls meet the end of a block that `left` bytes are missing from.
template <typename Calls>
std::string textBehind(std::size_t left, const Calls& calls) {
  std::ostringstream file;
  BlockOutputStream stream(file);
  stream.put(std::string(kBlockSize - left, 'x').data(), kBlockSize - left);
  calls(stream);
  stream.writeBlock();
  const std::string text = std::move(file).str();
  EXPECT_EQ(text.find_first_not_of('x'), kBlockSize - left);
  return text.substr(kBlockSize - left);
}

TEST(BlockOutputStream, RepeatsACharacterOverTheEndOfABlock) {
  for (std::size_t left = 0; left <= 24; ++left) {
    for (std::size_t count = 1; count <= 24; ++count) {
      const std::string text = textBehind(left, [&](BlockOutputStream& stream) {
        stream.putRepeated(' ', count);
        stream.Put('|');
        stream.putRepeated('.', count);
      });
      ASSERT_EQ(text, std::string(count, ' ') + "|" + std::string(count, '.')) << left;
    }
  }
}

TEST(BlockOutputStream, RepeatsACharacterOverWholeBlocks) {
  for (const std::size_t count : {kBlockSize - 1, kBlockSize, kBlockSize + 1, 3 * kBlockSize + 7}) {
    for (const std::size_t left : {std::size_t{0}, std::size_t{1}, std::size_t{100}}) {
      const std::string text = textBehind(left, [&](BlockOutputStream& stream) {
        stream.putRepeated(' ', count);
        stream.put("end", 3);
      });
      ASSERT_TRUE(text == std::string(count, ' ') + "end") << count << " " << left;
    }
  }
}

TEST(BlockOutputStream, PutsATextOverTheEndOfABlock) {
  for (std::size_t left = 0; left <= 12; ++left) {
    for (const std::string text : {"", "a", "ab", "abcdefghijkl"}) {
      ASSERT_EQ(textBehind(left,
                           [&](BlockOutputStream& stream) {
                             stream.put(text.data(), text.size());
                             stream.put(text.data(), text.size());
                             stream.Put('|');
                           }),
                text + text + "|")
          << left;
    }
  }
}

}  // namespace
}  // namespace vyn::profiling
