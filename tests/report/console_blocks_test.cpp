// The blocks of the console summary, each by itself.

#include <gmock/gmock.h>

#include <iomanip>
#include <sstream>

#include "support/log_event.h"
#include "support/open_reader.h"
#include "support/records.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

using Block = void (OpenReader::*)(std::ostream&);

class ConsoleBlocks : public testing::Test {
 protected:
  template <typename Print>
  std::string printed(Print print) {
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(0);
    (m_reader.*print)(stream);
    return stream.str();
  }

  OpenReader m_reader;
};

std::string dashes(std::size_t count) { return std::string(count, '-') + "\n"; }

TEST_F(ConsoleBlocks, TitleIsFollowedByTheFirstFourBlocks) {
  EXPECT_EQ(printed(&OpenReader::printStatisticsTitle),
            "Vyn Init/Prepare/Finalize/De-Init/Execute/Lib-Load Statistics:\n" + dashes(60) +
                "Init Stats:\n" + dashes(11) + "    NetRun: 0 us\n\n" + "Compose Graphs Stats:\n" +
                dashes(14) + "    NetRun: 0 us\n\n" + "Finalize Stats:\n" + dashes(15) + "\n" +
                "De-Init Stats:\n" + dashes(14) + "    NetRun: 0 us\n\n");
}

TEST_F(ConsoleBlocks, InitListsInitEventsBeforeThoseOfTheBinary) {
  m_reader.m_initTime = 26;
  m_reader.m_initEvents = {bytes("load", 5)};
  m_reader.m_createFromBinaryEvents = {microseconds("parse", 6)};
  const std::string start = "Init Stats:\n" + dashes(11) + "    NetRun: 26 us\n";
  EXPECT_EQ(printed(&OpenReader::printInitStats), start + "\n");
  m_reader.m_hasCreateFromBinaryEvents = true;
  EXPECT_EQ(printed(&OpenReader::printInitStats), start + "    Backend (parse): 6 us\n\n");
  m_reader.m_hasInitEvents = true;
  EXPECT_EQ(printed(&OpenReader::printInitStats), start + "    Backend (load): 5 bytes\n\n");
}

TEST_F(ConsoleBlocks, ComposeGraphsShowsItsTimeAlone) {
  m_reader.m_composeGraphsTime = 8;
  EXPECT_EQ(printed(&OpenReader::printComposeGraphsStats),
            "Compose Graphs Stats:\n" + dashes(14) + "    NetRun: 8 us\n\n");
}

TEST_F(ConsoleBlocks, FinalizeListsEventsOnlyUnderItsFlag) {
  m_reader.m_hasFinalize = true;
  m_reader.m_finalizeGroups = {figure("net0", {.duration = 6}, {cycles("x", 1)}),
                               figure("net1", {.duration = 7})};
  const std::string start =
      "Finalize Stats:\n" + dashes(15) + "Graph 0 (net0):\n    NetRun: 6 us\n";
  const std::string rest = "\nGraph 1 (net1):\n    NetRun: 7 us\n\n";
  EXPECT_EQ(printed(&OpenReader::printFinalizeStats), start + rest);
  m_reader.m_hasFinalizeEvents = true;
  EXPECT_EQ(printed(&OpenReader::printFinalizeStats), start + "    Backend (x): 1 cycles\n" + rest);
}

TEST_F(ConsoleBlocks, DeInitAlwaysListsItsEvents) {
  m_reader.m_deInitTime = 4;
  m_reader.m_deInitEvents = {cycles("x", 1)};
  EXPECT_EQ(printed(&OpenReader::printDeInitStats),
            "De-Init Stats:\n" + dashes(14) + "    NetRun: 4 us\n    Backend (x): 1 cycles\n\n");
}

class InferencesPerSecond : public ConsoleBlocks {
 protected:
  void expectRate(std::vector<profiling::EventNode> events, const std::string& rate) {
    m_reader.m_executeIpsEvents = std::move(events);
    m_reader.m_hasExecuteIps = true;
    EXPECT_EQ(printed(&OpenReader::printExecuteStatsOverall),
              "Execute Stats (Overall):\n" + dashes(24) +
                  "    NetRun IPS (includes IO and misc. time): " + rate + " inf/sec \n\n");
  }
};

TEST_F(InferencesPerSecond, TakeTheDurationFromTheFirstEvent) {
  expectRate({cycles("duration", 2000000), cycles("count", 100)}, "50.0000");
}

