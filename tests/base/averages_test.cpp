// Mean, longest and shortest execution of a graph.

#include <bit>

#include "base/base_fixture.h"
#include "input/statistics.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;
using profiling::Payloads;

class Averages : public BaseReader {
 protected:
  static std::string execution(int timestamp, int duration, const std::string& events = "",
                               const std::string& method = "1") {
    return message(method, timestamp, duration, "graphName:\"A\",profilingEvents:[" + events + "]");
  }

  // The mean events of executions with these event lists.
  std::vector<EventNode> meanOf(std::initializer_list<std::string> lists) {
    std::string executions;
    for (const std::string& list : lists) {
      executions += (executions.empty() ? "" : ",") + execution(0, 1, list);
    }
    m_reader = read({executions});
    return averageEventsOf(m_reader->m_executeGroups.at(0), Payloads::kKept);
  }

  std::unique_ptr<OpenReader> m_reader;
};

TEST_F(Averages, DurationIsTheTruncatedMeanAndTheTimeStampTheLastOne) {
  const auto reader = read({execution(1, 5), execution(2, 9), execution(3, 9)});
  EXPECT_EQ(reader->m_executeAverage[0].name, "A");
  EXPECT_EQ(reader->m_executeAverage[0].duration, 7U);
  EXPECT_EQ(reader->m_executeAverage[0].timestamp, 3U);
}

TEST_F(Averages, DurationsMayAddUpToMoreThan32Bits) {
  const std::string hour =
      "{header:{},appMetrics:{startTime:1,stopTime:3600000001},method:1,"
      "graphName:\"A\"}";
  EXPECT_EQ(read({hour, hour, hour})->m_executeAverage[0].duration, 3600000000U);
}

TEST_F(Averages, TiesForTheLongestGoToTheLaterExecution) {
  const auto reader = read({execution(1, 5), execution(2, 9), execution(3, 9, event("x", 1))});
  EXPECT_EQ(reader->m_executeMax[0].duration, 9U);
  EXPECT_EQ(reader->m_executeMax[0].timestamp, 3U);
  EXPECT_EQ(names(slowestOf(reader->m_executeGroups[0]).events), "x ");
}

TEST_F(Averages, TiesForTheShortestGoToTheLaterExecution) {
  const auto reader = read({execution(1, 3), execution(2, 3), execution(3, 4)});
  EXPECT_EQ(reader->m_executeMin[0].duration, 3U);
  EXPECT_EQ(reader->m_executeMin[0].timestamp, 2U);
}

TEST_F(Averages, ExtremesKeepAnEarlierExecutionWhenItIsTheOne) {
  const auto reader = read({execution(1, 9), execution(2, 3), execution(3, 5)});
  EXPECT_EQ(reader->m_executeMax[0].timestamp, 1U);
  EXPECT_EQ(reader->m_executeMin[0].timestamp, 2U);
}

TEST_F(Averages, AppliedBinarySectionsHaveThreeFiguresToo) {
  const auto reader = read({execution(1, 2, "", "11"), execution(2, 4, "", "11")});
  EXPECT_EQ(reader->m_applyBinarySectionAverage[0].duration, 3U);
  EXPECT_EQ(reader->m_applyBinarySectionMax[0].duration, 4U);
  EXPECT_EQ(reader->m_applyBinarySectionMin[0].duration, 2U);
  EXPECT_TRUE(reader->m_executeAverage.empty());
}

TEST_F(Averages, EqualIdentifiersAreJoined) {
  const auto mean = meanOf({event("x", 10), event("x", 21)});
  ASSERT_EQ(mean.size(), 1U);
  EXPECT_EQ(mean[0].value.uint64, 15U);
  EXPECT_EQ(mean[0].count, 2U);
  EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
}

TEST_F(Averages, SiblingsOfOneListAreNotJoined) {
  const auto mean = meanOf({event("x", 1) + "," + event("x", 2)});
  EXPECT_EQ(names(mean), "x x ");
  EXPECT_EQ(mean[0].count, 1U);
}

TEST_F(Averages, SeveralSiblingsJoinTheFirstOfTheirName) {
  const auto mean =
      meanOf({event("x", 10) + "," + event("x", 20), event("x", 30) + "," + event("x", 50)});
  ASSERT_EQ(mean.size(), 2U);
  EXPECT_EQ(mean[0].count, 3U);
  EXPECT_EQ(mean[0].value.uint64, 30U);  // (10 + 30 + 50) / 3
  EXPECT_EQ(mean[1].value.uint64, 20U);
}

TEST_F(Averages, NewcomersAreAppendedInOrderWithTheirChildren) {
  const auto mean = meanOf({event("a", 2), event("b", 4, "subEvents:[" + event("c", 6) + "]") +
                                               "," + event("a", 4) + "," + event("d", 8)});
  EXPECT_EQ(names(mean), "a b d ");
  EXPECT_EQ(mean[0].value.uint64, 3U);
  EXPECT_EQ(mean[1].value.uint64, 4U);
  EXPECT_EQ(names(mean[1].children), "c ");
}

