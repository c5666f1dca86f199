// Messages that belong to a graph, and the flags that stay set.

#include "base/base_fixture.h"

namespace vyn::test {
namespace {

using GraphMessages = BaseReader;

std::string graph(const std::string& name, const std::string& events = "") {
  return "graphName:\"" + name + "\",profilingEvents:[" + events + "]";
}

const std::string kInit = "type:100";
const std::string kFinalize = "type:300";

TEST_F(GraphMessages, ExecutionsAreGroupedByNameInOrderOfArrival) {
  const auto reader = read({message("1", 1, 10, graph("A")), message("1", 2, 20, graph("B")),
                            message("3", 3, 30, graph("A"))});
  ASSERT_EQ(reader->m_executeGroups.size(), 2U);
  EXPECT_EQ(reader->m_executeGroups[0].name, "A");
  ASSERT_EQ(reader->m_executeGroups[0].records.size(), 2U);
  EXPECT_EQ(reader->m_executeGroups[0].records[0].duration, 10U);
  EXPECT_EQ(reader->m_executeGroups[0].records[0].timestamp, 1U);
  EXPECT_EQ(reader->m_executeGroups[0].records[1].duration, 30U);
  EXPECT_EQ(reader->m_executeGroups[1].name, "B");
}

TEST_F(GraphMessages, TenThousandGraphsKeepTheirOrder) {
  std::string list;
  for (int pass = 0; pass < 2; ++pass) {
    for (int i = 0; i < 10000; ++i) {
      list += message("1", i, pass, graph("g" + std::to_string(i))) + ",";
    }
  }
  list.pop_back();
  const auto reader = read({list});
  ASSERT_EQ(reader->m_executeGroups.size(), 10000U);
  for (std::size_t i = 0; i < 10000; ++i) {
    ASSERT_EQ(reader->m_executeGroups[i].name, "g" + std::to_string(i));
    ASSERT_EQ(reader->m_executeGroups[i].records.size(), 2U);
  }
}

TEST_F(GraphMessages, WithoutAGraphAreSkipped) {
  const auto reader = read({message("1", 1, 1, "profilingEvents:[" + event("i", 1, kInit) + "]"),
                            message("2", 1, 1), message("9", 1, 1), message("11", 1, 1)});
  EXPECT_TRUE(reader->m_executeGroups.empty() && reader->m_finalizeGroups.empty());
  EXPECT_TRUE(reader->m_applyBinarySectionGroups.empty());
  EXPECT_FALSE(reader->m_hasInitEvents || reader->m_hasFinalize);
}

TEST_F(GraphMessages, NamesThatDifferBehindAZeroByteAreDifferent) {
  const std::string first = graph(R"(net\u0000A)", event("f", 1));
  const std::string second = graph(R"(net\u0000B)", event("f", 1));
  const auto reader = read({message("1", 1, 1, first), message("1", 2, 1, second),
                            message("2", 3, 1, first), message("11", 4, 1, second)});
  ASSERT_EQ(reader->m_executeGroups.size(), 2U);
  EXPECT_EQ(reader->m_executeGroups[1].name, std::string("net\0B", 5));
  EXPECT_EQ(reader->m_finalizeGroups.at(0).name, std::string("net\0A", 5));
  EXPECT_EQ(reader->m_applyBinarySectionGroups.at(0).name, std::string("net\0B", 5));
}

TEST_F(GraphMessages, EmptyNameIsANameToo) {
  EXPECT_EQ(read({message("1", 1, 1, graph(""))})->m_executeGroups.size(), 1U);
}

TEST_F(GraphMessages, RejectedAsynchronousExecutionStillMakesTheRunAsynchronous) {
  const auto reader = read({message("3", 1, 1, graph("A") + ",visibilityLevel:5")}, 5);
  EXPECT_TRUE(reader->m_asyncExecute);
  EXPECT_TRUE(reader->m_executeGroups.empty());
}

TEST_F(GraphMessages, SynchronousExecutionLeavesTheRunSynchronous) {
  EXPECT_FALSE(read({message("1", 1, 1, graph("A"))})->m_asyncExecute);
}

TEST_F(GraphMessages, InitEventsLeaveTheExecution) {
  const auto reader =
      read({message("1", 1, 1, graph("A", event("i", 1, kInit) + "," + event("x", 2)))});
  EXPECT_TRUE(reader->m_hasInitEvents);
  EXPECT_EQ(names(reader->m_initEvents), "i ");
  EXPECT_EQ(names(reader->m_executeGroups[0].records[0].events), "x ");
}

TEST_F(GraphMessages, LaterMessageWithoutInitEventsEmptiesThem) {
  for (const char* method : {"1", "3", "2", "9"}) {
    const auto reader = read({message("1", 1, 1, graph("A", event("i", 1, kInit))),
                              message(method, 2, 1, graph("A", event("x", 2)))});
    EXPECT_TRUE(reader->m_hasInitEvents) << method;
    EXPECT_TRUE(reader->m_initEvents.empty()) << method;
  }
}

TEST_F(GraphMessages, OtherMethodsLeaveTheInitEventsAlone) {
  const auto reader = read({message("1", 1, 1, graph("A", event("i", 1, kInit))),
                            message("11", 2, 1, graph("A")), message("5", 3, 1)});
  EXPECT_EQ(names(reader->m_initEvents), "i ");
}

TEST_F(GraphMessages, AppliedBinarySectionKeepsAllItsEvents) {
  const auto reader =
      read({message("11", 4, 9, graph("A", event("i", 1, kInit) + "," + event("x", 2)))});
  ASSERT_EQ(reader->m_applyBinarySectionGroups.size(), 1U);
  const auto& record = reader->m_applyBinarySectionGroups[0].records[0];
  EXPECT_EQ(names(record.events), "i x ");
  EXPECT_EQ(record.duration, 9U);
  EXPECT_FALSE(reader->m_hasInitEvents || reader->m_hasApplyBinarySection);
}

TEST_F(GraphMessages, FinalizeWithEventsMakesAGroup) {
  const auto reader =
      read({message("2", 5, 6, graph("A", event("i", 1, kInit) + "," + event("f", 2)))});
  EXPECT_TRUE(reader->m_hasFinalize && reader->m_hasFinalizeEvents);
  ASSERT_EQ(reader->m_finalizeGroups.size(), 1U);
  EXPECT_EQ(reader->m_finalizeGroups[0].name, "A");
  EXPECT_EQ(reader->m_finalizeGroups[0].duration, 6U);
  EXPECT_EQ(reader->m_finalizeGroups[0].timestamp, 5U);
  EXPECT_EQ(names(reader->m_finalizeGroups[0].events), "f ");
}

TEST_F(GraphMessages, FinalizeWithInitEventsOnlyMakesNoGroup) {
  const auto reader = read({message("2", 5, 6, graph("A", event("i", 1, kInit)))});
  EXPECT_TRUE(reader->m_hasFinalize);
  EXPECT_FALSE(reader->m_hasFinalizeEvents);
  EXPECT_TRUE(reader->m_finalizeGroups.empty());
}

TEST_F(GraphMessages, AfterOneFinalizeWithEventsEveryLaterOneMakesAGroup) {
  const auto reader = read({message("2", 1, 6, graph("A", event("f", 2))),
                            message("2", 2, 7, graph("B", event("i", 1, kInit)))});
  ASSERT_EQ(reader->m_finalizeGroups.size(), 2U);
  EXPECT_TRUE(reader->m_finalizeGroups[1].events.empty());
}

TEST_F(GraphMessages, ComponentIsSplitThreeWaysAndHasNoTimes) {
  const auto reader = read({message(
      "9", 5, 6,
      graph("A", event("i", 1, kInit) + "," + event("f", 2, kFinalize) + "," + event("x", 3)) +
          ",visibilityLevel:1")});
  EXPECT_EQ(names(reader->m_initEvents), "i ");
  ASSERT_EQ(reader->m_finalizeGroups.size(), 1U);
  EXPECT_EQ(names(reader->m_finalizeGroups[0].events), "f ");
  EXPECT_EQ(reader->m_finalizeGroups[0].duration, 0U);
  EXPECT_EQ(reader->m_finalizeGroups[0].timestamp, 0U);
  EXPECT_FALSE(reader->m_hasFinalize);
  const auto& record = reader->m_executeGroups[0].records[0];
  EXPECT_EQ(names(record.events), "x ");
  EXPECT_EQ(record.duration, 0U);
  EXPECT_EQ(record.timestamp, 0U);
}

TEST_F(GraphMessages, AfterOneComponentWithFinalizeEventsEveryLaterOneMakesAGroup) {
  const auto reader =
      read({message("9", 1, 1, graph("A", event("f", 1, kFinalize))),
            message("9", 2, 1, graph("B", event("x", 2))), message("2", 3, 1, graph("C"))});
  ASSERT_EQ(reader->m_finalizeGroups.size(), 3U);
  EXPECT_EQ(reader->m_finalizeGroups[1].name, "B");
  EXPECT_TRUE(reader->m_finalizeGroups[1].events.empty());
  EXPECT_EQ(reader->m_finalizeGroups[2].name, "C");
}

TEST_F(GraphMessages, ComponentWhoseTableEndsBeforeItsLevelIsSkipped) {
  const auto reader = read({"{header:{},method:9,appMetrics:{}}"});
  EXPECT_TRUE(reader->m_executeGroups.empty());
}

// Level 0 is not written, but the name behind it keeps its slot.
TEST_F(GraphMessages, ComponentOfLevelZeroIsTaken) {
  const auto reader = read({"{header:{},method:9,appMetrics:{},graphName:\"A\"}"}, 1);
  EXPECT_EQ(reader->m_executeGroups.size(), 1U);
}

TEST_F(GraphMessages, ComponentWithoutEventsStillAddsAnExecution) {
  const auto reader = read({message("9", 5, 6, "graphName:\"A\",visibilityLevel:1")});
  ASSERT_EQ(reader->m_executeGroups.size(), 1U);
  EXPECT_EQ(reader->m_executeGroups[0].records.size(), 1U);
  EXPECT_TRUE(reader->m_finalizeGroups.empty());
}

TEST_F(GraphMessages, RejectedOnesChangeNothing) {
  const auto reader = read({message("1", 1, 1, graph("A", event("i", 1, kInit))),
                            message("2", 1, 1, graph("A", event("f", 1))),
                            message("9", 1, 1, graph("A")), message("11", 1, 1, graph("A"))},
                           0);
  EXPECT_TRUE(reader->m_executeGroups.empty() && reader->m_finalizeGroups.empty() &&
              reader->m_applyBinarySectionGroups.empty());
  EXPECT_FALSE(reader->m_hasInitEvents || reader->m_hasFinalize || reader->m_hasFinalizeEvents);
}

}  // namespace
}  // namespace vyn::test
