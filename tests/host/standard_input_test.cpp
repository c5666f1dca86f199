#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class StandardInputTest : public HostTest {
 protected:
  StandardInputTest() { write("run.log", smallLog()); }

  std::string document() const { return run({"run.log", "-o", "-"}).output; }
};

// As a log's document differs from it only in the place that it names.
std::string readFromStandardInput(std::string document) {
  const std::string place = "\"run.log\"";
  return document.replace(document.find(place), place.size(), "\"/dev/stdin\"");
}

TEST_F(StandardInputTest, APipedLogGoesToStandardOutput) {
  const ProgramResult result = runInShell("cat run.log | \"$0\" \"$@\"", {"-"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, readFromStandardInput(document()));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(StandardInputTest, AFileMayStandBehindIt) {
  const ProgramResult result = runInShell("\"$0\" \"$@\" <run.log", {"view", "-"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, readFromStandardInput(document()));
}

TEST_F(StandardInputTest, TheOutputMayBeNamed) {
  EXPECT_THAT(runInShell("cat run.log | \"$0\" \"$@\"", {"-", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.json"), readFromStandardInput(document()));
}

TEST_F(StandardInputTest, TheSummaryTakesItToo) {
  const ProgramResult result = runInShell("cat run.log | \"$0\" \"$@\"", {"-", "-r", "summary"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_THAT(result.output, StartsWith("Input Log File Location: /dev/stdin\n"));
}

TEST_F(StandardInputTest, ItsPayloadsAreNotWritten) {
  EXPECT_THAT(
      runInShell("cat run.log | \"$0\" \"$@\"", {"-", "-r", "summary", "--payloads"}),
      FailsWith("standard input: the names of its payloads cannot be looked at before it is "
                "read, for it is no file; write it to a file, or read it without "
                "--payloads"));
}

TEST_F(StandardInputTest, AFileOfThatNameIsReachedByAPath) {
  write("-", smallLog());
  EXPECT_THAT(run({"./-", "-o", "out.json"}), SucceedsQuietly());
  EXPECT_THAT(read("out.json"), HasSubstr("\"./-\""));
}

TEST_F(StandardInputTest, DamageIsNamed) {
  write("bad.log", smallLog() + "damage, 20 bytes.");
  EXPECT_THAT(runInShell("\"$0\" \"$@\" <bad.log", {"-"}).errors,
              StartsWith(ownLine("standard input: damaged after chunk 1 at").substr(0, 50)));
  EXPECT_THAT(
      runInShell("cat bad.log | \"$0\" \"$@\"", {"-"}),
      FailsWith("standard input: the log is damaged; write it to a file and read that to "
                "learn where, or save what is whole of it with vyn-profile-viewer recover"));
}

TEST_F(StandardInputTest, WhereNoLogCanComeFromIsSaid) {
  EXPECT_THAT(runInShell("exec \"$0\" \"$@\" <&-", {"-"}),
              FailsWith("standard input: is closed; pipe a log into it or give the name of one"));
  EXPECT_THAT(runInShell("exec \"$0\" \"$@\" <.", {"-"}),
              FailsWith("standard input: is a directory; give the name of a file"));
  EXPECT_THAT(runInShell("{ dd bs=4 count=1 >/dev/null 2>&1; \"$0\" \"$@\"; } <run.log", {"-"}),
              FailsWith("standard input: was read from already; give it anew or give the log's "
                        "name"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(StandardInputTest, ATerminalIsRefused) {
  const ProgramResult result =
      runInShell("script --quiet --return --command \"'$0' -\" /dev/null", {});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, HasSubstr("standard input: is a terminal; pipe a log into it or give "
                                       "the name of one"));
}

TEST_F(StandardInputTest, TheLogIsNotItsOwnOutput) {
  EXPECT_THAT(runInShell("\"$0\" \"$@\" <run.log", {"-", "-o", "run.log"}),
              FailsWith("run.log: is the log itself; give another name for the output"));
  EXPECT_EQ(read("run.log"), smallLog());
}

}  // namespace
}  // namespace vyn::test