TEST_F(Averages, ChildrenAreJoinedTheSameWay) {
  const auto mean =
      meanOf({event("a", 1, "subEvents:[" + event("b", 10) + "]"),
              event("a", 1, "subEvents:[" + event("c", 7) + "," + event("b", 20) + "]")});
  EXPECT_EQ(names(mean[0].children), "b c ");
  EXPECT_EQ(mean[0].children[0].value.uint64, 15U);
  EXPECT_EQ(mean[0].children[0].count, 2U);
  EXPECT_EQ(mean[0].children[1].value.uint64, 7U);
}

TEST_F(Averages, ChildrenOfDifferentParentsAreNotJoined) {
  const auto mean = meanOf({event("a", 1, "subEvents:[" + event("x", 10) + "]"),
                            event("b", 1, "subEvents:[" + event("x", 20) + "]")});
  EXPECT_EQ(mean[0].children[0].value.uint64, 10U);
  EXPECT_EQ(mean[1].children[0].value.uint64, 20U);
}

TEST_F(Averages, ObjectEventsAreInTheExtremesButNotInTheMean) {
  const std::string object = event("o", 1, "unit:5");
  const auto mean = meanOf({object + "," + event("x", 2), event("x", 4) + "," + object});
  EXPECT_EQ(names(mean), "x ");
  EXPECT_EQ(names(slowestEventsOf(m_reader->m_executeGroups[0], Payloads::kLeftOut)), "x o ");
  EXPECT_EQ(names(fastestEventsOf(m_reader->m_executeGroups[0], Payloads::kLeftOut)), "x o ");
}

TEST_F(Averages, ObjectChildrenThatComeLaterAreDroppedToo) {
  const auto mean =
      meanOf({event("a", 1), event("a", 1, "subEvents:[" + event("o", 1, "unit:5") + "]")});
  EXPECT_TRUE(mean[0].children.empty());
}

TEST_F(Averages, SubtreeOfANewcomerStaysWhole) {
  const auto mean = meanOf({event("a", 1, "subEvents:[" + event("o", 1, "unit:5") + "]")});
  EXPECT_EQ(names(mean[0].children), "o ");
}

TEST_F(Averages, JoinedDoublesBecomeTheHalvedSumOfTheirWords) {
  const std::string one = "{identifier:\"d\",valueType:5,doubleValue:1.0}";
  const std::string two = "{identifier:\"d\",valueType:5,doubleValue:2.0}";
  const auto mean = meanOf({one, two});
  const std::uint64_t sum = std::bit_cast<std::uint64_t>(1.0) + std::bit_cast<std::uint64_t>(2.0);
  EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
  EXPECT_EQ(mean[0].value.uint64, sum / 2);
}

TEST_F(Averages, DoubleThatJoinsNothingKeepsItsValue) {
  const auto mean = meanOf({"{identifier:\"d\",valueType:5,doubleValue:1.5}"});
  EXPECT_EQ(mean[0].dataType, EventDataType::FLOAT_64);
  EXPECT_EQ(mean[0].value.float64, 1.5);
}

TEST_F(Averages, SumsWrapAround) {
  const auto mean = meanOf({event("x", 18446744073709551615U), event("x", 3)});
  EXPECT_EQ(mean[0].value.uint64, 1U);  // (2^64 - 1 + 3) modulo 2^64, halved
}

TEST_F(Averages, PayloadBytesAreLeftOutWhereNothingIsWrittenFromThem) {
  const std::string bytes = event("a", 1, "subEvents:[{valueType:4,rawData:[7,8],unit:5}]");
  meanOf({bytes});
  const auto& group = m_reader->m_executeGroups[0];
  for (const profiling::EventsOf eventsOf :
       {profiling::averageEventsOf, profiling::slowestEventsOf, profiling::fastestEventsOf}) {
    EXPECT_TRUE(eventsOf(group, Payloads::kLeftOut)[0].children[0].rawData.empty());
    EXPECT_EQ(eventsOf(group, Payloads::kKept)[0].children[0].rawData.size(), 2U);
  }
}

TEST_F(Averages, ThousandsOfSiblingsAreJoinedOneByOne) {
  std::string list;
  for (int i = 0; i < 5000; ++i) {
    list += event("n" + std::to_string(i), static_cast<std::uint64_t>(i)) + ",";
  }
  list.pop_back();
  const auto mean = meanOf({list, list, list});
  ASSERT_EQ(mean.size(), 5000U);
  for (std::size_t i = 0; i < mean.size(); ++i) {
    ASSERT_EQ(mean[i].value.uint64, i);
    ASSERT_EQ(mean[i].count, 3U);
  }
}

}  // namespace
}  // namespace vyn::test
