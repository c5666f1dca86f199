#include "base/version/profile_viewer_version.h"
#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using ViewSummaryTest = HostTest;

TEST_F(ViewSummaryTest, GoesToStandardOutputAlone) {
  write("run.log", smallLog());
  const ProgramResult result = run({"run.log", "-r", "summary"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_THAT(result.output, HasSubstr("Execute Stats (Average):"));
  EXPECT_THAT(result.output, HasSubstr("    Backend (run): 3 us\n"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(ViewSummaryTest, TheListingIsAddedToWhatTheFileHolds) {
  write("run.log", smallLog());
  write("out.csv", "kept\n");
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "out.csv"}), SucceedsQuietly());
  const std::string once = read("out.csv");
  EXPECT_THAT(once, StartsWith("kept\ninput log file location, run.log\n"));
  EXPECT_THAT(once, HasSubstr("\n10,EXECUTE,3,US,BACKEND,ROOT,run\n"));
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "out.csv"}), SucceedsQuietly());
  EXPECT_EQ(read("out.csv"), once + once.substr(5));
  EXPECT_THAT(names(), ElementsAre("out.csv", "run.log"));
}

TEST_F(ViewSummaryTest, TheListingMayFollowTheSummaryOnStandardOutput) {
  write("run.log", smallLog());
  const ProgramResult result = run({"run.log", "-r", "summary", "-o", "-"});
  EXPECT_THAT(result, SucceedsQuietly());
  const std::size_t listing = result.output.find("input log file location, run.log\n");
  EXPECT_THAT(result.output.substr(0, listing), HasSubstr("Execute Stats (Max)"));
  EXPECT_THAT(result.output, HasSubstr("input log file location, run.log\n"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(ViewSummaryTest, MessagesBelowTheLevelAreTaken) {
  write("run.log", logWith({execute("net", {.visibilityLevel = -6}, {{.identifier = "shown"}}),
                            execute("net", {.visibilityLevel = -5}, {{.identifier = "hidden"}})}));
  const ProgramResult result = run({"run.log", "-r", "summary", "-l", "-5"});
  EXPECT_THAT(result.output, HasSubstr("shown"));
  EXPECT_THAT(result.output, Not(HasSubstr("hidden")));
  EXPECT_THAT(run({"run.log", "-r", "summary"}).output, HasSubstr("hidden"));
}

TEST_F(ViewSummaryTest, PayloadsAreWrittenOnlyWhenAskedFor) {
  write("run.log", logWith({finalize("net", {}, {object("blob.bin", "bytes")})}));
  EXPECT_THAT(run({"run.log", "-r", "summary"}), SucceedsQuietly());
  EXPECT_THAT(names(), ElementsAre("run.log"));
  EXPECT_THAT(run({"run.log", "-r", "summary", "--payloads"}), SucceedsQuietly());
  EXPECT_THAT(names(), ElementsAre("blob.bin", "run.log"));
  EXPECT_EQ(read("blob.bin"), "bytes");
}

TEST_F(ViewSummaryTest, AClosedOrFullStandardOutputFailsBehindTheListing) {
  write("run.log", smallLog());
  write("out.csv", "kept\n");
  ProgramCall full = call({"run.log", "-r", "summary", "-o", "out.csv"});
  full.standardOutput = "/dev/full";
  EXPECT_THAT(runProgram(full), FailsWith("standard output: disk full; free some space or choose "
                                          "another place"));
  EXPECT_THAT(runInShell("exec \"$0\" \"$@\" >&-", {"run.log", "-r", "summary", "-o", "out.csv"}),
              FailsWith("standard output: is closed; open it or choose another output"));
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "one.csv"}), SucceedsQuietly());
  EXPECT_EQ(read("out.csv"), "kept\n" + read("one.csv") + read("one.csv"));
  EXPECT_THAT(names(), ElementsAre("one.csv", "out.csv", "run.log"));
}

TEST_F(ViewSummaryTest, IsNotPrintedWhenTheListingFails) {
  write("run.log", smallLog());
  const ProgramResult result = run({"run.log", "-r", "summary", "-o", "/dev/full"});
  EXPECT_THAT(result, FailsWith("/dev/full: disk full; free some space or choose another place"));
  EXPECT_EQ(result.output, "");
}

