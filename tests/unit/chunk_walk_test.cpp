#include "input/chunk_walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

#include "support/json_log.h"

namespace vyn::profiling {
namespace {

using test::framed;
using testing::ElementsAre;

std::span<const std::uint8_t> bytesOfText(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Takes chunks until one begins with an exclamation mark, and never an empty one.
class Recorder : public ChunkSink {
 public:
  ChunkBuffer roomFor(std::size_t size) override {
    return size > m_room ? nullptr : makeChunk(size);
  }
  bool take(const Chunk& chunk, const ChunkPlace& place) override {
    const auto bytes = chunk.bytes();
    m_chunks.emplace_back(bytes.begin(), bytes.end());
    m_offsets.push_back(place.offset);
    EXPECT_EQ(place.index + 1, m_chunks.size());
    return !bytes.empty() && bytes.front() != '!';
  }

  const std::vector<std::string>& chunks() const { return m_chunks; }
  const std::vector<std::uint64_t>& offsets() const { return m_offsets; }
  void setRoom(std::size_t size) { m_room = size; }

 private:
  std::size_t m_room = 1000;
  std::vector<std::string> m_chunks;
  std::vector<std::uint64_t> m_offsets;
};

WalkResult walk(const std::string& log, Recorder& recorder) {
  MemorySource source(bytesOfText(log));
  return walkChunks(source, recorder);
}

const std::string kTwelve = "abcdefghijkl";

TEST(ChunkWalk, EmptyLogHasNoChunk) {
  Recorder recorder;
  const WalkResult result = walk("", recorder);
  EXPECT_EQ(result.end, WalkEnd::kEndOfLog);
  EXPECT_TRUE(result.isAccepted);
  EXPECT_THAT(recorder.chunks(), ElementsAre());
}

TEST(ChunkWalk, ChunksComeInOrderWithExactlyTheirBytes) {
  Recorder recorder;
  const WalkResult result = walk(framed(kTwelve) + framed(kTwelve + "m"), recorder);
  EXPECT_THAT(recorder.chunks(), ElementsAre(kTwelve, kTwelve + "m"));
  EXPECT_THAT(recorder.offsets(), ElementsAre(0, 16));
  EXPECT_EQ(result.end, WalkEnd::kEndOfLog);
  EXPECT_TRUE(result.isAccepted);
  EXPECT_EQ(result.soundChunks, 2U);
  EXPECT_EQ(result.soundBytes, 33U);
}

TEST(ChunkWalk, PartOfALengthIsTheEnd) {
  for (const std::string rest : {"\x0c", "\x0c\x01", "\x0c\x01\x02"}) {
    Recorder recorder;
    const WalkResult result = walk(framed(kTwelve) + rest, recorder);
    EXPECT_THAT(recorder.chunks(), ElementsAre(kTwelve));
    EXPECT_EQ(result.end, WalkEnd::kPartialLength);
    EXPECT_TRUE(result.isAccepted);
    EXPECT_EQ(result.last.offset, 16U);
    EXPECT_EQ(result.last.present, rest.size());
  }
}

TEST(ChunkWalk, CutChunkHasTheBytesThatAreThere) {
  Recorder recorder;
  const WalkResult result = walk(framed(kTwelve) + framed("!" + kTwelve).substr(0, 9), recorder);
  EXPECT_THAT(recorder.chunks(), ElementsAre(kTwelve, "!abcd"));
  EXPECT_EQ(result.end, WalkEnd::kCutShort);
  EXPECT_FALSE(result.isAccepted);
  EXPECT_EQ(result.last.index, 1U);
  EXPECT_EQ(result.last.offset, 16U);
  EXPECT_EQ(result.last.announced, 13U);
  EXPECT_EQ(result.last.present, 5U);
  EXPECT_EQ(result.soundChunks, 1U);
  EXPECT_EQ(result.soundBytes, 16U);
}

TEST(ChunkWalk, CutChunkThatTheSinkTakesIsTheEndOfAnAcceptedLog) {
  Recorder recorder;
  const WalkResult result = walk(framed(kTwelve).substr(0, 9), recorder);
  EXPECT_THAT(recorder.chunks(), ElementsAre("abcde"));
  EXPECT_EQ(result.end, WalkEnd::kCutShort);
  EXPECT_TRUE(result.isAccepted);
  EXPECT_EQ(result.soundChunks, 0U);
}

TEST(ChunkWalk, LengthThatNoChunkHasGivesAnEmptyOne) {
  for (const std::string& length :
       {std::string(4, '\0'), std::string("\x0b\0\0\0", 4), std::string("\xff\xff\xff\x7f"),
        std::string("\xff\xff\xff\xff")}) {
    Recorder recorder;
    const WalkResult result = walk(length + kTwelve, recorder);
    EXPECT_THAT(recorder.chunks(), ElementsAre(""));
    EXPECT_EQ(result.end, WalkEnd::kImpossibleLength);
    EXPECT_FALSE(result.isAccepted);
  }
}

TEST(ChunkWalk, RefusedChunkEndsIt) {
  Recorder recorder;
  const WalkResult result =
      walk(framed(kTwelve) + framed("!" + kTwelve) + framed(kTwelve), recorder);
  EXPECT_EQ(recorder.chunks().size(), 2U);
  EXPECT_EQ(result.end, WalkEnd::kCorrupt);
  EXPECT_EQ(result.last.offset, 16U);
  EXPECT_EQ(result.soundChunks, 1U);
}

TEST(ChunkWalk, SinkWithoutRoomEndsIt) {
  Recorder recorder;
  recorder.setRoom(12);
  const WalkResult result = walk(framed(kTwelve) + framed(kTwelve + "m"), recorder);
  EXPECT_THAT(recorder.chunks(), ElementsAre(kTwelve));
  EXPECT_EQ(result.end, WalkEnd::kNoRoom);
  EXPECT_FALSE(result.isAccepted);
}

// Gives a whole length and then fails.
class FailingSource : public ByteSource {
 public:
  explicit FailingSource(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}
  std::size_t read(std::uint8_t* to, std::size_t size) override {
    const std::size_t count = m_bytes.read(to, size);
    m_hasFailed = count < size;
    return count;
  }
  bool hasFailed() const override { return m_hasFailed; }

 private:
  MemorySource m_bytes;
  bool m_hasFailed = false;
};

TEST(ChunkWalk, FailingSourceEndsItAsADamagedLog) {
  const std::string log = framed("!" + kTwelve);
  for (const std::size_t size : {std::size_t{0}, std::size_t{2}, std::size_t{4}, log.size() - 1}) {
    FailingSource source(bytesOfText(log).first(size));
    Recorder recorder;
    const WalkResult result = walkChunks(source, recorder);
    EXPECT_EQ(result.end, WalkEnd::kReadError) << size;
    EXPECT_FALSE(result.isAccepted);
    EXPECT_EQ(recorder.chunks().size(), 1U);
  }
}

}  // namespace
}  // namespace vyn::profiling
