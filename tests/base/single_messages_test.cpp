// Messages of which the last one that is taken counts, and the filter by level.

#include "base/base_fixture.h"
#include "log/logger_registry.h"

namespace vyn::test {
namespace {

using SingleMessages = BaseReader;

std::string withLevel(int level) { return "visibilityLevel:" + std::to_string(level); }

TEST_F(SingleMessages, TimingsAreStored) {
  const auto reader = read({message("6", 11, 5), message("7", 12, 6)});
  EXPECT_EQ(reader->m_contextCreateTimestamp, 11U);
  EXPECT_EQ(reader->m_contextCreateTime, 5U);
  EXPECT_EQ(reader->m_composeGraphsTimestamp, 12U);
  EXPECT_EQ(reader->m_composeGraphsTime, 6U);
}

TEST_F(SingleMessages, LevelZeroTakesNothingButTheTimeStampsOfTimings) {
  const auto reader = read({message("6", 11, 5), message("7", 12, 6), message("5", 13, 7),
                            message("1", 14, 8, "graphName:\"net\"")},
                           0);
  EXPECT_EQ(reader->m_contextCreateTimestamp, 11U);
  EXPECT_EQ(reader->m_contextCreateTime, 0U);
  EXPECT_EQ(reader->m_composeGraphsTimestamp, 12U);
  EXPECT_EQ(reader->m_composeGraphsTime, 0U);
  EXPECT_EQ(reader->m_deInitTimestamp, 0U);
  EXPECT_TRUE(reader->m_executeGroups.empty());
}

TEST_F(SingleMessages, MessageIsTakenOnlyByAHigherLevel) {
  EXPECT_EQ(read({message("5", 13, 7, withLevel(1))}, 2)->m_deInitTime, 7U);
  EXPECT_EQ(read({message("5", 13, 7, withLevel(1))}, 1)->m_deInitTime, 0U);
}

TEST_F(SingleMessages, LevelsAreComparedAsSignedNumbers) {
  EXPECT_EQ(read({message("5", 13, 7, withLevel(-1))}, 0)->m_deInitTime, 7U);
  EXPECT_EQ(read({message("5", 13, 7, withLevel(127))}, 127)->m_deInitTime, 0U);
  EXPECT_EQ(read({message("5", 13, 7, withLevel(-128))}, -127)->m_deInitTime, 7U);
}

TEST_F(SingleMessages, LaterRejectedTimingMovesOnlyTheTimeStamp) {
  const auto reader = read({message("6", 11, 5), message("6", 21, 50, withLevel(3))}, 2);
  EXPECT_EQ(reader->m_contextCreateTimestamp, 21U);
  EXPECT_EQ(reader->m_contextCreateTime, 5U);
}

TEST_F(SingleMessages, LastDeInitWins) {
  const auto reader =
      read({message("5", 1, 10, "profilingEvents:[" + event("a", 1) + "," + event("b", 2) + "]"),
            message("5", 2, 20, "profilingEvents:[" + event("c", 3) + "]")});
  EXPECT_EQ(reader->m_deInitTime, 20U);
  EXPECT_EQ(reader->m_deInitTimestamp, 2U);
  EXPECT_EQ(names(reader->m_deInitEvents), "c ");
}

TEST_F(SingleMessages, EachKindHasItsStoreAndFlag) {
  const auto reader = read({message("4", 1, 10, "profilingEvents:[" + event("binary", 1) + "]"),
                            message("8", 2, 20, "profilingEvents:[" + event("ips", 1) + "]"),
                            message("10", 3, 30, "profilingEvents:[" + event("load", 1) + "]")});
  EXPECT_TRUE(reader->m_hasCreateFromBinaryEvents);
  EXPECT_EQ(reader->m_createFromBinaryTime, 10U);
  EXPECT_EQ(reader->m_createFromBinaryTimestamp, 1U);
  EXPECT_EQ(names(reader->m_createFromBinaryEvents), "binary ");
  EXPECT_TRUE(reader->m_hasExecuteIps);
  EXPECT_EQ(reader->m_executeIpsTime, 20U);
  EXPECT_EQ(names(reader->m_executeIpsEvents), "ips ");
  EXPECT_TRUE(reader->m_hasLibLoad);
  EXPECT_EQ(reader->m_libLoadTimestamp, 3U);
  EXPECT_EQ(names(reader->m_libLoadEvents), "load ");
}

TEST_F(SingleMessages, RejectedOnesSetNoFlag) {
  const auto reader = read({message("4", 1, 1), message("8", 2, 2), message("10", 3, 3)}, 0);
  EXPECT_FALSE(reader->m_hasCreateFromBinaryEvents || reader->m_hasExecuteIps ||
               reader->m_hasLibLoad);
}

TEST_F(SingleMessages, FlagsNeedNoEventsAndOutlastRejectedMessages) {
  const std::string hidden = withLevel(9);
  const auto reader =
      read({message("4", 1, 1), message("8", 2, 2), message("10", 3, 3), message("4", 4, 4, hidden),
            message("8", 5, 5, hidden), message("10", 6, 6, hidden)},
           5);
  EXPECT_TRUE(reader->m_hasCreateFromBinaryEvents);
  EXPECT_TRUE(reader->m_hasExecuteIps);
  EXPECT_TRUE(reader->m_hasLibLoad);
  EXPECT_EQ(reader->m_libLoadTimestamp, 3U);
}

TEST_F(SingleMessages, LaterTimingWithoutDurationOverwritesTheEarlierOne) {
  const auto reader = read({message("6", 11, 5), message("6", 12, 0)});
  EXPECT_EQ(reader->m_contextCreateTime, 0U);
}

TEST_F(SingleMessages, StopBeforeStartIsADurationOfZero) {
  const auto reader = read({"{header:{},appMetrics:{startTime:9,stopTime:5},method:5}"});
  EXPECT_EQ(reader->m_deInitTime, 0U);
}

TEST_F(SingleMessages, StopWithoutAStartIsADurationOfZero) {
  const auto reader = read({"{header:{},appMetrics:{stopTime:5},method:5}"});
  EXPECT_EQ(reader->m_deInitTime, 0U);
}

TEST_F(SingleMessages, UnknownMethodsAreLoggedAndSkipped) {
  ASSERT_TRUE(log::initializeLogging(nullptr, 1));
  read({message("0", 1, 1), message("12", 1, 1), message("-1", 1, 1), "{header:{},appMetrics:{}}",
        message("5", 1, 1)});
  log::terminateLogging();
  const std::string line = "<ms> [ ERROR ] Unknown method type.\n";
  EXPECT_EQ(m_printed, line + line + line + line);
}

class RecordingReader : public OpenReader {
 public:
  using OpenReader::OpenReader;

