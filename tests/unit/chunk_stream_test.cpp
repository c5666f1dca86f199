#include "input/chunk_stream.h"

#include <gtest/gtest.h>

#include "support/json_log.h"
#include "support/temp_folder.h"

namespace vyn::profiling {
namespace {

class Chunks : public testing::Test {
 protected:
  ChunkStream stream(const std::string& bytes) { return ChunkStream(m_folder.add("log", bytes)); }

  static std::string bytesOf(const ChunkBuffer& chunk) {
    return {reinterpret_cast<const char*>(chunk->data()), chunk->capacity()};
  }

  test::TempFolder m_folder;
};

const std::string kTwelve = "abcdefghijkl";

TEST_F(Chunks, MissingFileIsNotOpen) {
  EXPECT_FALSE(ChunkStream(m_folder.path("missing")).isOpen());
}

TEST_F(Chunks, EmptyFileHasNone) { EXPECT_EQ(stream("").next(), nullptr); }

TEST_F(Chunks, ComeInOrderWithExactlyTheirBytes) {
  ChunkStream chunks = stream(test::framed(kTwelve) + test::framed(kTwelve + "m"));
  EXPECT_EQ(bytesOf(chunks.next()), kTwelve);
  EXPECT_EQ(bytesOf(chunks.next()), kTwelve + "m");
  EXPECT_EQ(chunks.next(), nullptr);
}

TEST_F(Chunks, SizeStaysZeroWhileTheCapacityCountsTheBytes) {
  const ChunkBuffer chunk = stream(test::framed(kTwelve)).next();
  EXPECT_EQ(chunk->size(), 0U);
  EXPECT_EQ(chunk->capacity(), 12U);
}

TEST_F(Chunks, PartOfALengthIsTheEnd) {
  for (const char* rest : {"\x0c", "\x0c\x01", "\x0c\x01\x02"}) {
    ChunkStream chunks = stream(test::framed(kTwelve) + rest);
    EXPECT_NE(chunks.next(), nullptr);
    EXPECT_EQ(chunks.next(), nullptr);
  }
}

TEST_F(Chunks, CutChunkHoldsTheBytesThatAreThere) {
  const std::string cut = test::framed(kTwelve).substr(0, 9);
  EXPECT_EQ(bytesOf(stream(cut).next()), "abcde");
}

TEST_F(Chunks, LongestLengthOnAShortFileHoldsTheBytesThatAreThere) {
  EXPECT_EQ(bytesOf(stream("\xfe\xff\xff\x7f" + kTwelve).next()), kTwelve);
}

TEST_F(Chunks, LengthThatNoChunkHasGivesAnEmptyOne) {
  const std::string zero("\0\0\0\0", 4);
  const std::string eleven("\x0b\0\0\0", 4);
  for (const std::string& length :
       {zero, eleven, std::string("\xff\xff\xff\x7f"), std::string("\xff\xff\xff\xff")}) {
    EXPECT_EQ(stream(length + kTwelve).next()->capacity(), 0U);
  }
}

TEST_F(Chunks, FolderEndsAsADamagedLog) {
  ChunkStream chunks(m_folder.path(""));
  ASSERT_TRUE(chunks.isOpen());
  EXPECT_EQ(chunks.next()->capacity(), 0U);
}

}  // namespace
}  // namespace vyn::profiling