TEST_F(InferencesPerSecond, TakeTheDurationFromTheSecondEvent) {
  expectRate({cycles("count", 100), cycles("duration", 3000000)}, "33.3333");
}

TEST_F(InferencesPerSecond, TakeTheSecondEventForTheDurationWhateverItsName) {
  expectRate({cycles("a", 100), cycles("b", 2000000)}, "50.0000");
}

TEST_F(InferencesPerSecond, AreNoneInADurationOfZero) {
  expectRate({cycles("duration", 0), cycles("count", 100)}, "0.0000");
}

TEST_F(InferencesPerSecond, AreComputedInSinglePrecision) {
  // 2^24 + 1 inferences, which a float counts as 2^24.
  expectRate({cycles("duration", 1), cycles("count", 16777217)}, "16777216000000.0000");
}

TEST_F(InferencesPerSecond, CountATextAsZero) {
  const Event duration = text("duration", "a text, whose word is an address");
  // So many that an address for a duration would not make it a rate of 0.
  constexpr std::uint64_t kCount = 1'000'000'000'000'000'000;
  expectRate({duration, cycles("count", kCount)}, "0.0000");
  expectRate({cycles("a", kCount), text("b", "another text")}, "0.0000");
  expectRate({text("b", "another text"), cycles("a", 7)}, "0.0000");
}

TEST_F(InferencesPerSecond, AreLeftOutWithoutTheirMessageOrWithOneEvent) {
  m_reader.m_executeIpsEvents = {cycles("duration", 1), cycles("count", 1)};
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsOverall), "");
  m_reader.m_hasExecuteIps = true;
  m_reader.m_executeIpsEvents.pop_back();
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsOverall), "");
}

const std::string kExecuteRules =
    dashes(24) + "Total Inference Time: \n" + std::string(21, '-') + "\n";

TEST_F(ConsoleBlocks, ExecutionsWithoutAnyAreHeadingsAndAnEmptyLine) {
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsAverage),
            "Execute Stats (Average):\n" + kExecuteRules + "\n");
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsMin),
            "Execute Stats (Min):\n" + kExecuteRules + "\n");
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsMax),
            "Execute Stats (Max):\n" + kExecuteRules + "\n");
}

TEST_F(ConsoleBlocks, SynchronousExecutionHasNoRoundTripEvenWithQueueWaits) {
  m_reader.m_executeMin = {figure("net0", {.duration = 10})};
  m_reader.m_executeGroups = {
      {"net0",
       {execution({.duration = 10}, {cycles("x", 1, {ofUnit(EventUnit::NONE, number("y", 2))})})}}};
  m_reader.m_queueWaitMin = {{"net0", 4}};
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsMin),
            "Execute Stats (Min):\n" + kExecuteRules +
                "Graph 0 (net0):\n    NetRun: 10 us\n    Backend (x): 1 cycles\n        y: 2 \n\n");
}

TEST_F(ConsoleBlocks, AsynchronousAverageSubtractsTheMeanWait) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeAverage = {figure("net0", {.duration = 1200}),
                               figure("net1", {.duration = 50})};
  m_reader.m_executeGroups = {{"net0", {execution({.duration = 1200}, {cycles("x", 1)})}},
                              {"net1", {execution({.duration = 50})}}};
  m_reader.m_queueWaitSeries = {{"net0", {100, 301}}};
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsAverage),
            "Execute Stats (Average):\n" + kExecuteRules +
                "Graph 0 (net0):\n    NetRun (Host Round-Trip): 1200 us\n"
                "    NetRun (Host Round-Trip excluding queue wait): 1000\n"
                "    Backend (x): 1 cycles\n\n"
                "Graph 1 (net1):\n    NetRun (Host Round-Trip): 50 us\n\n");
}

TEST_F(ConsoleBlocks, WaitLongerThanTheDurationWrapsAround) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeMax = {figure("net0", {.duration = 1})};
  m_reader.m_queueWaitMax = {{"net0", 2}};
  EXPECT_THAT(printed(&OpenReader::printExecuteStatsMax),
              HasSubstr("excluding queue wait): 18446744073709551615\n"));
}