TEST_F(ViewSummaryTest, WhatTheReaderPrintsWhileReadingComesFirst) {
  // An asynchronous execution without a queue wait makes the reader print a notice.
  write("run.log", smallLog() + logWith({executeAsync("net", {.duration = 7})}));
  const ProgramResult result = run({"run.log", "-r", "summary"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_LT(result.output.find("queue-wait"), result.output.find("Input Log File Location"));
}

std::string logOfHostileName() {
  const Event event{.identifier = "\x1b[31mred\t\xc2\x9bü", .unit = EventUnit::COUNT};
  return logWith({execute("net", {}, {event})});
}

TEST_F(ViewSummaryTest, OnATerminalControlCharactersAreShownNotSent) {
  write("run.log", logOfHostileName());
  const std::string shown = "    Backend (\\x1b[31mred\\x09\\xc2\\x9bü): ";
  const ProgramResult summary =
      runInShell("script --quiet --return --command \"'$0' run.log -r summary\" /dev/null", {});
  EXPECT_THAT(summary.output, HasSubstr(shown));
  EXPECT_THAT(summary.output, Not(HasSubstr("\x1b")));
  const ProgramResult listing = runInShell(
      "script --quiet --return --command \"'$0' run.log -r summary -o -\" /dev/null", {});
  EXPECT_THAT(listing.output, HasSubstr(",ROOT,\\x1b[31mred\\x09"));
  EXPECT_THAT(listing.output, Not(HasSubstr("\x1b")));
}

TEST_F(ViewSummaryTest, AnywhereElseItIsPassedOnByteForByte) {
  write("run.log", logOfHostileName());
  EXPECT_THAT(run({"run.log", "-r", "summary"}).output,
              HasSubstr("    Backend (\x1b[31mred\t\xc2\x9bü): "));
}

// Longer than what is shown at once.
TEST_F(ViewSummaryTest, OnATerminalCharactersStayWhole) {
  std::string name;
  for (int i = 0; i < 100'000; ++i) {
    name += "€";
  }
  write("run.log", logWith({execute("net", {}, {{.identifier = name}})}));
  const ProgramResult result =
      runInShell("script --quiet --return --command \"'$0' run.log -r summary\" /dev/null", {});
  EXPECT_THAT(result.output, HasSubstr("    Backend (" + name + "): "));
  EXPECT_THAT(result.output, Not(HasSubstr("\\x")));
}

using HeaderTest = HostTest;

TEST_F(HeaderTest, IsPrintedAlone) {
  write("run.log", smallLog());
  ProgramCall header = call({"run.log", "-r", "summary", "--header"});
  header.environment.emplace_back("TZ=UTC");
  const ProgramResult result = runProgram(header);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.output,
            "Input Log File Location: run.log\n"
            "Log File Created: Thu Jan  1 00:00:00 1970\n"
            "Time Scale: 1\n"
            "Epoch Timestamp: 0 Steady Clock Timestamp: 0\n"
            "Generated using: \n"
            "vyn-profile-viewer " +
                std::string(profiling::kProfileViewerVersion) +
                "\n"
                "vyn-net-run        net-run 7\n");
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(HeaderTest, WhatTheReaderPrintsWhileReadingGoesToStandardError) {
  // An asynchronous execution without a queue wait makes the reader print a notice.
  write("run.log", smallLog() + logWith({executeAsync("net", {.duration = 7})}));
  const ProgramResult result = run({"run.log", "-r", "summary", "--header"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output, StartsWith("Input Log File Location: run.log\n"));
  EXPECT_THAT(result.output, Not(HasSubstr("queue-wait")));
  EXPECT_THAT(result.errors, HasSubstr("queue-wait"));
}

TEST_F(HeaderTest, ControlCharactersOfTheLogAreShownNotSent) {
  write("run.log", logOf({R"({header: {backendVersion: "1\u001b[31m\u009b\u202e\u2028\r\nü€"}})"}));
  const ProgramResult result = run({"run.log", "-r", "summary", "--header"});
  EXPECT_THAT(result.output, HasSubstr("\nBackend            1\\x1b[31m\\xc2\\x9b\\xe2\\x80\\xae"
                                       "\\xe2\\x80\\xa8\\x0d\nü€\n"));
}

TEST_F(HeaderTest, ALogMayHaveNone) {
  write("run.log", logWith({}));
  EXPECT_THAT(run({"run.log", "-r", "summary", "--header"}),
              FailsWith("run.log: the log holds no header; read it without --header"));
}

}  // namespace
}  // namespace vyn::test
