// Messages that belong to a graph, and the flags that stay set.

#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using namespace std::string_literals;  // NOLINT(google-build-using-namespace)

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using GraphMessages = SummaryReaderTest;

TEST_F(GraphMessages, ExecutionsAreGroupedByNameInOrderOfArrival) {
  const auto reader = read({execute("A", {.duration = 10, .timestamp = 1}),
                            execute("B", {.duration = 20, .timestamp = 2}),
                            executeAsync("A", {.duration = 30, .timestamp = 3})});
  ASSERT_THAT(graphsOf(reader->m_executeGroups), ElementsAre("A", "B"));
  const auto& records = reader->m_executeGroups[0].records;
  ASSERT_THAT(records, SizeIs(2));
  EXPECT_EQ(records[0].duration, 10U);
  EXPECT_EQ(records[0].timestamp, 1U);
  EXPECT_EQ(records[1].duration, 30U);
}

TEST_F(GraphMessages, TenThousandGraphsKeepTheirOrder) {
  std::vector<std::string> graphs(10000);
  for (std::size_t i = 0; i < graphs.size(); ++i) {
    graphs[i] = "g" + std::to_string(i);
  }
  std::vector<Message> messages;
  for (int pass = 0; pass < 2; ++pass) {
    for (const std::string& graph : graphs) {
      messages.push_back(execute(graph));
    }
  }
  const auto reader = read(messages);
  ASSERT_EQ(graphsOf(reader->m_executeGroups), graphs);
  for (const auto& group : reader->m_executeGroups) {
    ASSERT_THAT(group.records, SizeIs(2));
  }
}

TEST_F(GraphMessages, WithoutAGraphAreSkipped) {
  const auto reader =
      read({execute(kNoGraph, {.duration = 1}, {initEvent("load", 1)}), finalize(kNoGraph),
            graphComponent(kNoGraph, {.visibilityLevel = 1}), applyBinarySection(kNoGraph)});
  EXPECT_THAT(reader->m_executeGroups, IsEmpty());
  EXPECT_THAT(reader->m_finalizeGroups, IsEmpty());
  EXPECT_THAT(reader->m_applyBinarySectionGroups, IsEmpty());
  EXPECT_FALSE(reader->m_hasInitEvents);
  EXPECT_FALSE(reader->m_hasFinalize);
}

TEST_F(GraphMessages, NamesThatDifferBehindAZeroByteAreDifferent) {
  const Events events = {number("fuse", 1)};
  const auto reader =
      read({execute("net\0A"s, {}, events), execute("net\0B"s, {}, events),
            finalize("net\0A"s, {}, events), applyBinarySection("net\0B"s, {}, events)});
  EXPECT_THAT(graphsOf(reader->m_executeGroups), ElementsAre("net\0A"s, "net\0B"s));
  EXPECT_THAT(graphsOf(reader->m_finalizeGroups), ElementsAre("net\0A"s));
  EXPECT_THAT(graphsOf(reader->m_applyBinarySectionGroups), ElementsAre("net\0B"s));
}

TEST_F(GraphMessages, EmptyNameIsANameToo) {
  EXPECT_THAT(graphsOf(read({execute("")})->m_executeGroups), ElementsAre(""));
}

TEST_F(GraphMessages, EmptyListOfEventsIsLikeNone) {
  OpenReader reader(m_folder.add("run.log", logOf({"{messages:[{header:{},appMetrics:{},"
                                                   "method:BACKEND_FINALIZE,graphName:\"net\","
                                                   "profilingEvents:[]}]}"})));
  ASSERT_TRUE(reader.readInputFile(false));
  EXPECT_TRUE(reader.m_hasFinalize);
  EXPECT_FALSE(reader.m_hasFinalizeEvents);
  EXPECT_THAT(reader.m_finalizeGroups, IsEmpty());
}

TEST_F(GraphMessages, RejectedAsynchronousExecutionStillMakesTheRunAsynchronous) {
  const auto reader = read({executeAsync("net", {.visibilityLevel = 5})}, 5);
  EXPECT_TRUE(reader->m_asyncExecute);
  EXPECT_THAT(reader->m_executeGroups, IsEmpty());
}

TEST_F(GraphMessages, SynchronousExecutionLeavesTheRunSynchronous) {
  EXPECT_FALSE(read({execute("net")})->m_asyncExecute);
}

TEST_F(GraphMessages, InitEventsLeaveTheExecution) {
  const auto reader = read({execute("net", {}, {initEvent("load", 1), number("conv", 2)})});
  EXPECT_TRUE(reader->m_hasInitEvents);
  EXPECT_THAT(namesOf(reader->m_initEvents), ElementsAre("load"));
  EXPECT_THAT(namesOf(reader->m_executeGroups[0].records[0].events), ElementsAre("conv"));
}

TEST_F(GraphMessages, LaterMessageWithoutInitEventsEmptiesThem) {
  for (const auto& later : {execute, executeAsync, finalize, graphComponent}) {
    const Message message = later("net", {}, {number("conv", 2)});
    const auto reader = read({execute("net", {}, {initEvent("load", 1)}), message});
    const char* method = EnumNameMethodType(message.method);
    EXPECT_TRUE(reader->m_hasInitEvents) << method;
    EXPECT_THAT(namesOf(reader->m_initEvents), IsEmpty()) << method;
  }
}

TEST_F(GraphMessages, OtherMethodsLeaveTheInitEventsAlone) {
  const auto reader =
      read({execute("net", {}, {initEvent("load", 1)}), applyBinarySection("net"), deInit()});
  EXPECT_THAT(namesOf(reader->m_initEvents), ElementsAre("load"));
}

