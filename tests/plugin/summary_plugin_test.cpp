// Summary and listing of the summary reader's plug-in, by what a host sees of them.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <iostream>

#include "support/captured_output.h"
#include "support/flush_recorder.h"
#include "support/loaded_plugin.h"
#include "support/log_message.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Appends standard output to a file while it lives.
class AppendedStandardOutput {
 public:
  explicit AppendedStandardOutput(const std::string& path) : m_previous(dup(STDOUT_FILENO)) {
    std::fflush(stdout);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
  }
  ~AppendedStandardOutput() {
    std::cout.flush();
    std::fflush(stdout);
    dup2(m_previous, STDOUT_FILENO);
    close(m_previous);
  }
  AppendedStandardOutput(const AppendedStandardOutput&) = delete;
  AppendedStandardOutput& operator=(const AppendedStandardOutput&) = delete;

 private:
  int m_previous;
};

class SummaryPlugin : public testing::Test {
 protected:
  LoadedPlugin::Reader read(const std::vector<Message>& messages) {
    auto reader = m_plugin.reader(m_folder.add("run.log", logWith(messages)));
    EXPECT_TRUE(reader->readInputFile(false));
    return reader;
  }

  /// Writes both outputs of a log of these messages.
  void write(const std::vector<Message>& messages) {
    const auto reader = read(messages);
    const std::string path = m_folder.path("out.csv");
    std::filesystem::remove(path);
    m_summary = printedBy([&] { EXPECT_TRUE(reader->generateOutput(path)); });
    m_listing = readFile(path);
  }

  TempFolder m_folder;
  LoadedPlugin m_plugin{VYN_SUMMARY_PLUGIN};
  std::string m_summary;
  std::string m_listing;
};

TEST_F(SummaryPlugin, InitCountsAFinalizeStepWhoseEventsAreAllOfInit) {
  write({createContext({.duration = 5, .timestamp = 11}),
         composeGraphs({.duration = 6, .timestamp = 12}),
         finalize("net", {.duration = 7, .timestamp = 13}, {initEvent("load", 1)})});
  EXPECT_THAT(m_summary, HasSubstr("Init Stats:\n-----------\n    NetRun: 11 us\n"));
  EXPECT_THAT(m_listing, HasSubstr("\n11,INIT,11,US,NETRUN,ROOT,null\n"));
}

TEST_F(SummaryPlugin, InitDoesNotCountTheFinalizeEventsOfAComponent) {
  write({createContext({.duration = 5, .timestamp = 11}),
         composeGraphs({.duration = 6, .timestamp = 12}),
         graphComponent("net", {.duration = 7, .timestamp = 13}, {finalizeEvent("fuse", 1)})});
  EXPECT_THAT(m_summary, HasSubstr("Init Stats:\n-----------\n    NetRun: 0 us\n"));
  EXPECT_THAT(m_listing, HasSubstr("\n0,INIT,0,US,NETRUN,ROOT,null\n"));
}

TEST_F(SummaryPlugin, InitWithoutTimeOrBinaryKeepsTheTimeStampOfTheContext) {
  write({createContext({.timestamp = 11}), composeGraphs({.timestamp = 12}),
         finalize("net", {.timestamp = 13})});
  EXPECT_THAT(m_listing, HasSubstr("\n11,INIT,0,US,NETRUN,ROOT,null\n"));
}

TEST_F(SummaryPlugin, InitOfTheBinaryBringsItsTimeStampWhenAllElseTookNoTime) {
  write({createContext({.timestamp = 11}), finalize("net", {.timestamp = 13}),
         createFromBinary({.duration = 100, .timestamp = 15})});
  EXPECT_THAT(m_listing, HasSubstr("\n15,INIT,100,US,NETRUN,ROOT,null\n"));
}

TEST_F(SummaryPlugin, AppliedBinarySectionsAreTheLastRows) {
  write({applyBinarySection("net", {.duration = 2, .timestamp = 1}),
         loadLibrary({.duration = 4, .timestamp = 3}, {number("open", 5)}),
         executeIps({.duration = 7, .timestamp = 6}, {number("duration", 2), number("count", 1)})});
  EXPECT_THAT(m_listing, EndsWith("\n6,EXECUTE IPS,500000.000000,INF/SEC,NETRUN,ROOT,null\n"
                                  "3,DLOPEN LATENCY,5,US,NETRUN,ROOT,null\n"
                                  "1,APPLY BINARY SECTION,2,US,NETRUN,ROOT,Graph 0: net\n"));
}

