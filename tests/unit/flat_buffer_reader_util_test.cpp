#include "input/flat_buffer_reader_util.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/json_log.h"

namespace vyn::profiling {
namespace {

using test::printedBy;

ChunkBuffer bufferOf(const std::string& bytes) {
  auto buffer = std::make_shared<std::vector<std::uint8_t>>();
  buffer->reserve(bytes.size());
  std::copy(bytes.begin(), bytes.end(), buffer->data());
  return buffer;
}

class ReaderUtil : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug)); }
  void TearDown() override { log::terminateLogging(); }

  ChunkBuffer load(const std::string& json) {
    ChunkBuffer chunk = bufferOf(test::chunkBytes(json));
    EXPECT_TRUE(m_util.load(chunk));
    return chunk;
  }

  FlatBufferReaderUtil m_util;
};

const std::string kTwoMessages =
    "{messages:[{header:{sequenceNumber:1},appMetrics:{}},"
    "{header:{sequenceNumber:2},appMetrics:{}}]}";

TEST_F(ReaderUtil, StartsWithoutHeaderAndMessages) {
  EXPECT_EQ(m_util.header(), nullptr);
  const std::string printed = printedBy([&] { EXPECT_EQ(m_util.nextMessage(), nullptr); });
  EXPECT_EQ(printed,
            "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: "
            "0)\n");
}

TEST_F(ReaderUtil, HandsOutMessagesInOrderAndThenNone) {
  const ChunkBuffer chunk = load(kTwoMessages);
  EXPECT_EQ(m_util.nextMessage()->header()->sequenceNumber(), 1U);
  EXPECT_EQ(m_util.nextMessage()->header()->sequenceNumber(), 2U);
  const std::string line =
      "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: 2)\n";
  EXPECT_EQ(printedBy([&] {
              EXPECT_EQ(m_util.nextMessage(), nullptr);
              EXPECT_EQ(m_util.nextMessage(), nullptr);
            }),
            line + line);
}

TEST_F(ReaderUtil, ChunkWithoutMessagesHasNone) {
  const ChunkBuffer chunk = load("{header:{timestamp:5}}");
  EXPECT_EQ(m_util.header()->timestamp(), 5U);
  EXPECT_EQ(printedBy([&] { EXPECT_EQ(m_util.nextMessage(), nullptr); }),
            "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: "
            "0)\n");
}

TEST_F(ReaderUtil, KeepsTheFirstHeaderThatItMeets) {
  const ChunkBuffer first = load("{}");
  EXPECT_EQ(m_util.header(), nullptr);
  const ChunkBuffer second = load("{header:{timestamp:2}}");
  const ChunkBuffer third = load("{header:{timestamp:3}}");
  EXPECT_EQ(m_util.header()->timestamp(), 2U);
}

TEST_F(ReaderUtil, CorruptChunkLeavesItWhereItStood) {
  const ChunkBuffer chunk = load(kTwoMessages);
  m_util.nextMessage();
  const std::string printed =
      printedBy([&] { EXPECT_FALSE(m_util.load(bufferOf("not a FlatBuffers buffer"))); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Corrupted flatbuffer binary stream\n");
  EXPECT_EQ(m_util.nextMessage()->header()->sequenceNumber(), 2U);
}

TEST_F(ReaderUtil, HoldsNothingOfAReleasedChunk) {
  const ChunkBuffer chunk = load("{header:{},messages:[{header:{},appMetrics:{}}]}");
  m_util.release();
  EXPECT_EQ(m_util.header(), nullptr);
  printedBy([&] { EXPECT_EQ(m_util.nextMessage(), nullptr); });
}

TEST_F(ReaderUtil, EmptyBufferIsCorrupt) {
  printedBy([&] { EXPECT_FALSE(m_util.load(bufferOf(""))); });
}

TEST_F(ReaderUtil, NextChunkStartsAtItsFirstMessage) {
  const ChunkBuffer first = load(kTwoMessages);
  m_util.nextMessage();
  const ChunkBuffer second = load(kTwoMessages);
  EXPECT_EQ(m_util.nextMessage()->header()->sequenceNumber(), 1U);
}

}  // namespace
}  // namespace vyn::profiling
