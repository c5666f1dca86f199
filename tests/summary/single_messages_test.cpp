// Messages of which the last one that is taken counts, and the filter by visibility level.

#include "log/logger_registry.h"
#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using SingleMessages = SummaryReaderTest;

TEST_F(SingleMessages, TimingsAreStored) {
  const auto reader = read({createContext({.duration = 5, .timestamp = 11}),
                            composeGraphs({.duration = 6, .timestamp = 12})});
  EXPECT_EQ(reader->m_contextCreateTimestamp, 11U);
  EXPECT_EQ(reader->m_contextCreateTime, 5U);
  EXPECT_EQ(reader->m_composeGraphsTimestamp, 12U);
  EXPECT_EQ(reader->m_composeGraphsTime, 6U);
}

TEST_F(SingleMessages, LevelZeroTakesNothingButTheTimeStampsOfTimings) {
  const auto reader = read(
      {createContext({.duration = 5, .timestamp = 11}),
       composeGraphs({.duration = 6, .timestamp = 12}), deInit({.duration = 7, .timestamp = 13}),
       execute("net", {.duration = 8, .timestamp = 14})},
      0);
  EXPECT_EQ(reader->m_contextCreateTimestamp, 11U);
  EXPECT_EQ(reader->m_contextCreateTime, 0U);
  EXPECT_EQ(reader->m_composeGraphsTimestamp, 12U);
  EXPECT_EQ(reader->m_composeGraphsTime, 0U);
  EXPECT_EQ(reader->m_deInitTimestamp, 0U);
  EXPECT_THAT(reader->m_executeGroups, IsEmpty());
}

TEST_F(SingleMessages, MessageIsTakenOnlyByAHigherLevel) {
  const Message message = deInit({.duration = 7, .visibilityLevel = 1});
  EXPECT_EQ(read({message}, 2)->m_deInitTime, 7U);
  EXPECT_EQ(read({message}, 1)->m_deInitTime, 0U);
}

TEST_F(SingleMessages, LevelsAreComparedAsSignedNumbers) {
  EXPECT_EQ(read({deInit({.duration = 7, .visibilityLevel = -1})}, 0)->m_deInitTime, 7U);
  EXPECT_EQ(read({deInit({.duration = 7, .visibilityLevel = 127})}, 127)->m_deInitTime, 0U);
  EXPECT_EQ(read({deInit({.duration = 7, .visibilityLevel = -128})}, -127)->m_deInitTime, 7U);
}

TEST_F(SingleMessages, LaterRejectedTimingMovesOnlyTheTimeStamp) {
  const auto reader = read({createContext({.duration = 5, .timestamp = 11}),
                            createContext({.duration = 50, .timestamp = 21, .visibilityLevel = 3})},
                           2);
  EXPECT_EQ(reader->m_contextCreateTimestamp, 21U);
  EXPECT_EQ(reader->m_contextCreateTime, 5U);
}

TEST_F(SingleMessages, LastDeInitWins) {
  const auto reader =
      read({deInit({.duration = 10, .timestamp = 1}, {number("a", 1), number("b", 2)}),
            deInit({.duration = 20, .timestamp = 2}, {number("c", 3)})});
  EXPECT_EQ(reader->m_deInitTime, 20U);
  EXPECT_EQ(reader->m_deInitTimestamp, 2U);
  EXPECT_THAT(namesOf(reader->m_deInitEvents), ElementsAre("c"));
}

TEST_F(SingleMessages, EachKindHasItsStoreAndFlag) {
  const auto reader =
      read({createFromBinary({.duration = 10, .timestamp = 1}, {number("parse", 1)}),
            executeIps({.duration = 20, .timestamp = 2}, {number("count", 1)}),
            loadLibrary({.duration = 30, .timestamp = 3}, {number("open", 1)})});
  EXPECT_TRUE(reader->m_hasCreateFromBinaryEvents);
  EXPECT_EQ(reader->m_createFromBinaryTime, 10U);
  EXPECT_EQ(reader->m_createFromBinaryTimestamp, 1U);
  EXPECT_THAT(namesOf(reader->m_createFromBinaryEvents), ElementsAre("parse"));
  EXPECT_TRUE(reader->m_hasExecuteIps);
  EXPECT_EQ(reader->m_executeIpsTime, 20U);
  EXPECT_THAT(namesOf(reader->m_executeIpsEvents), ElementsAre("count"));
  EXPECT_TRUE(reader->m_hasLibLoad);
  EXPECT_EQ(reader->m_libLoadTimestamp, 3U);
  EXPECT_THAT(namesOf(reader->m_libLoadEvents), ElementsAre("open"));
}