TEST_F(ConsoleBlocks, EmptySeriesCountsAsNoWaitAndHugeOnesDoNotOverflow) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeAverage = {figure("a", {.duration = 7}), figure("b", {.duration = 7})};
  m_reader.m_queueWaitSeries = {{"a", {}}, {"b", {18446744073709551615U, 18446744073709551615U}}};
  const std::string text = printed(&OpenReader::printExecuteStatsAverage);
  EXPECT_THAT(text, HasSubstr("excluding queue wait): 7\n"));
  EXPECT_THAT(text, HasSubstr("excluding queue wait): 8\n"));  // 7 - (2^64 - 1)
}

TEST_F(ConsoleBlocks, MeanWaitIsOfDoublePrecision) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeAverage = {figure("a", {.duration = 16777217}),
                               figure("b", {.duration = 9007199254740993U})};
  // 2^24 + 1, which no float holds, and 2^53 + 1, which no double holds.
  m_reader.m_queueWaitSeries = {{"a", {16777217}}, {"b", {9007199254740993U}}};
  const std::string text = printed(&OpenReader::printExecuteStatsAverage);
  EXPECT_THAT(text, HasSubstr("excluding queue wait): 0\n"));
  EXPECT_THAT(text, HasSubstr("excluding queue wait): 1\n"));
}

TEST_F(ConsoleBlocks, FirstWaitOfANameCounts) {
  m_reader.m_asyncExecute = true;
  m_reader.m_executeMin = {figure("a", {.duration = 10})};
  m_reader.m_queueWaitMin = {{"a", 1}, {"a", 2}};
  EXPECT_THAT(printed(&OpenReader::printExecuteStatsMin), HasSubstr("queue wait): 9\n"));
}

TEST_F(ConsoleBlocks, OmittedDetailsLeaveOutWaitAndEvents) {
  m_reader.m_asyncExecute = true;
  m_reader.m_omitExecuteDetails = true;
  m_reader.m_executeMin = {figure("a", {.duration = 10})};
  m_reader.m_executeGroups = {{"a", {execution({.duration = 10}, {cycles("x", 1)})}}};
  m_reader.m_queueWaitMin = {{"a", 1}};
  EXPECT_EQ(printed(&OpenReader::printExecuteStatsMin),
            "Execute Stats (Min):\n" + kExecuteRules +
                "Graph 0 (a):\n    NetRun (Host Round-Trip): 10 us\n\n");
}

TEST_F(ConsoleBlocks, FiguresListTheEventsOfTheirOwnExecutions) {
  m_reader.m_executeGroups = {{"a",
                               {execution({.duration = 10}, {cycles("x", 10)}),
                                execution({.duration = 20}, {cycles("x", 20)})}}};
  m_reader.m_executeAverage = m_reader.m_executeMin =
      m_reader.m_executeMax = {figure("a", {.duration = 1})};
  EXPECT_THAT(printed(&OpenReader::printExecuteStatsAverage), HasSubstr("(x): 15 "));
  EXPECT_THAT(printed(&OpenReader::printExecuteStatsMin), HasSubstr("(x): 10 "));
  EXPECT_THAT(printed(&OpenReader::printExecuteStatsMax), HasSubstr("(x): 20 "));
}

TEST_F(ConsoleBlocks, TextsCountAsZeroWhereANumberIsAskedFor) {
  const Event note = text("note", "some text");
  m_reader.m_hasLibLoad = true;
  m_reader.m_libLoadEvents = {note};
  EXPECT_THAT(printed(&OpenReader::printLibLoadStats), HasSubstr("Latency: 0 us"));
  EXPECT_EQ(printed(&OpenReader::writeLibLoadCsv), "0,DLOPEN LATENCY,0,US,NETRUN,ROOT,null\n");
  m_reader.m_hasExecuteIps = true;
  for (const auto& events : {Events{note, cycles("duration", 7)}, Events{cycles("n", 7), note}}) {
    m_reader.m_executeIpsEvents.assign(events.begin(), events.end());
    EXPECT_THAT(printed(&OpenReader::printExecuteStatsOverall), HasSubstr(" 0.0000 inf"));
  }
}

TEST_F(ConsoleBlocks, LibLoadTakesTheFirstValueWhateverItsType) {
  m_reader.m_libLoadEvents = {bytes("latency", 99), cycles("other", 1)};
  EXPECT_EQ(printed(&OpenReader::printLibLoadStats), "");
  m_reader.m_hasLibLoad = true;
  EXPECT_EQ(printed(&OpenReader::printLibLoadStats),
            "Dynamic Lib Load Stats:\n" + dashes(24) + "    Backend Latency: 99 us\n\n");
  m_reader.m_libLoadEvents.clear();
  EXPECT_EQ(printed(&OpenReader::printLibLoadStats), "");
}

