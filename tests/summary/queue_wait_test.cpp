// Queue waits of asynchronous executions.

#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using QueueWaits = SummaryReaderTest;

const std::string kMessage =
    "Multiple queue-wait time events found per execution. Cannot calculate Host Round-Trip "
    "excluding queue wait\n";

TEST_F(QueueWaits, OfEveryExecutionAndOfTheExtremes) {
  const auto reader =
      read({executeAsync("A", {.duration = 10}, {queueWait(3)}),
            executeAsync("A", {.duration = 30}, {queueWait(5)}),
            executeAsync("B", {.duration = 20}, {number("conv", 0, {queueWait(7)})})});
  ASSERT_THAT(graphsOf(reader->m_queueWaitSeries), ElementsAre("A", "B"));
  EXPECT_THAT(reader->m_queueWaitSeries[0].values, ElementsAre(3, 5));
  EXPECT_THAT(reader->m_queueWaitSeries[1].values, ElementsAre(7));
  EXPECT_THAT(graphsOf(reader->m_queueWaitMax), ElementsAre("A", "B"));
  EXPECT_EQ(reader->m_queueWaitMax[0].value, 5U);
  EXPECT_EQ(reader->m_queueWaitMin[0].value, 3U);
  EXPECT_EQ(m_printed, "");
}

TEST_F(QueueWaits, MissingInOneExecutionEmptiesTheSeriesOnly) {
  // The second execution is neither the longest nor the shortest.
  const auto reader = read({executeAsync("net", {.duration = 10}, {queueWait(3)}),
                            executeAsync("net", {.duration = 20}),
                            executeAsync("net", {.duration = 30}, {queueWait(5)})});
  EXPECT_THAT(graphsOf(reader->m_queueWaitSeries), IsEmpty());
  EXPECT_EQ(reader->m_queueWaitMax[0].value, 5U);
  EXPECT_EQ(reader->m_queueWaitMin[0].value, 3U);
  EXPECT_EQ(m_printed, kMessage);
}

TEST_F(QueueWaits, FailureInALaterGraphEmptiesTheWholeSeries) {
  const auto reader = read(
      {executeAsync("A", {.duration = 10}, {queueWait(3)}), executeAsync("B", {.duration = 20})});
  EXPECT_THAT(graphsOf(reader->m_queueWaitSeries), IsEmpty());
  EXPECT_THAT(graphsOf(reader->m_queueWaitMax), IsEmpty());
  EXPECT_THAT(graphsOf(reader->m_queueWaitMin), IsEmpty());
  EXPECT_EQ(m_printed, kMessage + kMessage + kMessage);
}

TEST_F(QueueWaits, TwoInOneExecutionAreAsBadAsNone) {
  const auto reader = read(
      {executeAsync("net", {.duration = 10}, {queueWait(3), number("conv", 0, {queueWait(4)})})});
  EXPECT_THAT(graphsOf(reader->m_queueWaitSeries), IsEmpty());
  EXPECT_EQ(m_printed, kMessage + kMessage + kMessage);
}

TEST_F(QueueWaits, HundredsInOneExecutionAreAsBadAsNone) {
  const auto reader = read({executeAsync("net", {.duration = 10}, Events(257, queueWait(3)))});
  EXPECT_THAT(graphsOf(reader->m_queueWaitSeries), IsEmpty());
}

TEST_F(QueueWaits, GrandchildrenAreNotLookedAt) {
  const Event deep = number("conv", 0, {number("tile", 0, {queueWait(4)})});
  const auto reader = read({executeAsync("net", {.duration = 10}, {queueWait(3), deep})});
  ASSERT_THAT(reader->m_queueWaitSeries, SizeIs(1));
  EXPECT_THAT(reader->m_queueWaitSeries[0].values, ElementsAre(3));
}

TEST_F(QueueWaits, ValueIsTakenAsAnUnsignedWord) {
  const Event negative{.value = std::int64_t{-1}, .type = EventType::EXECUTE_QUEUE_WAIT};
  const auto reader = read({executeAsync("net", {.duration = 10}, {negative})});
  ASSERT_THAT(reader->m_queueWaitSeries, SizeIs(1));
  EXPECT_THAT(reader->m_queueWaitSeries[0].values, ElementsAre(UINT64_MAX));
}

TEST_F(QueueWaits, SynchronousRunsHaveNone) {
  const auto reader =
      read({execute("net", {.duration = 10}, {queueWait(3)}), execute("net", {.duration = 10})});
  EXPECT_THAT(graphsOf(reader->m_queueWaitSeries), IsEmpty());
  EXPECT_THAT(graphsOf(reader->m_queueWaitMax), IsEmpty());
  EXPECT_THAT(graphsOf(reader->m_queueWaitMin), IsEmpty());
  EXPECT_EQ(m_printed, "");
}

}  // namespace
}  // namespace vyn::test