TEST_F(GraphMessages, AppliedBinarySectionKeepsAllItsEvents) {
  const auto reader = read({applyBinarySection("net", {.duration = 9, .timestamp = 4},
                                               {initEvent("load", 1), number("patch", 2)})});
  ASSERT_THAT(reader->m_applyBinarySectionGroups, SizeIs(1));
  const auto& record = reader->m_applyBinarySectionGroups[0].records[0];
  EXPECT_THAT(namesOf(record.events), ElementsAre("load", "patch"));
  EXPECT_EQ(record.duration, 9U);
  EXPECT_FALSE(reader->m_hasInitEvents);
  EXPECT_FALSE(reader->m_hasApplyBinarySection);
}

TEST_F(GraphMessages, FinalizeWithEventsMakesAGroup) {
  const auto reader = read({finalize("net", {.duration = 6, .timestamp = 5},
                                     {initEvent("load", 1), number("fuse", 2)})});
  EXPECT_TRUE(reader->m_hasFinalize);
  EXPECT_TRUE(reader->m_hasFinalizeEvents);
  ASSERT_THAT(graphsOf(reader->m_finalizeGroups), ElementsAre("net"));
  EXPECT_EQ(reader->m_finalizeGroups[0].duration, 6U);
  EXPECT_EQ(reader->m_finalizeGroups[0].timestamp, 5U);
  EXPECT_THAT(namesOf(reader->m_finalizeGroups[0].events), ElementsAre("fuse"));
}

TEST_F(GraphMessages, FinalizeWithInitEventsOnlyMakesNoGroup) {
  const auto reader = read({finalize("net", {.duration = 6}, {initEvent("load", 1)})});
  EXPECT_TRUE(reader->m_hasFinalize);
  EXPECT_FALSE(reader->m_hasFinalizeEvents);
  EXPECT_THAT(reader->m_finalizeGroups, IsEmpty());
}

TEST_F(GraphMessages, AfterOneFinalizeWithEventsEveryLaterOneMakesAGroup) {
  const auto reader =
      read({finalize("A", {}, {number("fuse", 2)}), finalize("B", {}, {initEvent("load", 1)})});
  ASSERT_THAT(graphsOf(reader->m_finalizeGroups), ElementsAre("A", "B"));
  EXPECT_THAT(namesOf(reader->m_finalizeGroups[1].events), IsEmpty());
}

TEST_F(GraphMessages, ComponentIsSplitThreeWaysAndHasNoTimes) {
  const auto reader =
      read({graphComponent("net", {.duration = 6, .timestamp = 5, .visibilityLevel = 1},
                           {initEvent("load", 1), finalizeEvent("fuse", 2), number("conv", 3)})});
  EXPECT_THAT(namesOf(reader->m_initEvents), ElementsAre("load"));
  ASSERT_THAT(reader->m_finalizeGroups, SizeIs(1));
  EXPECT_THAT(namesOf(reader->m_finalizeGroups[0].events), ElementsAre("fuse"));
  EXPECT_EQ(reader->m_finalizeGroups[0].duration, 0U);
  EXPECT_EQ(reader->m_finalizeGroups[0].timestamp, 0U);
  EXPECT_FALSE(reader->m_hasFinalize);
  const auto& record = reader->m_executeGroups[0].records[0];
  EXPECT_THAT(namesOf(record.events), ElementsAre("conv"));
  EXPECT_EQ(record.duration, 0U);
  EXPECT_EQ(record.timestamp, 0U);
}

TEST_F(GraphMessages, AfterOneComponentWithFinalizeEventsEveryLaterOneMakesAGroup) {
  const auto reader = read({graphComponent("A", {}, {finalizeEvent("fuse", 1)}),
                            graphComponent("B", {}, {number("conv", 2)}), finalize("C")});
  ASSERT_THAT(graphsOf(reader->m_finalizeGroups), ElementsAre("A", "B", "C"));
  EXPECT_THAT(namesOf(reader->m_finalizeGroups[1].events), IsEmpty());
}

// A level of 0 is not written: neither it nor the name behind it has a slot in this table.
TEST_F(GraphMessages, ComponentWhoseTableEndsBeforeItsLevelIsSkipped) {
  EXPECT_THAT(read({graphComponent(kNoGraph)})->m_executeGroups, IsEmpty());
}

// Here the name behind the level, which is not written either, keeps its slot.
TEST_F(GraphMessages, ComponentOfLevelZeroIsTaken) {
  EXPECT_THAT(graphsOf(read({graphComponent("net")}, 1)->m_executeGroups), ElementsAre("net"));
}

TEST_F(GraphMessages, ComponentWithoutEventsStillAddsAnExecution) {
  const auto reader = read({graphComponent("net", {.visibilityLevel = 1})});
  ASSERT_THAT(reader->m_executeGroups, SizeIs(1));
  EXPECT_THAT(reader->m_executeGroups[0].records, SizeIs(1));
  EXPECT_THAT(reader->m_finalizeGroups, IsEmpty());
}

TEST_F(GraphMessages, RejectedOnesChangeNothing) {
  const auto reader =
      read({execute("net", {}, {initEvent("load", 1)}), finalize("net", {}, {number("fuse", 1)}),
            graphComponent("net"), applyBinarySection("net")},
           0);
  EXPECT_THAT(reader->m_executeGroups, IsEmpty());
  EXPECT_THAT(reader->m_finalizeGroups, IsEmpty());
  EXPECT_THAT(reader->m_applyBinarySectionGroups, IsEmpty());
  EXPECT_FALSE(reader->m_hasInitEvents);
  EXPECT_FALSE(reader->m_hasFinalize);
  EXPECT_FALSE(reader->m_hasFinalizeEvents);
}

}  // namespace
}  // namespace vyn::test
