#include "input/salvage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/json_log.h"
#include "support/log_message.h"

namespace vyn::profiling {
namespace {

using test::chunkOf;
using test::logOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr SalvageOptions kNoSearch = {false, true};
constexpr SalvageOptions kSearch = {true, true};

// Memory that may be no file, may fail, and counts what is read.
class TestSource : public SeekableSource {
 public:
  explicit TestSource(const std::string& log)
      : m_size(log.size()),
        m_memory({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()}) {}

  std::size_t read(std::uint8_t* to, std::size_t size) override {
    m_hasFailed = m_hasFailed || m_place >= m_failsAt;
    const std::size_t count = m_hasFailed ? 0 : m_memory.read(to, size);
    m_place += count;
    m_bytesRead += count;
    return count;
  }
  bool hasFailed() const override { return m_hasFailed; }
  std::optional<std::uint64_t> size() const override { return m_size; }
  void seek(std::uint64_t offset) override {
    m_memory.seek(offset);
    m_place = offset;
  }

  void makePipe() { m_size.reset(); }
  void failAt(std::uint64_t place) { m_failsAt = place; }
  std::uint64_t bytesRead() const { return m_bytesRead; }

 private:
  std::optional<std::uint64_t> m_size;
  MemorySource m_memory;
  std::uint64_t m_place = 0;
  std::uint64_t m_failsAt = UINT64_MAX;
  std::uint64_t m_bytesRead = 0;
  bool m_hasFailed = false;
};

// Where the chunks stood that were taken, how many messages there were, what was lost.
class Salvaged : public MessageSink {
 public:
  Salvaged(const std::string& log, const SalvageOptions& options) {
    TestSource source(log);
    run(source, options);
  }
  Salvaged(TestSource& source, const SalvageOptions& options) { run(source, options); }

  void chunk(const Chunk& /*chunk*/, const ChunkPlace& place) override {
    places.push_back(place.offset);
  }
  void message(const schema::Message& /*message*/) override { ++messages; }

  std::vector<std::uint64_t> places;
  std::size_t messages = 0;
  std::vector<LostRange> lost;
  WalkEnd end = WalkEnd::kNoRoom;