  bool processNextMessage() override {
    m_results.push_back(OpenReader::processNextMessage());
    return m_results.back();
  }

  const std::vector<bool>& results() const { return m_results; }

 private:
  std::vector<bool> m_results;
};

TEST_F(SingleMessages, OnlyTakenOnesAreAnsweredWithTrue) {
  const std::string rejected = "{header:{},appMetrics:{},method:5,visibilityLevel:9}";
  const std::string nameless = "{header:{},appMetrics:{},method:1}";
  RecordingReader reader(
      m_folder.add("run.log", logOf({chunkOf({message("5", 1, 1), rejected, message("6", 1, 1),
                                              message("0", 1, 1), nameless})})),
      5);
  ASSERT_TRUE(reader.readInputFile(false));
  EXPECT_EQ(reader.results(), (std::vector<bool>{true, false, true, false, false, false}));
}

TEST_F(SingleMessages, NextMessageTellsWhatBecameOfIt) {
  OpenReader reader;
  ASSERT_TRUE(log::initializeLogging(nullptr, 5));
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader.processNextMessage()); });
  log::terminateLogging();
  EXPECT_TRUE(reader.m_reachedEof);
  EXPECT_EQ(printed,
            "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: "
            "0)\n<ms> [ DEBUG ] profiling::VynProfileLogReader reached EOF!\n");
}

TEST_F(SingleMessages, InitTotalsAddUpContextComposeAndFinalize) {
  const auto reader =
      read({message("6", 11, 5), message("7", 12, 6),
            message("2", 13, 7, "graphName:\"a\",profilingEvents:[" + event("x", 1) + "]"),
            message("2", 14, 8, "graphName:\"b\",profilingEvents:[" + event("y", 1) + "]"),
            message("4", 15, 100)});
  EXPECT_EQ(reader->m_initTimestamp, 11U);
  EXPECT_EQ(reader->m_initTime, 26U);
}

TEST_F(SingleMessages, InitTotalsAreTheBinarysWithoutFinalize) {
  const auto reader = read({message("6", 11, 5), message("4", 15, 100)});
  EXPECT_EQ(reader->m_initTimestamp, 15U);
  EXPECT_EQ(reader->m_initTime, 100U);
}

TEST_F(SingleMessages, InitTotalsAreTheBinarysWhenFinalizeTookNoTime) {
  const auto reader = read({message("2", 13, 0, "graphName:\"a\""), message("4", 15, 100)});
  EXPECT_EQ(reader->m_initTimestamp, 15U);
  EXPECT_EQ(reader->m_initTime, 100U);
}

}  // namespace
}  // namespace vyn::test