TEST_F(SummaryPlugin, ListingIsWrittenBeforeTheSummary) {
  // So long that no buffer holds back the part of the summary that follows the name.
  const std::string name(100000, 'x');
  const auto reader = read({deInit({.duration = 2, .timestamp = 1}, {number(name, 3)}),
                            applyBinarySection("net", {.duration = 5, .timestamp = 4})});
  const std::string path = m_folder.path("both");
  {
    const AppendedStandardOutput output(path);
    EXPECT_TRUE(reader->generateOutput(path));
  }
  const std::string both = readFile(path);
  const std::size_t summary = both.find("Vyn Init/Prepare");
  EXPECT_THAT(both, StartsWith("input log file location, "));
  EXPECT_THAT(both.substr(0, summary),
              HasSubstr(",APPLY BINARY SECTION,5,US,NETRUN,ROOT,Graph 0: net\n"));
  EXPECT_THAT(both.substr(summary), HasSubstr("    Backend (" + name + "): 3 us\n"));
}

TEST_F(SummaryPlugin, GraphNamesWithAZeroByteAreShownWhole) {
  const std::string name("net\0A", 5);
  write({execute(name, {.duration = 2, .timestamp = 1})});
  EXPECT_THAT(m_summary, HasSubstr("Graph 0 (" + name + "):\n"));
  EXPECT_THAT(m_listing, HasSubstr(",ROOT,Graph 0: " + name + "\n"));
}

/// The events of a run of inferences, and the rate that the summary shows.
struct Rate {
  Events events;
  std::string shown;
};

class Rates : public SummaryPlugin, public testing::WithParamInterface<Rate> {};

TEST_P(Rates, AreShownWithFourDecimalsAndListedWithSix) {
  write({executeIps({.timestamp = 7}, GetParam().events)});
  EXPECT_THAT(m_summary, HasSubstr("    NetRun IPS (includes IO and misc. time): " +
                                   GetParam().shown + " inf/sec \n\n"));
  EXPECT_THAT(m_listing,
              HasSubstr("\n7,EXECUTE IPS," + GetParam().shown + "00,INF/SEC,NETRUN,ROOT,null\n"));
}

Events run(const std::string& first, std::uint64_t firstValue, std::uint64_t secondValue) {
  return {number(first, firstValue), number("b", secondValue)};
}

INSTANTIATE_TEST_SUITE_P(DurationIsFoundByTheExactName, Rates,
                         testing::Values(Rate{run("duration", 2000000, 100), "50.0000"},
                                         Rate{run("durations", 100, 2000000), "50.0000"},
                                         Rate{run("Duration", 100, 2000000), "50.0000"},
                                         Rate{run("DURATION", 100, 2000000), "50.0000"},
                                         Rate{run("duratio", 100, 2000000), "50.0000"},
                                         Rate{run(" duration", 100, 2000000), "50.0000"},
                                         Rate{run("duration ", 100, 2000000), "50.0000"},
                                         Rate{run("the duration", 100, 2000000), "50.0000"},
                                         Rate{run(std::string("duration\0x", 10), 100, 2000000),
                                              "50.0000"},
                                         Rate{run("", 100, 2000000), "50.0000"}));

INSTANTIATE_TEST_SUITE_P(
    OnlyTwoEventsCount, Rates,
    testing::Values(
        Rate{{number("a", 100), number("b", 2000000), number("duration", 1)}, "50.0000"},
        Rate{{number("duration", 2000000), number("b", 100), number("count", 7)}, "50.0000"},
        Rate{{number("a", 100), number("duration", 2000000), number("duration", 1),
              number("duration", 2)},
             "50.0000"},
        Rate{{number("duration", 2000000), number("duration", 100)}, "50.0000"}));

// In double precision the rates would be 4652371.7929, 16777217000000 and 33333333.3333.
INSTANTIATE_TEST_SUITE_P(AreOfSinglePrecision, Rates,
                         testing::Values(Rate{run("duration", 95139, 442622), "4652371.5000"},
                                         Rate{run("count", 442622, 95139), "4652371.5000"},
                                         Rate{run("duration", 1, 16777217), "16777216000000.0000"},
                                         Rate{run("duration", 3, 100), "33333334.0000"}));

INSTANTIATE_TEST_SUITE_P(
    ValuesAreUnsignedWords, Rates,
    testing::Values(Rate{run("duration", 0, 5), "0.0000"}, Rate{run("a", 5, 0), "0.0000"},
                    Rate{{number("duration", 1), Event{.value = std::int64_t{-1}}},
                         "18446744073709551616000000.0000"}));

/// The events of a library load, and the latency.
struct Latency {
  Events events;
  std::string shown;
};

