// Events whose value is a text, where a number is asked for.

#include <tuple>

#include "input/statistics.h"
#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;
using testing::ElementsAre;
using testing::SizeIs;

class TextValues : public SummaryReaderTest {
 protected:
  // The mean events of two executions with one event each.
  std::vector<EventNode> meanOf(const Event& first, const Event& second) {
    m_reader = read(
        {execute("net", {.duration = 10}, {first}), execute("net", {.duration = 10}, {second})});
    return averageEventsOf(m_reader->m_executeGroups.at(0), profiling::Payloads::kKept);
  }

  const Event m_text = text("conv", "some text");
  std::unique_ptr<OpenReader> m_reader;
};

TEST_F(TextValues, CountAsZeroInAMean) {
  for (const auto& [first, second, value] :
       {std::tuple(m_text, m_text, 0U),  //
        std::tuple(m_text, number("conv", 8), 4U), std::tuple(number("conv", 6), m_text, 3U)}) {
    const auto mean = meanOf(first, second);
    ASSERT_THAT(mean, SizeIs(1));
    EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
    EXPECT_EQ(mean[0].value.uint64, value);
    EXPECT_EQ(mean[0].count, 2U);
  }
}

TEST_F(TextValues, StayTextsWhenTheyJoinNothing) {
  const auto mean = meanOf(m_text, number("pool", 1));
  EXPECT_EQ(mean[0].dataType, EventDataType::STRING);
  EXPECT_STREQ(mean[0].value.text, "some text");
}

TEST_F(TextValues, AreAQueueWaitOfZero) {
  const auto reader = read(
      {executeAsync("net", {.duration = 10}, {ofType(EventType::EXECUTE_QUEUE_WAIT, m_text)})});
  EXPECT_THAT(reader->m_queueWaitSeries.at(0).values, ElementsAre(0));
  EXPECT_EQ(reader->m_queueWaitMax.at(0).value, 0U);
  EXPECT_EQ(reader->m_queueWaitMin.at(0).value, 0U);
}

}  // namespace
}  // namespace vyn::test