 private:
  void run(TestSource& source, const SalvageOptions& options) {
    end = salvageLog(
        source, *this, [this](const LostRange& range) { lost.push_back(range); }, options);
  }
};

MATCHER_P4(IsRange, from, to, why, isLast, "") {
  return arg.from == static_cast<std::uint64_t>(from) && arg.to == static_cast<std::uint64_t>(to) &&
         arg.why == why && arg.isLast == isLast;
}

std::string chunkOfExecutions(std::size_t count) {
  return logOf({chunkOf(std::vector<test::Message>(count, test::execute("net")))});
}

// A chunk whose one event has these bytes as its payload and as its text.
std::string chunkAround(const std::string& bytes) {
  flatbuffers::FlatBufferBuilder builder;
  const auto payload =
      builder.CreateVector(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  const auto text = builder.CreateString(bytes);
  schema::EventBuilder made(builder);
  made.add_rawData(payload);
  made.add_stringValue(text);
  const auto events = builder.CreateVector(std::vector{made.Finish()});
  const auto header = schema::CreateMessageHeader(builder);
  const auto metrics = schema::CreateAppMetrics(builder);
  const auto message =
      schema::CreateMessage(builder, header, schema::MethodType::NONE, metrics, 0, events);
  const auto messages = builder.CreateVector(std::vector{message});
  builder.Finish(schema::CreateProfileLog(builder, 0, messages));
  return test::framed(
      {reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()});
}

// The chunk with its root table's place damaged, which no verifier lets pass.
std::string brokenInside(std::string chunk) {
  chunk[7] = '\x7f';
  return chunk;
}

// The chunk with its length made larger by that much.
std::string longer(std::string chunk, std::size_t more) {
  return chunk.replace(0, 4, test::lengthBytes(chunk.size() - 4 + more));
}

class Salvage : public testing::Test {
 protected:
  std::string m_one = chunkOfExecutions(1);
  std::string m_two = chunkOfExecutions(2);
  std::string m_three = chunkOfExecutions(3);
};

TEST_F(Salvage, ASoundLogIsTakenAsItIs) {
  for (const SalvageOptions& options : {kNoSearch, kSearch, SalvageOptions{}}) {
    const Salvaged all(m_one + m_two + m_three, options);
    EXPECT_EQ(all.end, WalkEnd::kEndOfLog);
    EXPECT_THAT(all.places, ElementsAre(0, m_one.size(), m_one.size() + m_two.size()));
    EXPECT_EQ(all.messages, 6);
    EXPECT_THAT(all.lost, IsEmpty());
    EXPECT_THAT(Salvaged("", options).lost, IsEmpty());
  }
}

TEST_F(Salvage, WithoutASearchAllBehindTheFirstDamageIsLost) {
  const std::string log = m_one + brokenInside(m_two) + m_three;
  const Salvaged part(log, kNoSearch);
  EXPECT_EQ(part.end, WalkEnd::kEndOfLog);
  EXPECT_THAT(part.places, ElementsAre(0));
  EXPECT_THAT(part.lost, ElementsAre(IsRange(m_one.size(), log.size(), WalkEnd::kCorrupt, true)));
}

TEST_F(Salvage, ASearchGoesOnBehindEachDamage) {
  const std::string log = brokenInside(m_two) + m_one + brokenInside(m_three) + m_two;
  const Salvaged most(log, kSearch);
  const std::size_t second = m_two.size() + m_one.size();
  EXPECT_THAT(most.places, ElementsAre(m_two.size(), second + m_three.size()));
  EXPECT_EQ(most.messages, 3);
  EXPECT_THAT(most.lost,
              ElementsAre(IsRange(0, m_two.size(), WalkEnd::kCorrupt, false),
                          IsRange(second, second + m_three.size(), WalkEnd::kCorrupt, false)));
}

TEST_F(Salvage, DamagedChunksInARowAreOneLoss) {
  const std::string damaged = brokenInside(m_two) + brokenInside(m_one) + brokenInside(m_three);
  const Salvaged last(damaged + m_one, kSearch);
  EXPECT_THAT(last.places, ElementsAre(damaged.size()));
  EXPECT_THAT(last.lost, ElementsAre(IsRange(0, damaged.size(), WalkEnd::kCorrupt, false)));
}

TEST_F(Salvage, ASoundChunkBetweenDamagedOnesIsReachedByTheirLengths) {
  const std::string log = brokenInside(m_two) + m_one + "\xff\xff\xff\xff" + m_three;
  EXPECT_THAT(Salvaged(log, kSearch).places,
              ElementsAre(m_two.size(), m_two.size() + m_one.size() + 4));
}

TEST_F(Salvage, AnyBytesBetweenChunksArePassedOver) {
  for (std::size_t size = 1; size < 50; ++size) {
    for (const char byte : {'\0', '\x0c', '\xff'}) {
      const std::string log = m_one + std::string(size, byte) + m_two;
      const Salvaged both(log, kSearch);
      EXPECT_THAT(both.places, ElementsAre(0, m_one.size() + size)) << size;
      EXPECT_EQ(both.lost.size(), 1);
    }
  }
}

TEST_F(Salvage, AChunkWhoseLengthIsDamagedIsLostAlone) {
  for (const std::string& length :
       {std::string("\0\0\0\0", 4), std::string("\xff\xff\xff\xff"),
        std::string("\xff\xff\xff\x7e"), std::string("\x20\0\0\0", 4)}) {
    const std::string log = m_one + std::string(m_two).replace(0, 4, length) + m_three;
    EXPECT_THAT(Salvaged(log, kSearch).places, ElementsAre(0, m_one.size() + m_two.size()));
  }
}

// Too long by any number of bytes it still verifies, and others begin inside of it. A few bytes may
// be padding.
TEST_F(Salvage, AChunkThatSwallowsTheNextIsLostInItsPlace) {
  for (std::size_t more = 8; more <= m_two.size() + m_three.size(); ++more) {
    const std::string log = longer(m_one, more) + m_two + m_three + m_one;
    EXPECT_THAT(Salvaged(log, kSearch).places,
                ElementsAre(m_one.size(), m_one.size() + m_two.size(),
                            m_one.size() + m_two.size() + m_three.size()))
        << more;
  }
}

TEST_F(Salvage, PaddingBehindASoundBufferIsItsOwn) {
  const std::string padded = longer(m_one, 9) + std::string(9, '\0');
  const std::string log = padded + brokenInside(m_two) + m_three;
  EXPECT_THAT(Salvaged(log, kSearch).places, ElementsAre(0, padded.size() + m_two.size()));
}

TEST_F(Salvage, ALogInsideOfAChunkIsNotTakenForTheLogItself) {
  const std::string outer = chunkAround(m_one + m_two + m_three);
  const std::size_t behind = m_one.size() + outer.size();
  EXPECT_THAT(Salvaged(m_one + brokenInside(outer) + m_two, kSearch).places,
              ElementsAre(0, behind));
  EXPECT_THAT(Salvaged(m_one + brokenInside(outer) + brokenInside(outer) + m_two, kSearch).places,
              ElementsAre(0, behind + outer.size()));
  for (const char* length : {"\xff\xff\xff\xff", "\xff\xff\xff\x7e", "\x20\x01\x01\x01"}) {
    const std::string damaged = std::string(outer).replace(0, 4, length);
    EXPECT_THAT(Salvaged(m_one + damaged + m_two, kSearch).places, ElementsAre(0, behind));
    EXPECT_THAT(Salvaged(m_one + damaged, kSearch).places, ElementsAre(0));
  }
  EXPECT_THAT(Salvaged(m_one + brokenInside(outer), kSearch).places, ElementsAre(0));
  EXPECT_THAT(Salvaged(m_one + brokenInside(outer) + brokenInside(outer), kSearch).places,
              ElementsAre(0));
}

TEST_F(Salvage, WhereBytesAreMissingTheNextChunkStandsNearby) {
  const std::string outer = chunkAround(m_one + m_two + m_three);
  for (const std::size_t size : {1U, 5U, 40U}) {
    std::string shorter = outer;
    shorter.erase(100, size);
    EXPECT_THAT(Salvaged(m_one + shorter + m_two + m_one, kSearch).places,
                ElementsAre(0, m_one.size() + shorter.size(),
                            m_one.size() + shorter.size() + m_two.size()));
    std::string longer = outer;
    longer.insert(100, size, 'x');
    EXPECT_THAT(Salvaged(m_one + longer + m_two, kSearch).places,
                ElementsAre(0, m_one.size() + longer.size()));
  }
}

// A few bytes verify that nobody wrote as a chunk.
TEST_F(Salvage, AChunkThatSaysNothingIsNotFound) {
  const std::string empty = logOf({"{}"});
  const std::string header = logOf({"{header:{timeScale:1}}"});
  const std::string named = logOf({"{header:{backendVersion:\"1\"}}"});
  const std::string junk(20, '\xff');
  EXPECT_THAT(Salvaged(junk + empty, kSearch).places, IsEmpty());
  EXPECT_THAT(Salvaged(junk + header, kSearch).places, IsEmpty());
  EXPECT_THAT(Salvaged(junk + named, kSearch).places, ElementsAre(junk.size()));
  EXPECT_THAT(Salvaged(empty + header, kSearch).lost, IsEmpty());
}

TEST_F(Salvage, WhatIsFoundMustBeFollowedByAChunkOrTheEnd) {
  const std::string junk(20, '\xff');
  EXPECT_THAT(Salvaged(junk + m_one + junk, kSearch).places, IsEmpty());
  EXPECT_THAT(Salvaged(junk + m_one + std::string(3, '\0'), kSearch).places, IsEmpty());
  EXPECT_THAT(Salvaged(junk + m_one + m_two.substr(0, 60), kSearch).places,
              ElementsAre(junk.size()));
}

TEST_F(Salvage, AChunkThatTheEndCutsIsLostWhereWholeOnesAreWanted) {
  const std::string cut = longer(m_two, 5);  // sound though its end is missing
  const std::string log = m_one + cut;
  for (const SalvageOptions& options : {kNoSearch, kSearch}) {
    const Salvaged whole(log, options);
    EXPECT_THAT(whole.places, ElementsAre(0));
    ASSERT_THAT(whole.lost,
                ElementsAre(IsRange(m_one.size(), log.size(), WalkEnd::kCutShort, true)));
    EXPECT_EQ(whole.lost.front().place.present, m_two.size() - 4);
  }
  for (const bool search : {false, true}) {
    const Salvaged all(log, {search, false});
    EXPECT_EQ(all.messages, 3);
    ASSERT_THAT(all.lost, ElementsAre(IsRange(m_one.size(), log.size(), WalkEnd::kCutShort, true)));
    EXPECT_TRUE(all.lost.front().isTaken);
    EXPECT_THAT(Salvaged(m_one + m_two.substr(0, 80), {search, false}).lost.size(), 1);
  }
}

TEST_F(Salvage, UpToThreeBytesAtTheEndAreLostWhereWholeChunksAreWanted) {
  for (std::size_t count = 1; count <= 3; ++count) {
    const std::string log = m_one + m_two.substr(0, count);
    EXPECT_THAT(Salvaged(log, kSearch).lost,
                ElementsAre(IsRange(m_one.size(), log.size(), WalkEnd::kPartialLength, true)));
    EXPECT_THAT(Salvaged(log, {}).lost, IsEmpty());
  }
}

// A chunk that a damaged length makes the rest of the log is not read to find that out.
TEST_F(Salvage, AChunkThatDoesNotFitIsNotRead) {
  const std::string log = m_one + "\xff\xff\xff\x7e" + std::string(1'000'000, 'x');
  TestSource source(log);
  EXPECT_EQ(Salvaged(source, kNoSearch).lost.size(), 1);
  EXPECT_LT(source.bytesRead(), 1000);
}

// Five bytes: a length and a byte of the chunk.
TEST_F(Salvage, TheBeginningOfAChunkIsLost) {
  const std::string log = std::string("\x28\xdf\0\0\0", 5);
  EXPECT_THAT(Salvaged(log, kNoSearch).lost,
              ElementsAre(IsRange(0U, 5U, WalkEnd::kCutShort, true)));
}

TEST_F(Salvage, APipeIsReadToItsEnd) {
  for (const std::string& damage : {brokenInside(m_two), std::string("\xff\xff\xff\xff"),
                                    m_two.substr(0, 60), std::string("ab")}) {
    const std::string log = m_one + damage;
    TestSource source(log);
    source.makePipe();
    const Salvaged part(source, kSearch);
    EXPECT_THAT(part.places, ElementsAre(0));
    ASSERT_EQ(part.lost.size(), 1);
    EXPECT_EQ(part.lost.front().to, log.size());
  }
}

TEST_F(Salvage, WhatTheSystemCannotReadIsNoLoss) {
  const std::string log = m_one + brokenInside(m_two) + std::string(3'000'000, '\xff') + m_three;
  for (const std::size_t place : {m_one.size(), m_one.size() + 10, log.size() - 100'000}) {
    TestSource source(log);
    source.failAt(place);
    const Salvaged part(source, kSearch);
    EXPECT_EQ(part.end, WalkEnd::kReadError) << place;
    EXPECT_THAT(part.lost, IsEmpty());
  }
}

// Each beginning of a chunk announces the rest of the log.
TEST_F(Salvage, CandidatesInVainCostNoMoreThanTheirBudget) {
  const std::string start = m_one.substr(4, m_one.size() - 8);
  std::string log = "\xff\xff\xff\xff";
  std::size_t left = 2'000'000;
  while (left > start.size() + 8) {
    log += test::lengthBytes(left - 4) + start;
    left -= start.size() + 4;
  }
  log += std::string(left, '\xff');
  TestSource source(log);
  EXPECT_THAT(Salvaged(source, kSearch).places.size(), 0);
  EXPECT_LT(source.bytesRead(), 9 * log.size() + (std::size_t{16} << 20) + 3 * log.size());
}

}  // namespace
}  // namespace vyn::profiling
