#include <gtest/gtest.h>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

TEST(Framing, HasSeveralChunksUnlessAskedOtherwise) {
  EXPECT_GT(MadeLog::withOptions("").chunkCount(), 1U);
}

TEST(Framing, OnlyFirstChunkHasHeader) {
  const MadeLog log = MadeLog::withOptions("--chunk-size 10KB");
  ASSERT_GT(log.chunkCount(), 3U);
  EXPECT_NE(log.chunk(0).header(), nullptr);
  for (std::size_t i = 1; i < log.chunkCount(); ++i) {
    EXPECT_EQ(log.chunk(i).header(), nullptr) << i;
  }
}

TEST(Framing, ChunkEndsWithMessageThatReachesItsSize) {
  const MadeLog log = MadeLog::withOptions("--chunk-size 30KB --object-payloads 0");
  constexpr std::size_t kLargestMessage = 16'000;  // bytes
  ASSERT_GT(log.chunkCount(), 2U);
  for (std::size_t i = 0; i + 1 < log.chunkCount(); ++i) {
    EXPECT_GE(log.chunkSize(i), 30'000U) << i;
    EXPECT_LT(log.chunkSize(i), 30'000U + kLargestMessage) << i;
  }
}

TEST(Framing, SmallestChunkSizeGivesEachMessageAChunk) {
  const MadeLog log = MadeLog::withOptions("--chunk-size 1");
  for (std::size_t i = 0; i < log.chunkCount(); ++i) {
    EXPECT_EQ(log.chunk(i).messages()->size(), 1U) << i;
  }
}

TEST(Framing, LargeChunkSizeGivesOneChunk) {
  EXPECT_EQ(MadeLog::withOptions("--chunk-size 1GB").chunkCount(), 1U);
}

TEST(Framing, ChunkSizeChangesNoMessage) {
  const TempFolder folder;
  ASSERT_EQ(runMaker(folder, "-o a --record a.jsonl --chunk-size 1").exitStatus, 0);
  ASSERT_EQ(runMaker(folder, "-o b --record b.jsonl --chunk-size 1MB").exitStatus, 0);
  EXPECT_EQ(readFile(folder.path("a.jsonl")), readFile(folder.path("b.jsonl")));
}

}  // namespace
}  // namespace vyn::logmaker::test
