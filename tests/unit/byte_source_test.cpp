#include "input/byte_source.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "support/temp_folder.h"

namespace vyn::profiling {
namespace {

std::string readFrom(ByteSource& source, std::size_t size) {
  std::string text(size, '?');
  text.resize(source.read(reinterpret_cast<std::uint8_t*>(text.data()), size));
  return text;
}

void expectSevenBytes(ByteSource& source) {
  EXPECT_EQ(readFrom(source, 3), "abc");
  EXPECT_EQ(readFrom(source, 0), "");
  EXPECT_EQ(readFrom(source, 9), "defg");
  EXPECT_EQ(readFrom(source, 1), "");
  EXPECT_FALSE(source.hasFailed());
}

TEST(ByteSources, MemoryGivesItsBytesInOrder) {
  constexpr std::array<std::uint8_t, 7> kBytes{'a', 'b', 'c', 'd', 'e', 'f', 'g'};
  MemorySource source(kBytes);
  expectSevenBytes(source);
}

TEST(ByteSources, FileGivesItsBytesInOrder) {
  const test::TempFolder folder;
  FileSource source(folder.add("log", "abcdefg"));
  ASSERT_TRUE(source.isOpen());
  expectSevenBytes(source);
}

TEST(ByteSources, MissingFileIsNotOpen) {
  const test::TempFolder folder;
  EXPECT_FALSE(FileSource(folder.path("missing")).isOpen());
}

TEST(ByteSources, FolderFailsWhenItIsRead) {
  const test::TempFolder folder;
  FileSource source(folder.path(""));
  ASSERT_TRUE(source.isOpen());
  EXPECT_EQ(readFrom(source, 1), "");
  EXPECT_TRUE(source.hasFailed());
}

}  // namespace
}  // namespace vyn::profiling
