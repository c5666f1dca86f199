// Queue waits of asynchronous executions.

#include "base/base_fixture.h"

namespace vyn::test {
namespace {

class QueueWaits : public BaseReader {
 protected:
  static std::string execution(const std::string& graph, int duration, const std::string& events,
                               const std::string& method = "3") {
    return message(method, 1, duration,
                   "graphName:\"" + graph + "\",profilingEvents:[" + events + "]");
  }
};

std::string wait(std::uint64_t value) { return event("wait", value, "type:405"); }

std::string holding(const std::string& name, const std::string& child) {
  return event(name, 0, "subEvents:[" + child + "]");
}

const std::string kMessage =
    "Multiple queue-wait time events found per execution. Cannot calculate Host Round-Trip "
    "excluding queue wait\n";

TEST_F(QueueWaits, OfEveryExecutionAndOfTheExtremes) {
  const auto reader = read({execution("A", 10, wait(3)), execution("A", 30, wait(5)),
                            execution("B", 20, holding("x", wait(7)))});
  ASSERT_EQ(reader->m_queueWaitSeries.size(), 2U);
  EXPECT_EQ(reader->m_queueWaitSeries[0].name, "A");
  EXPECT_EQ(reader->m_queueWaitSeries[0].values, (std::vector<std::uint64_t>{3, 5}));
  EXPECT_EQ(reader->m_queueWaitSeries[1].values, (std::vector<std::uint64_t>{7}));
  EXPECT_EQ(reader->m_queueWaitMax[0].value, 5U);
  EXPECT_EQ(reader->m_queueWaitMin[0].value, 3U);
  EXPECT_EQ(reader->m_queueWaitMax[1].name, "B");
  EXPECT_EQ(m_printed, "");
}

TEST_F(QueueWaits, MissingInOneExecutionEmptiesTheSeriesOnly) {
  // The second execution is neither the longest nor the shortest.
  const auto reader =
      read({execution("A", 10, wait(3)), execution("A", 20, ""), execution("A", 30, wait(5))});
  EXPECT_TRUE(reader->m_queueWaitSeries.empty());
  EXPECT_EQ(reader->m_queueWaitMax[0].value, 5U);
  EXPECT_EQ(reader->m_queueWaitMin[0].value, 3U);
  EXPECT_EQ(m_printed, kMessage);
}

TEST_F(QueueWaits, FailureInALaterGraphEmptiesTheWholeSeries) {
  const auto reader = read({execution("A", 10, wait(3)), execution("B", 20, "")});
  EXPECT_TRUE(reader->m_queueWaitSeries.empty());
  EXPECT_TRUE(reader->m_queueWaitMax.empty());
  EXPECT_TRUE(reader->m_queueWaitMin.empty());
  EXPECT_EQ(m_printed, kMessage + kMessage + kMessage);
}

TEST_F(QueueWaits, TwoInOneExecutionAreAsBadAsNone) {
  const auto reader = read({execution("A", 10, wait(3) + "," + holding("x", wait(4)))});
  EXPECT_TRUE(reader->m_queueWaitSeries.empty());
  EXPECT_EQ(m_printed, kMessage + kMessage + kMessage);
}

TEST_F(QueueWaits, HundredsInOneExecutionAreAsBadAsNone) {
  std::string waits = wait(3);
  for (int i = 0; i < 256; ++i) {
    waits += "," + wait(3);
  }
  EXPECT_TRUE(read({execution("A", 10, waits)})->m_queueWaitSeries.empty());
}

TEST_F(QueueWaits, DeeperLevelsAreNotLookedAt) {
  const auto reader =
      read({execution("A", 10, wait(3) + "," + holding("x", holding("y", wait(4))))});
  EXPECT_EQ(reader->m_queueWaitSeries[0].values, (std::vector<std::uint64_t>{3}));
}

TEST_F(QueueWaits, ValueIsTakenAsAnUnsignedWord) {
  const auto reader =
      read({execution("A", 10, "{identifier:\"w\",type:405,valueType:1,int64Value:-1}")});
  EXPECT_EQ(reader->m_queueWaitSeries[0].values[0], 18446744073709551615U);
}

TEST_F(QueueWaits, SynchronousRunsHaveNone) {
  const auto reader = read({execution("A", 10, wait(3), "1"), execution("A", 10, "", "1")});
  EXPECT_TRUE(reader->m_queueWaitSeries.empty() && reader->m_queueWaitMax.empty() &&
              reader->m_queueWaitMin.empty());
  EXPECT_EQ(m_printed, "");
}

}  // namespace
}  // namespace vyn::test
