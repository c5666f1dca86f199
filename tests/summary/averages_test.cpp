// Mean, longest and shortest execution of a graph.

#include <bit>

#include "input/statistics.h"
#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;
using profiling::Payloads;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Averages : public SummaryReaderTest {
 protected:
  // The mean events of executions of one graph with these event lists.
  std::vector<EventNode> meanOf(const std::vector<Events>& lists) {
    std::vector<Message> executions;
    executions.reserve(lists.size());
    for (const Events& events : lists) {
      executions.push_back(execute("net", {.duration = 1}, events));
    }
    m_reader = read(executions);
    return averageEventsOf(m_reader->m_executeGroups.at(0), Payloads::kKept);
  }

  std::unique_ptr<OpenReader> m_reader;
};

TEST_F(Averages, DurationIsTheTruncatedMeanAndTheTimeStampTheLastOne) {
  const auto reader = read({execute("net", {.duration = 5, .timestamp = 1}),
                            execute("net", {.duration = 9, .timestamp = 2}),
                            execute("net", {.duration = 9, .timestamp = 3})});
  EXPECT_EQ(reader->m_executeAverage[0].name, "net");
  EXPECT_EQ(reader->m_executeAverage[0].duration, 7U);
  EXPECT_EQ(reader->m_executeAverage[0].timestamp, 3U);
}

