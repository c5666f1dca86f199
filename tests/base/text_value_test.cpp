// Events whose value is a text, where a number is asked for.

#include "base/base_fixture.h"
#include "input/statistics.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;

class TextValues : public BaseReader {
 protected:
  std::vector<EventNode> meanOf(const std::string& first, const std::string& second) {
    m_reader = read({execution(first), execution(second)});
    return averageEventsOf(m_reader->m_executeGroups.at(0), profiling::Payloads::kKept);
  }

  static std::string execution(const std::string& event, const std::string& method = "1") {
    return message(method, 1, 10, "graphName:\"A\",profilingEvents:[" + event + "]");
  }

  static std::string text(const std::string& rest = "") {
    return "{identifier:\"x\",valueType:6,stringValue:\"some text\"" + rest + "}";
  }

  std::unique_ptr<OpenReader> m_reader;
};

TEST_F(TextValues, CountAsZeroInAMean) {
  for (const auto& [first, second, value] :
       {std::tuple(text(), text(), 0U), std::tuple(text(), event("x", 8), 4U),
        std::tuple(event("x", 6), text(), 3U)}) {
    const auto mean = meanOf(first, second);
    ASSERT_EQ(mean.size(), 1U);
    EXPECT_EQ(mean[0].dataType, EventDataType::UINT_64);
    EXPECT_EQ(mean[0].value.uint64, value);
    EXPECT_EQ(mean[0].count, 2U);
  }
}

TEST_F(TextValues, StayTextsWhenTheyJoinNothing) {
  const auto mean = meanOf(text(), event("y", 1));
  EXPECT_EQ(mean[0].dataType, EventDataType::STRING);
  EXPECT_STREQ(mean[0].value.text, "some text");
}

TEST_F(TextValues, AreAQueueWaitOfZero) {
  const auto reader = read({execution(text(",type:405"), "3")});
  EXPECT_EQ(reader->m_queueWaitSeries.at(0).values, std::vector<std::uint64_t>{0});
  EXPECT_EQ(reader->m_queueWaitMax.at(0).value, 0U);
  EXPECT_EQ(reader->m_queueWaitMin.at(0).value, 0U);
}

}  // namespace
}  // namespace vyn::test
