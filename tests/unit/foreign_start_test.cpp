#include "input/foreign_start.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace vyn::profiling {
namespace {

using namespace std::string_view_literals;

// The start of a chunk with that length, whose first table stands at that place.
std::string chunkStart(std::uint32_t length, std::uint32_t table) {
  std::string start(kLongestForeignStart, '\0');
  for (unsigned i = 0; i < sizeof(length); ++i) {
    start[i] = static_cast<char>(length >> 8 * i);
    start[sizeof(length) + i] = static_cast<char>(table >> 8 * i);
  }
  return start;
}

bool isForeign(std::string_view start) { return recogniseForeignStart(start).has_value(); }

TEST(ForeignStart, ALengthMayLookLikeAFormat) {
  for (const std::uint32_t length : {0x0A7BU, 0x227BU, 0x207BU, 0x0A5BU, 0x7B5BU, 0x8B1FU,  //
                                     0x10A7BU, 0x6E0A7BU, 0x20200A7BU, 0x088B1FU, 0x08088B1FU,
                                     0x04034B50U, 0x39685A42U, 0x587A37FDU}) {
    for (const std::uint32_t table : {8U, 12U, 16U, 20U, 48U}) {
      EXPECT_FALSE(isForeign(chunkStart(length, table))) << length << " " << table;
    }
  }
}

TEST(ForeignStart, AShortLengthIsEnough) {
  EXPECT_FALSE(isForeign("{\n\0\0"sv));
  EXPECT_FALSE(isForeign("\x1f\x8b\0\0\x10"sv));
}

// As the usual programs write them, without a time and without options where they can be left out.
TEST(ForeignStart, FilesOfOtherFormatsAreKnown) {
  EXPECT_TRUE(isForeign("\x1f\x8b\x08\0\0\0\0\0\0\x03\x4b\x4c\x4a\xe6\x02\0"sv));
  EXPECT_TRUE(isForeign("\x1f\x8b\x08\x08\x21\x43\x65\x69\0\x03run.log\0"sv));
  EXPECT_TRUE(
      isForeign("PK\x03\x04\x14\0\0\0\x08\0\x21\x5a\x75\x5b\x01\x02\x03\x04\x05\0\0\0"
                "\x07\0\0\0\x07\0\x1c\0ru"sv));
  EXPECT_TRUE(
      isForeign("PK\x03\x04\x14\0\x08\0\x08\0\x21\x5a\x75\x5b\0\0\0\0\0\0\0\0"
                "\0\0\0\0\x07\0\x1c\0ru"sv));
  EXPECT_TRUE(isForeign("BZh91AY&SY\x01\x02\x03\x04"sv));
  EXPECT_TRUE(isForeign("\xfd\x37zXZ\0\0\x04\xe6\xd6\xb4\x46"sv));
  EXPECT_TRUE(isForeign("\x28\xb5\x2f\xfd\x24\x07\x39\0\0run.log"sv));
  EXPECT_TRUE(isForeign("{\n    \"metadata\": {\n"sv));
  EXPECT_TRUE(isForeign("{\"a\":1}"sv));
  EXPECT_TRUE(isForeign("{ }"sv));
}

}  // namespace
}  // namespace vyn::profiling