TEST_F(Averages, DurationsMayAddUpToMoreThan32Bits) {
  const Message hour = execute("net", {.duration = 3'600'000'000});
  EXPECT_EQ(read({hour, hour, hour})->m_executeAverage[0].duration, 3'600'000'000U);
}

TEST_F(Averages, TiesForTheLongestGoToTheLaterExecution) {
  const auto reader = read({execute("net", {.duration = 5, .timestamp = 1}),
                            execute("net", {.duration = 9, .timestamp = 2}),
                            execute("net", {.duration = 9, .timestamp = 3}, {number("conv", 1)})});
  EXPECT_EQ(reader->m_executeMax[0].duration, 9U);
  EXPECT_EQ(reader->m_executeMax[0].timestamp, 3U);
  EXPECT_THAT(namesOf(slowestOf(reader->m_executeGroups[0]).events), ElementsAre("conv"));
}

TEST_F(Averages, TiesForTheShortestGoToTheLaterExecution) {
  const auto reader = read({execute("net", {.duration = 3, .timestamp = 1}),
                            execute("net", {.duration = 3, .timestamp = 2}),
                            execute("net", {.duration = 4, .timestamp = 3})});
  EXPECT_EQ(reader->m_executeMin[0].duration, 3U);
  EXPECT_EQ(reader->m_executeMin[0].timestamp, 2U);
}

TEST_F(Averages, ExtremesKeepAnEarlierExecutionWhenItIsTheOne) {
  const auto reader = read({execute("net", {.duration = 9, .timestamp = 1}),
                            execute("net", {.duration = 3, .timestamp = 2}),
                            execute("net", {.duration = 5, .timestamp = 3})});
  EXPECT_EQ(reader->m_executeMax[0].timestamp, 1U);
  EXPECT_EQ(reader->m_executeMin[0].timestamp, 2U);
}

TEST_F(Averages, AppliedBinarySectionsHaveThreeFiguresToo) {
  const auto reader = read({applyBinarySection("net", {.duration = 2, .timestamp = 1}),
                            applyBinarySection("net", {.duration = 4, .timestamp = 2})});
  EXPECT_EQ(reader->m_applyBinarySectionAverage[0].duration, 3U);
  EXPECT_EQ(reader->m_applyBinarySectionMax[0].duration, 4U);
  EXPECT_EQ(reader->m_applyBinarySectionMin[0].duration, 2U);
  EXPECT_THAT(reader->m_executeAverage, IsEmpty());
}

TEST_F(Averages, EqualIdentifiersAreJoined) {
  const auto mean = meanOf({{number("conv", 10)}, {number("conv", 21)}});
  ASSERT_THAT(valuesOf(mean), ElementsAre(15));
  EXPECT_EQ(mean[0].count, 2U);
  EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
}

TEST_F(Averages, SiblingsOfOneListAreNotJoined) {
  const auto mean = meanOf({{number("conv", 1), number("conv", 2)}});
  ASSERT_THAT(namesOf(mean), ElementsAre("conv", "conv"));
  EXPECT_EQ(mean[0].count, 1U);
}

TEST_F(Averages, SeveralSiblingsJoinTheFirstOfTheirName) {
  const auto mean = meanOf({{number("conv", 10), number("conv", 20)},  //
                            {number("conv", 30), number("conv", 50)}});
  ASSERT_THAT(valuesOf(mean), ElementsAre((10 + 30 + 50) / 3, 20));
  EXPECT_EQ(mean[0].count, 3U);
}

TEST_F(Averages, NewcomersAreAppendedInOrderWithTheirChildren) {
  const auto mean = meanOf({{number("a", 2), number("b", 4, {number("c", 6)})},  //
                            {number("a", 4), number("d", 8)}});
  ASSERT_THAT(namesOf(mean), ElementsAre("a", "b", "d"));
  EXPECT_THAT(valuesOf(mean), ElementsAre(3, 4, 8));
  EXPECT_THAT(namesOf(mean[1].children), ElementsAre("c"));
}

TEST_F(Averages, ChildrenAreJoinedTheSameWay) {
  const auto mean = meanOf(
      {{number("a", 1, {number("b", 10)})}, {number("a", 1, {number("c", 7), number("b", 20)})}});
  ASSERT_THAT(namesOf(mean[0].children), ElementsAre("b", "c"));
  EXPECT_THAT(valuesOf(mean[0].children), ElementsAre(15, 7));
  EXPECT_EQ(mean[0].children[0].count, 2U);
}

TEST_F(Averages, ChildrenOfDifferentParentsAreNotJoined) {
  const auto mean = meanOf({{number("a", 1, {number("conv", 10)})},  //
                            {number("b", 1, {number("conv", 20)})}});
  EXPECT_THAT(valuesOf(mean[0].children), ElementsAre(10));
  EXPECT_THAT(valuesOf(mean[1].children), ElementsAre(20));
}

TEST_F(Averages, ObjectEventsAreInTheExtremesButNotInTheMean) {
  const Event dump = object("dump.bin", "payload");
  const auto mean = meanOf({{dump, number("conv", 2)}, {number("conv", 4), dump}});
  EXPECT_THAT(namesOf(mean), ElementsAre("conv"));
  const auto& group = m_reader->m_executeGroups[0];
  EXPECT_THAT(namesOf(slowestEventsOf(group, Payloads::kLeftOut)), ElementsAre("conv", "object"));
  EXPECT_THAT(namesOf(fastestEventsOf(group, Payloads::kLeftOut)), ElementsAre("conv", "object"));
}

TEST_F(Averages, ObjectChildrenThatComeLaterAreDroppedToo) {
  const auto mean =
      meanOf({{number("conv", 1)}, {number("conv", 1, {object("dump.bin", "payload")})}});
  EXPECT_THAT(mean[0].children, IsEmpty());
}

TEST_F(Averages, SubtreeOfANewcomerStaysWhole) {
  const auto mean = meanOf({{number("conv", 1, {object("dump.bin", "payload")})}});
  EXPECT_THAT(namesOf(mean[0].children), ElementsAre("object"));
}

TEST_F(Averages, JoinedDoublesBecomeTheHalvedSumOfTheirWords) {
  const auto mean = meanOf({{Event{.identifier = "load", .value = 1.0}},  //
                            {Event{.identifier = "load", .value = 2.0}}});
  const std::uint64_t sum = std::bit_cast<std::uint64_t>(1.0) + std::bit_cast<std::uint64_t>(2.0);
  EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
  EXPECT_EQ(mean[0].value.uint64, sum / 2);
}

TEST_F(Averages, DoubleThatJoinsNothingKeepsItsValue) {
  const auto mean = meanOf({{Event{.identifier = "load", .value = 1.5}}});
  EXPECT_EQ(mean[0].dataType, EventDataType::FLOAT_64);
  EXPECT_EQ(mean[0].value.float64, 1.5);
}

TEST_F(Averages, SumsWrapAround) {
  const auto mean = meanOf({{number("conv", UINT64_MAX)}, {number("conv", 3)}});
  EXPECT_EQ(mean[0].value.uint64, 1U);  // (2^64 - 1 + 3) modulo 2^64, halved
}

TEST_F(Averages, PayloadBytesAreLeftOutWhereNothingIsWrittenFromThem) {
  meanOf({{number("conv", 1, {object("dump.bin", "payload")})}});
  const auto& group = m_reader->m_executeGroups[0];
  for (const profiling::EventsOf eventsOf :
       {profiling::averageEventsOf, profiling::slowestEventsOf, profiling::fastestEventsOf}) {
    EXPECT_THAT(eventsOf(group, Payloads::kLeftOut)[0].children[0].rawData, IsEmpty());
    EXPECT_THAT(eventsOf(group, Payloads::kKept)[0].children[0].rawData, SizeIs(7));
  }
}

TEST_F(Averages, ThousandsOfSiblingsAreJoinedOneByOne) {
  Events events;
  for (std::uint64_t i = 0; i < 5000; ++i) {
    events.push_back(number("n" + std::to_string(i), i));
  }
  const auto mean = meanOf({events, events, events});
  ASSERT_THAT(mean, SizeIs(5000));
  for (std::size_t i = 0; i < mean.size(); ++i) {
    ASSERT_EQ(mean[i].value.uint64, i);
    ASSERT_EQ(mean[i].count, 3U);
  }
}

}  // namespace
}  // namespace vyn::test