class Latencies : public SummaryPlugin, public testing::WithParamInterface<Latency> {};

TEST_P(Latencies, AreTheFirstWordAsAnUnsignedNumber) {
  write({loadLibrary({.duration = 9, .timestamp = 7}, GetParam().events)});
  EXPECT_THAT(m_summary, HasSubstr("Dynamic Lib Load Stats:\n------------------------\n"
                                   "    Backend Latency: " +
                                   GetParam().shown + " us\n\n"));
  EXPECT_THAT(m_listing,
              HasSubstr("\n7,DLOPEN LATENCY," + GetParam().shown + ",US,NETRUN,ROOT,null\n"));
}

INSTANTIATE_TEST_SUITE_P(
    OfEachType, Latencies,
    testing::Values(Latency{{number("x", 340)}, "340"},
                    Latency{{number("x", 340), number("y", 5)}, "340"},
                    Latency{{cycles("x", 340, {number("y", 5)})}, "340"},
                    Latency{{number("x", UINT64_MAX)}, "18446744073709551615"},
                    Latency{{Event{.value = std::int64_t{-1}}}, "18446744073709551615"},
                    Latency{{Event{.value = 1.5F}}, "1069547520"},  // 0x3FC00000
                    Latency{{Event{.value = 1.5}}, "4609434218613702656"},
                    Latency{{Event{.value = -2.0}}, "13835058055282163712"},
                    Latency{{Event{.value = Event::Bytes{1, 2}}}, "0"}, Latency{{Event{}}, "0"}));

TEST_F(SummaryPlugin, LibraryLoadWithoutEventsHasNoLatency) {
  write({loadLibrary({.duration = 9, .timestamp = 7})});
  EXPECT_THAT(m_summary, Not(HasSubstr("Dynamic Lib Load")));
  EXPECT_THAT(m_listing, Not(HasSubstr("DLOPEN")));
}

/// The slots that list events, called by the host with a stream of its own.
class Listings : public SummaryPlugin {
 protected:
  LoadedPlugin::Reader m_reader = m_plugin.reader("none.log");
  FlushRecorder m_recorder;
  std::ostream m_stream{&m_recorder};
};

TEST_F(Listings, EachConsoleLineIsFlushed) {
  m_reader->printEvents(m_stream,
                        {cycles("a", 1, {cycles("b", 2), bytes("c", 3)}), cycles("d", 4)});
  EXPECT_THAT(m_recorder.flushed(),
              ElementsAre("    Backend (a): 1 cycles\n", "        b: 2 cycles\n",
                          "        c: 3 bytes\n", "    Backend (d): 4 cycles\n"));
  EXPECT_EQ(m_recorder.unflushed(), "");
}

TEST_F(Listings, EachCsvLineIsFlushed) {
  m_reader->writeEventsCsv(m_stream, {cycles("a", 1, {cycles("b", 2)}), bytes("c", 3)}, 42, "STEP");
  EXPECT_THAT(m_recorder.flushed(), ElementsAre("42,STEP,1,CYCLES,BACKEND,ROOT,a\n",
                                                "42,STEP,2,CYCLES,BACKEND,SUB-EVENT,b\n",
                                                "42,STEP,3,BYTES,BACKEND,ROOT,c\n"));
  EXPECT_EQ(m_recorder.unflushed(), "");
}

TEST_F(Listings, TimeStampsAndKeywordsStandAsTheyAreGiven) {
  m_reader->writeEventsCsv(m_stream, {cycles("a", 1)}, 18446744073709551615U, "A,\"b\" ");
  EXPECT_THAT(m_recorder.flushed(),
              ElementsAre("18446744073709551615,A,\"b\" ,1,CYCLES,BACKEND,ROOT,a\n"));
}

TEST_F(Listings, IdentifiersWithAZeroByteAreShownWhole) {
  const std::string parent("a\0b", 3);
  const std::string child("c\0d", 3);
  m_reader->printEvents(m_stream, {cycles(parent, 1, {cycles(child, 2)})});
  m_reader->writeEventsCsv(m_stream, {cycles(parent, 1, {cycles(child, 2)})}, 5, "STEP");
  EXPECT_THAT(
      m_recorder.flushed(),
      ElementsAre("    Backend (" + parent + "): 1 cycles\n", "        " + child + ": 2 cycles\n",
                  "5,STEP,1,CYCLES,BACKEND,ROOT," + parent + "\n",
                  "5,STEP,2,CYCLES,BACKEND,SUB-EVENT," + child + "\n"));
}

}  // namespace
}  // namespace vyn::test