TEST_F(ConsoleBlocks, AppliedBinarySectionsNeedTheirFlag) {
  m_reader.m_applyBinarySectionAverage = {figure("net0", {.duration = 5})};
  m_reader.m_applyBinarySectionGroups = {{"net0", {execution({.duration = 5}, {cycles("x", 1)})}}};
  EXPECT_EQ(printed(&OpenReader::printApplyBinarySectionStatsAverage), "");
  m_reader.m_hasApplyBinarySection = true;
  EXPECT_EQ(printed(&OpenReader::printApplyBinarySectionStatsAverage),
            "ApplyBinarySection Stats (Average):\n" + dashes(35) +
                "Graph 0 (net0):\n    NetRun: 5 us\n    Backend (x): 1 cycles\n\n");
}

TEST_F(ConsoleBlocks, AppliedBinarySectionsWithoutGroupsHaveNoEmptyLine) {
  m_reader.m_hasApplyBinarySection = true;
  EXPECT_EQ(printed(&OpenReader::printApplyBinarySectionStatsMin),
            "ApplyBinarySection Stats (Min):\n" + dashes(35));
  EXPECT_EQ(printed(&OpenReader::printApplyBinarySectionStatsMax),
            "ApplyBinarySection Stats (Max):\n" + dashes(35));
}

TEST_F(ConsoleBlocks, AppliedBinarySectionsListTheirOwnGroups) {
  m_reader.m_hasApplyBinarySection = true;
  m_reader.m_applyBinarySectionMin = {figure("fast", {.duration = 5})};
  m_reader.m_applyBinarySectionMax = {figure("slow", {.duration = 9}),
                                      figure("other", {.duration = 8})};
  EXPECT_EQ(
      printed(&OpenReader::printApplyBinarySectionStatsMin),
      "ApplyBinarySection Stats (Min):\n" + dashes(35) + "Graph 0 (fast):\n    NetRun: 5 us\n\n");
  EXPECT_EQ(printed(&OpenReader::printApplyBinarySectionStatsMax),
            "ApplyBinarySection Stats (Max):\n" + dashes(35) +
                "Graph 0 (slow):\n    NetRun: 9 us\n\nGraph 1 (other):\n    NetRun: 8 us\n\n");
}

TEST_F(ConsoleBlocks, AppliedBinarySectionsHaveNoRoundTrip) {
  m_reader.m_asyncExecute = true;
  m_reader.m_hasApplyBinarySection = true;
  m_reader.m_applyBinarySectionMin = {figure("a", {.duration = 5})};
  m_reader.m_queueWaitMin = {{"a", 1}};
  EXPECT_EQ(
      printed(&OpenReader::printApplyBinarySectionStatsMin),
      "ApplyBinarySection Stats (Min):\n" + dashes(35) + "Graph 0 (a):\n    NetRun: 5 us\n\n");
}

TEST_F(ConsoleBlocks, ListedEventLeavesTheStreamInFixedNotationWithoutDecimals) {
  std::ostringstream stream;
  stream << std::scientific << std::setprecision(3);
  m_reader.printEvents(stream, {ofUnit(EventUnit::OBJECT, number("o", 1, {cycles("c", 2)}))});
  stream << 2.75 << "\n";
  m_reader.printEvents(stream, {cycles("a", 1)});
  stream << 2.75;
  EXPECT_EQ(stream.str(), "        c: 2 cycles\n2.750e+00\n    Backend (a): 1 cycles\n3");
}

TEST_F(ConsoleBlocks, EventsListChildrenButNoGrandchildrenAndNoObjects) {
  std::ostringstream stream;
  m_reader.printEvents(
      stream, {ofUnit(EventUnit::OBJECT, number("o", 1, {count("c", 2)})),
               ofUnit(EventUnit::NONE, number("a", 3,
                                              {bytes("b", 4, {cycles("deep", 5)}),
                                               ofUnit(EventUnit::OBJECT, number("p", 6))}))});
  EXPECT_EQ(stream.str(), "        c: 2 count\n    Backend (a): 3 \n        b: 4 bytes\n");
}

}  // namespace
}  // namespace vyn::test
