// What the operations leave behind on the stream that they write to: notation and flushes.

#include <gmock/gmock.h>

#include <sstream>

#include "report/every_step.h"
#include "support/flush_recorder.h"
#include "support/log_event.h"
#include "support/open_reader.h"
#include "support/records.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;

class StreamState : public testing::Test {
 protected:
  /// How a stream in another notation writes a number behind what `print` wrote.
  template <typename Print>
  std::string numberAfter(Print print) {
    std::ostringstream stream;
    stream << std::scientific;
    stream.precision(2);
    (m_reader.*print)(stream);
    const std::size_t size = stream.str().size();
    stream << 1.23456789;
    return stream.str().substr(size);
  }

  OpenReader m_reader;
};

TEST_F(StreamState, LibraryLoadLeavesFourDecimals) {
  EXPECT_EQ(numberAfter(&OpenReader::printLibLoadStats), "1.23e+00");
  m_reader.m_hasLibLoad = true;
  EXPECT_EQ(numberAfter(&OpenReader::printLibLoadStats), "1.23e+00");
  m_reader.m_libLoadEvents = {cycles("x", 1)};
  EXPECT_EQ(numberAfter(&OpenReader::printLibLoadStats), "1.2346");
}

TEST_F(StreamState, InferencesPerSecondLeaveFourDecimals) {
  m_reader.m_executeIpsEvents = {cycles("duration", 1), cycles("count", 1)};
  EXPECT_EQ(numberAfter(&OpenReader::printExecuteStatsOverall), "1.23e+00");
  m_reader.m_hasExecuteIps = true;
  EXPECT_EQ(numberAfter(&OpenReader::printExecuteStatsOverall), "1.2346");
}

TEST_F(StreamState, RowOfInferencesPerSecondLeavesSixDecimals) {
  m_reader.m_executeIpsEvents = {cycles("duration", 1), cycles("count", 1)};
  EXPECT_EQ(numberAfter(&OpenReader::writeExecuteIpsCsv), "1.23e+00");
  m_reader.m_hasExecuteIps = true;
  EXPECT_EQ(numberAfter(&OpenReader::writeExecuteIpsCsv), "1.234568");
}

TEST_F(StreamState, OtherRowsAndBlocksLeaveItAlone) {
  m_reader.m_libLoadEvents = {cycles("x", 1)};
  EXPECT_EQ(numberAfter(&OpenReader::writeLibLoadCsv), "1.23e+00");
  EXPECT_EQ(numberAfter(&OpenReader::writeInitCsv), "1.23e+00");
  EXPECT_EQ(numberAfter(&OpenReader::writeDeInitCsv), "1.23e+00");
  EXPECT_EQ(numberAfter(&OpenReader::printInitStats), "1.23e+00");
  EXPECT_EQ(numberAfter(&OpenReader::printComposeGraphsStats), "1.23e+00");
  EXPECT_EQ(numberAfter(&OpenReader::printExecuteStatsAverage), "1.23e+00");
}

TEST_F(StreamState, EachLineOfAWholeListingIsFlushed) {
  const TempFolder folder;
  OpenReader reader(folder.add("run.log", everyStepLog()));
  ASSERT_TRUE(reader.readInputFile(false));
  FlushRecorder recorder;
  std::ostream stream(&recorder);
  reader.writeCsv(stream);
  EXPECT_THAT(recorder.flushed(), testing::SizeIs(25));
  for (const std::string& line : recorder.flushed()) {
    EXPECT_THAT(line, testing::MatchesRegex("[^\n]*\n"));
  }
  EXPECT_EQ(recorder.unflushed(), "");
}

TEST_F(StreamState, RoundTripLineIsFlushedWithTheLineBehindIt) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeMin = {figure("a", {.duration = 10})};
  m_reader.m_queueWaitMin = {{"a", 4}};
  FlushRecorder recorder;
  std::ostream stream(&recorder);
  m_reader.printExecuteStatsMin(stream);
  EXPECT_THAT(recorder.flushed(),
              ElementsAre("Execute Stats (Min):\n", std::string(24, '-') + "\n",
                          "Total Inference Time: \n", std::string(21, '-') + "\n", "Graph 0 (a):\n",
                          "    NetRun (Host Round-Trip): 10 us\n"
                          "    NetRun (Host Round-Trip excluding queue wait): 6\n",
                          "\n"));
}

}  // namespace
}  // namespace vyn::test