TEST_F(SingleMessages, RejectedOnesSetNoFlag) {
  const auto reader = read({createFromBinary(), executeIps(), loadLibrary()}, 0);
  EXPECT_FALSE(reader->m_hasCreateFromBinaryEvents);
  EXPECT_FALSE(reader->m_hasExecuteIps);
  EXPECT_FALSE(reader->m_hasLibLoad);
}

TEST_F(SingleMessages, FlagsNeedNoEventsAndOutlastRejectedMessages) {
  const Step hidden = {.timestamp = 4, .visibilityLevel = 9};
  const auto reader = read({createFromBinary(), executeIps(), loadLibrary({.timestamp = 3}),
                            createFromBinary(hidden), executeIps(hidden), loadLibrary(hidden)},
                           5);
  EXPECT_TRUE(reader->m_hasCreateFromBinaryEvents);
  EXPECT_TRUE(reader->m_hasExecuteIps);
  EXPECT_TRUE(reader->m_hasLibLoad);
  EXPECT_EQ(reader->m_libLoadTimestamp, 3U);
}

TEST_F(SingleMessages, LaterTimingWithoutDurationOverwritesTheEarlierOne) {
  const auto reader = read({createContext({.duration = 5}), createContext({.duration = 0})});
  EXPECT_EQ(reader->m_contextCreateTime, 0U);
}

TEST_F(SingleMessages, StopBeforeStartIsADurationOfZero) {
  const Message message{.method = MethodType::BACKEND_DEINIT, .startTime = 9, .stopTime = 5};
  EXPECT_EQ(read({message})->m_deInitTime, 0U);
}

TEST_F(SingleMessages, StopWithoutAStartIsADurationOfZero) {
  EXPECT_EQ(read({{.method = MethodType::BACKEND_DEINIT, .stopTime = 5}})->m_deInitTime, 0U);
}

TEST_F(SingleMessages, UnknownMethodsAreLoggedAndSkipped) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  read({stepOf(MethodType::NONE), stepOf(MethodType{12}), stepOf(MethodType{-1}), Message{},
        deInit()});
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
  const Message rejected = deInit({.visibilityLevel = 9});
  const Message unknown = stepOf(MethodType::NONE);
  RecordingReader reader(m_folder.add("run.log", logWith({deInit(), rejected, createContext(),
                                                          unknown, execute(kNoGraph)})),
                         5);
  ASSERT_TRUE(reader.readInputFile(false));
  EXPECT_THAT(reader.results(), ElementsAre(true, false, true, false, false, false));
}

TEST_F(SingleMessages, NextMessageTellsWhatBecameOfIt) {
  OpenReader reader;
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader.processNextMessage()); });
  log::terminateLogging();
  EXPECT_TRUE(reader.m_reachedEof);
  EXPECT_EQ(printed,
            "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: "
            "0)\n<ms> [ DEBUG ] profiling::VynProfileLogReader reached EOF!\n");
}

TEST_F(SingleMessages, InitTotalsAddUpContextComposeAndFinalize) {
  const auto reader = read({createContext({.duration = 5, .timestamp = 11}),
                            composeGraphs({.duration = 6, .timestamp = 12}),
                            finalize("A", {.duration = 7, .timestamp = 13}, {number("fuse", 1)}),
                            finalize("B", {.duration = 8, .timestamp = 14}, {number("fuse", 1)}),
                            createFromBinary({.duration = 100, .timestamp = 15})});
  EXPECT_EQ(reader->m_initTimestamp, 11U);
  EXPECT_EQ(reader->m_initTime, 26U);
}

TEST_F(SingleMessages, InitTotalsAreTheBinarysWithoutFinalize) {
  const auto reader = read({createContext({.duration = 5, .timestamp = 11}),
                            createFromBinary({.duration = 100, .timestamp = 15})});
  EXPECT_EQ(reader->m_initTimestamp, 15U);
  EXPECT_EQ(reader->m_initTime, 100U);
}

TEST_F(SingleMessages, InitTotalsAreTheBinarysWhenFinalizeTookNoTime) {
  const auto reader = read(
      {finalize("net", {.timestamp = 13}), createFromBinary({.duration = 100, .timestamp = 15})});
  EXPECT_EQ(reader->m_initTimestamp, 15U);
  EXPECT_EQ(reader->m_initTime, 100U);
}

}  // namespace
}  // namespace vyn::test
