#include "analysis/facts_collector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/log_message.h"
#include "support/shared_log.h"

namespace vyn::profiling {
namespace {

using test::chunkBytes;
using test::framed;
using test::logOf;
using test::logWith;
using test::Message;
using testing::ElementsAre;
using testing::IsEmpty;

LogFacts factsOf(const std::string& log) {
  MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  FactsCollector collector;
  const WalkResult walk = walkLog(source, collector);
  return collector.facts(walk, std::nullopt);
}

using Entry = NumberCounts::Entry;

TEST(FactsCollector, AnEmptyLogHasNothing) {
  const LogFacts facts = factsOf("");
  EXPECT_EQ(facts.size, 0U);
  EXPECT_EQ(facts.bytes.sum(), 0U);
  EXPECT_EQ(facts.chunks.count, 0U);
  EXPECT_EQ(facts.chunks.smallest, 0U);
  EXPECT_EQ(facts.messages.count, 0U);
  EXPECT_FALSE(facts.header);
  EXPECT_FALSE(facts.timeStamps);
  EXPECT_FALSE(facts.sequence);
}

// Each byte of this chunk is explained in docs/log-format.md.
TEST(FactsCollector, SortsTheBytesOfAChunkByTheirUse) {
  const LogFacts facts = factsOf(logOf({R"({
    messages: [{
      header: {timestamp: 1000, sequenceNumber: 1},
      method: BACKEND_EXECUTE,
      appMetrics: {startTime: 1000, stopTime: 1250},
      graphName: "net",
      profilingEvents: [{identifier: "run", type: EXECUTE, unit: MICROSEC,
                         valueType: UINT64, uint64Value: 250}]}]})"}));
  EXPECT_EQ(facts.bytes.events, 16U + 32U);
  EXPECT_EQ(facts.bytes.otherTables, 4U + (8U + 8U) + (16U + 24U) + (8U + 24U) + (8U + 20U));
  EXPECT_EQ(facts.bytes.lists, 8U + 8U);
  EXPECT_EQ(facts.bytes.texts, 8U + 8U);
  EXPECT_EQ(facts.bytes.rawData, 0U);
  EXPECT_EQ(facts.bytes.unused, 0U);
  EXPECT_EQ(facts.bytes.chunkLengths, 4U);
  EXPECT_EQ(facts.bytes.refused, 0U);
  EXPECT_EQ(facts.size, 204U);
}

TEST(FactsCollector, TextsOfHeadersAndEventsHaveTheirBytesToo) {
  EXPECT_EQ(
      factsOf(logOf({"{header:{netRunVersion:\"1234567\",backendVersion:\"123\"}}"})).bytes.texts,
      (4U + 8U) + (4U + 4U));
  EXPECT_EQ(factsOf(logWith({{.events = {{.identifier = "123",
                                          .value = std::string("1234567"),
                                          .secondaryName = "123"}}}}))
                .bytes.texts,
            (4U + 4U) + (4U + 8U) + (4U + 4U));
}

TEST(FactsCollector, AHeadersTablesAreAmongTheOthers) {
  const LogFacts facts = factsOf(
      logOf({"{header:{timeScale:1,epochTime:2,timestamp:3,version:{major:1,minor:2,teeny:3}}}"}));
  EXPECT_LT(facts.bytes.unused, 8U);  // padding before the header's eight-byte fields
  EXPECT_EQ(facts.bytes.otherTables + facts.bytes.unused + 4, facts.size);
}

TEST(FactsCollector, WhatNothingNamesIsUnused) {
  const std::string chunk = chunkBytes("{}");
  const LogFacts facts = factsOf(framed(chunk + std::string(1000, 'x')));
  EXPECT_EQ(facts.bytes.unused, 1000U + factsOf(framed(chunk)).bytes.unused);
}

TEST(FactsCollector, SharedBytesCountOnceAndPayloadsAsOftenAsTheyAreNamed) {
  const std::string log = test::logOfSharedPayload(1000, 100'000);
  const LogFacts facts = factsOf(log);
  EXPECT_EQ(facts.payloads.count, 1000U);
  EXPECT_EQ(facts.payloads.bytes, 100'000'000U);
  EXPECT_EQ(facts.bytes.rawData, 4U + 100'000U);
  EXPECT_EQ(facts.bytes.lists, 4U + 4U + 4U + 4000U);  // one message, 1000 events
  EXPECT_EQ(facts.bytes.sum(), log.size());
}

// Byte by byte, or by their hashes, these would take hours.
TEST(FactsCollector, TextsThatOverlapAreNotLookedAtEachTime) {
  const std::string log = test::logOfOverlappingGraphNames(16'000);
  const LogFacts facts = factsOf(log);
  ASSERT_EQ(facts.messages.graphs.size(), 1U);
  EXPECT_GE(facts.messages.graphs[0].messages, TextIdentities::kLooksAtAByte);
  EXPECT_EQ(facts.messages.graphs[0].messages + facts.messages.otherGraphs.messages, 16'000U);
  EXPECT_EQ(facts.messages.graphs[0].name.size, 16'000U * 1024U);
  EXPECT_EQ(facts.bytes.sum(), log.size());
}

TEST(FactsCollector, LongSharedGraphNamesAreNotHashedEachTime) {
  const LogFacts facts = factsOf(test::logOfSharedGraphName(200'000, 20'000'000));
  ASSERT_EQ(facts.messages.graphs.size(), 1U);
  EXPECT_EQ(facts.messages.graphs[0].executions, 200'000U);
}

TEST(FactsCollector, LongSharedIdentifiersAreNotHashedEachTime) {
  const LogFacts facts = factsOf(test::logOfSharedEvent(500'000, 5'000'000));
  EXPECT_EQ(facts.events.count, 500'000U);
  EXPECT_EQ(facts.events.identifiers, 1U);
}

// Looking at the name each time would use up what may be looked at, and then it is not told apart.
TEST(FactsCollector, ALongSharedNameIsLookedAtOnce) {
  const LogFacts facts = factsOf(test::logOfSharedEvent(100'000, 300));
  EXPECT_EQ(facts.events.identifiers, 1U);
  EXPECT_FALSE(facts.events.mayHaveMoreIdentifiers);
}

// As a builder makes it that writes each text once: none of these may be taken for unknown.
TEST(FactsCollector, LongNamesThatEventsShareAreAllTold) {
  std::vector<std::string> names;
  names.reserve(1000);
  for (std::size_t i = 0; i < 1000; ++i) {
    names.push_back(std::to_string(1000 + i) + std::string(596, 'n'));
  }
  const LogFacts facts = factsOf(test::logOfSharedNames(names, 100));
  EXPECT_EQ(facts.events.count, 100'000U);
  EXPECT_EQ(facts.events.identifiers, 1000U);
  EXPECT_FALSE(facts.events.mayHaveMoreIdentifiers);
}

TEST(FactsCollector, LongGraphNamesWithOneBeginningAreDifferentGraphs) {
  const std::string start(300, 'g');
  const LogFacts facts =
      factsOf(logWith({test::execute(start + "1"), test::execute(start + "2"),
                       test::executeAsync(start + "2"), test::finalize(start + "2")}));
  const KeptText name{std::string(200, 'g'), 301};
  EXPECT_THAT(facts.messages.graphs, ElementsAre(GraphFacts{name, 3, 2}, GraphFacts{name, 1, 1}));
}

TEST(FactsCollector, ANameIsCutBetweenCharacters) {
  const std::string euro = "\xe2\x82\xac";
  const LogFacts facts = factsOf(logWith({test::execute(std::string(199, 'g') + euro)}));
  ASSERT_EQ(facts.messages.graphs.size(), 1U);
  EXPECT_EQ(facts.messages.graphs[0].name, (KeptText{std::string(199, 'g'), 202}));
}

TEST(FactsCollector, GraphsBeyondTheMostAreCountedTogether) {
  std::vector<Message> messages;
  messages.reserve(1005);
  for (int i = 0; i < 1003; ++i) {
    messages.push_back(i % 2 == 0 ? test::execute("g" + std::to_string(i))
                                  : test::finalize("g" + std::to_string(i)));
  }
  messages.push_back(test::execute("g999"));
  messages.push_back(test::execute("g1001"));
  const MessageFacts facts = factsOf(logWith(messages)).messages;
  ASSERT_EQ(facts.graphs.size(), 1000U);
  EXPECT_EQ(facts.graphs[0], (GraphFacts{{"g999", 4}, 2, 1}));
  EXPECT_EQ(facts.graphs[1], (GraphFacts{{"g0", 2}, 1, 1}));
  EXPECT_EQ(facts.otherGraphs.messages, 4U);
  EXPECT_EQ(facts.otherGraphs.executions, 3U);
}

TEST(FactsCollector, OnlyExecutionsAreOnes) {
  const LogFacts facts = factsOf(logWith({test::execute("net"), test::executeAsync("net"),
                                          test::finalize("net"), test::graphComponent("net"),
                                          test::applyBinarySection("net"), test::createContext()}));
  EXPECT_THAT(facts.messages.graphs, ElementsAre(GraphFacts{{"net", 3}, 5, 2}));
  EXPECT_EQ(facts.messages.withoutGraph, 1U);
}

TEST(FactsCollector, EventsCountInEachMessageThatNamesThem) {
  const LogFacts facts = factsOf(test::logOfSharedTree(3));
  EXPECT_EQ(facts.events.count, 15U);
  EXPECT_EQ(facts.events.greatestDepth, 4U);
  EXPECT_EQ(facts.events.identifiers, 1U);
}

TEST(FactsCollector, NumbersWithoutATextAreCountedLikeAnyOther) {
  const auto event = [](std::uint32_t type) {
    return test::ofType(static_cast<schema::EventType>(type), test::Event{});
  };
  const LogFacts facts =
      factsOf(logWith({{.method = static_cast<schema::MethodType>(-3),
                        .visibilityLevel = -128,
                        .events = {event(UINT32_MAX), event(7), event(UINT32_MAX)}}}));
  EXPECT_THAT(facts.messages.methods.entries, ElementsAre(Entry{-3, 1}));
  EXPECT_THAT(facts.messages.visibilityLevels.entries, ElementsAre(Entry{-128, 1}));
  EXPECT_THAT(facts.events.types.entries, ElementsAre(Entry{UINT32_MAX, 2}, Entry{7, 1}));
  EXPECT_EQ(facts.events.types.others, 0U);
}

TEST(FactsCollector, OnlyObjectsWithRawDataArePayloads) {
  const test::Event::Bytes bytes = {1, 2, 3};
  const LogFacts facts =
      factsOf(logWith({{.events = {{.value = bytes, .unit = schema::EventUnit::OBJECT},
                                   {.value = bytes, .unit = schema::EventUnit::BYTES},
                                   {.unit = schema::EventUnit::OBJECT},
                                   {.value = 1.0, .unit = schema::EventUnit::OBJECT}}}}));
  EXPECT_EQ(facts.payloads.count, 1U);
  EXPECT_EQ(facts.payloads.bytes, 3U);
  EXPECT_EQ(facts.bytes.rawData, 2U * (4U + 3U));
}

TEST(FactsCollector, LaterHeadersAreComparedWithTheFirst) {
  const std::string first =
      "{header:{timeScale:1,epochTime:2,timestamp:3,version:{major:1,versionFlag:4},"
      "netRunVersion:\"n\",backendVersion:\"b\"}}";
  EXPECT_THAT(factsOf(logOf({first, first})).differingHeaders, IsEmpty());
  EXPECT_THAT(factsOf(logOf({first, "{}", "{header:{timeScale:1,epochTime:2,timestamp:3}}"}))
                  .differingHeaders,
              ElementsAre("version", "netRunVersion", "backendVersion"));
  const LogFacts facts =
      factsOf(logOf({first,
                     "{header:{timeScale:1,epochTime:3,timestamp:3,version:{major:1,versionFlag:5},"
                     "netRunVersion:\"n\",backendVersion:\"b\"}}",
                     "{header:{timeScale:2,epochTime:2,timestamp:4,version:{major:1,versionFlag:4},"
                     "netRunVersion:\"n\",backendVersion:\"c\"}}"}));
  EXPECT_THAT(facts.differingHeaders,
              ElementsAre("timeScale", "epochTime", "timestamp", "version", "backendVersion"));
  EXPECT_EQ(facts.headers, 3U);
  ASSERT_TRUE(facts.header);
  EXPECT_EQ(facts.header->timestamp, 3U);
  EXPECT_EQ(facts.header->version->flag, 4U);
  EXPECT_EQ(facts.header->backendVersion->start, "b");
}

TEST(FactsCollector, HeaderTextsAreComparedToTheirEnds) {
  const auto chunk = [](char last) {
    return "{header:{netRunVersion:\"" + std::string(500, 'v') + last + "\"}}";
  };
  EXPECT_THAT(factsOf(logOf({chunk('1'), chunk('2')})).differingHeaders,
              ElementsAre("netRunVersion"));
  EXPECT_THAT(factsOf(logOf({chunk('1'), chunk('1')})).differingHeaders, IsEmpty());
}

SequenceFacts sequenceOf(const std::vector<std::uint64_t>& numbers) {
  SequenceCourse course;
  for (const std::uint64_t number : numbers) {
    course.add(number);
  }
  return *course.facts();
}

TEST(SequenceCourse, GapsAreCountedAgainstTheLargestNumber) {
  const SequenceFacts facts = sequenceOf({5, 6, 6, 9, 7, 10, 20});
  EXPECT_EQ(facts.smallest, 5U);
  EXPECT_EQ(facts.largest, 20U);
  EXPECT_EQ(facts.gaps, 2U);
  EXPECT_EQ(facts.missing, 2U + 9U);
  EXPECT_EQ(facts.repeats, 1U);
  EXPECT_EQ(facts.stepsBack, 1U);
}

TEST(SequenceCourse, TheRangeGoesDownToo) {
  const SequenceFacts facts = sequenceOf({5, 3, 0});
  EXPECT_EQ(facts.smallest, 0U);
  EXPECT_EQ(facts.stepsBack, 2U);
  EXPECT_EQ(facts.gaps, 0U);
  EXPECT_EQ(sequenceOf({0, UINT64_MAX}).missing, UINT64_MAX - 1);
}

TEST(TimeStampCourse, KnowsTheEndsInTheLogAndInTime) {
  TimeStampCourse course;
  for (const std::uint64_t stamp : std::vector<std::uint64_t>{50, 40, 90, 90, 60}) {
    course.add(stamp);
  }
  EXPECT_EQ(course.facts()->first, 50U);
  EXPECT_EQ(course.facts()->last, 60U);
  EXPECT_EQ(course.facts()->smallest, 40U);
  EXPECT_EQ(course.facts()->largest, 90U);
  EXPECT_EQ(course.facts()->stepsBack, 2U);
}

TEST(NumberTally, NumbersBeyondTheMostAreCountedTogether) {
  NumberTally tally;
  for (int round = 0; round < 2; ++round) {
    for (std::int64_t number = 1003; number > 0; --number) {
      tally.add(number);
    }
  }
  const NumberCounts counts = tally.counts();
  EXPECT_EQ(counts.entries.size(), 1000U);
  EXPECT_EQ(counts.entries.front(), (Entry{4, 2}));
  EXPECT_EQ(counts.entries.back(), (Entry{1003, 2}));
  EXPECT_EQ(counts.others, 6U);
}

TEST(NumberTally, TheLargestCountComesFirst) {
  NumberTally tally;
  for (const std::int64_t number : {7, -1, 3, 3, -1, 3, 9}) {
    tally.add(number);
  }
  EXPECT_THAT(tally.counts().entries,
              ElementsAre(Entry{3, 3}, Entry{-1, 2}, Entry{7, 1}, Entry{9, 1}));
}

TEST(ChunkSizes, TheMedianIsTheLowerOfTwo) {
  ChunkSizes sizes;
  for (const std::uint64_t size : std::vector<std::uint64_t>{40, 10, 30, 20}) {
    sizes.add(size);
  }
  const ChunkFacts facts = sizes.facts();
  EXPECT_EQ(facts.count, 4U);
  EXPECT_EQ(facts.smallest, 10U);
  EXPECT_EQ(facts.median, 20U);
  EXPECT_EQ(facts.medianPrecision, 1U);
  EXPECT_EQ(facts.largest, 40U);
}

TEST(ChunkSizes, ThatAreTooManyAreRounded) {
  ChunkSizes sizes;
  constexpr std::uint64_t kCount = 200'001;
  for (std::uint64_t size = 1; size <= kCount; ++size) {
    sizes.add(size);
  }
  const ChunkFacts facts = sizes.facts();
  EXPECT_EQ(facts.count, kCount);
  EXPECT_EQ(facts.smallest, 1U);
  EXPECT_EQ(facts.largest, kCount);
  EXPECT_EQ(facts.medianPrecision, 8U);
  EXPECT_EQ(facts.median, 100'000U);  // stands for 100,000 to 100,007
}

TEST(DistinctTexts, CountsUpToABound) {
  DistinctTexts texts;
  const auto addUpTo = [&](std::size_t end) {
    for (std::uint64_t i = 1; i <= end; ++i) {
      texts.add(i);
    }
  };
  addUpTo(100'000);
  addUpTo(100'000);
  EXPECT_EQ(texts.count(), 100'000U);
  EXPECT_FALSE(texts.mayHaveMore());
  addUpTo(100'001);
  EXPECT_EQ(texts.count(), 100'000U);
  EXPECT_TRUE(texts.mayHaveMore());
}

TEST(DistinctTexts, AnUnknownTextMayBeOneMore) {
  DistinctTexts texts;
  texts.add(7);
  texts.addUnknown();
  EXPECT_EQ(texts.count(), 1U);
  EXPECT_TRUE(texts.mayHaveMore());
}

TEST(ChunkBytes, OfANextChunkInTheSameMemoryAreCountedLikeThoseOfAny) {
  const std::string log = logOf({"{messages: [{header: {}, appMetrics: {}}]}"});
  const std::span<const std::uint8_t> chunk = {
      reinterpret_cast<const std::uint8_t*>(log.data()) + 4, log.size() - 4};
  ChunkBytes bytes;
  bytes.startChunk(chunk);
  const std::uint64_t once = bytes.facts().otherTables;
  bytes.startChunk(chunk);
  EXPECT_EQ(bytes.facts().otherTables, 2 * once);
}

ByteFacts bytesOf(const std::string& log, std::size_t maxBits) {
  const std::span<const std::uint8_t> chunk = {
      reinterpret_cast<const std::uint8_t*>(log.data()) + 4, log.size() - 4};
  ChunkBytes bytes(maxBits);
  bytes.startChunk(chunk);
  for (const schema::Message* message : *schema::GetProfileLog(chunk.data())->messages()) {
    bytes.claim(*message);
    for (const schema::Event* event : *message->profilingEvents()) {
      bytes.claim(*event);
    }
  }
  return bytes.facts();
}

// Each event takes as many bytes as the one before: samples at equal distances would go wrong.
TEST(ChunkBytes, OfALargeChunkAreEstimatedBySomeOfThem) {
  std::vector<test::Event> events;
  events.reserve(20'000);
  for (int i = 0; i < 20'000; ++i) {
    events.push_back({.identifier = std::to_string(10'000 + i)});
  }
  const std::string log = logWith({{.events = events}});
  const ByteFacts exact = bytesOf(log, log.size());
  for (const unsigned unit : {2U, 4U, 8U, 16U, 32U}) {
    const ByteFacts facts = bytesOf(log, log.size() / unit);
    EXPECT_EQ(facts.sum(), exact.sum());
    constexpr double kError = 0.05;
    const auto isNear = [](std::uint64_t wanted) {
      return testing::DoubleNear(static_cast<double>(wanted), kError * static_cast<double>(wanted));
    };
    EXPECT_THAT(static_cast<double>(facts.events), isNear(exact.events)) << unit;
    EXPECT_THAT(static_cast<double>(facts.texts), isNear(exact.texts)) << unit;
    EXPECT_THAT(static_cast<double>(facts.lists), isNear(exact.lists)) << unit;
  }
}

}  // namespace
}  // namespace vyn::profiling
