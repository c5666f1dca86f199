#include <sys/stat.h>

#include <optional>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class OutputStreamTest : public HostTest {
 protected:
  OutputStreamTest() { write("run.log", smallLog()); }

  std::string document() const {
    EXPECT_THAT(run({"run.log", "-o", "expected.json"}), SucceedsQuietly());
    std::string text = read("expected.json");
    fs::remove(directory() / "expected.json");
    return text;
  }
};

TEST_F(OutputStreamTest, StandardOutputHoldsTheDocumentAlone) {
  const ProgramResult result = run({"run.log", "-o", "-"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, document());
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(OutputStreamTest, AFileBehindStandardOutputIsWrittenNotReplaced) {
  write("out.txt", "");
  fs::create_hard_link(directory() / "out.txt", directory() / "twin.txt");
  ProgramCall redirected = call({"run.log", "-o", "/dev/stdout"});
  redirected.standardOutput = directory() / "out.txt";
  EXPECT_THAT(runProgram(redirected), SucceedsQuietly());
  EXPECT_EQ(read("twin.txt"), document());
}

TEST_F(OutputStreamTest, AFullDeviceFails) {
  EXPECT_THAT(run({"run.log", "-o", "/dev/full"}),
              FailsWith("/dev/full: disk full; free some space or choose another place"));
  ProgramCall redirected = call({"run.log", "-o", "-"});
  redirected.standardOutput = "/dev/full";
  EXPECT_THAT(runProgram(redirected),
              FailsWith("standard output: disk full; free some space or choose another place"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(OutputStreamTest, ADeviceIsWrittenNotReplaced) {
  EXPECT_THAT(run({"run.log", "-o", "/dev/null"}), SucceedsQuietly());
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(OutputStreamTest, AClosedStandardOutputFails) {
  EXPECT_THAT(runInShell("exec \"$0\" \"$@\" >&-", {"run.log", "-o", "-"}),
              FailsWith("standard output: is closed; open it or choose another output"));
}

TEST_F(OutputStreamTest, ClosedStandardStreamsStayOutOfTheFile) {
  const std::string expected = document();
  EXPECT_EQ(runInShell("exec \"$0\" \"$@\" <&- >&- 2>&-", {"run.log", "-o", "out.json"}).exitStatus,
            0);
  EXPECT_EQ(read("out.json"), expected);
}

// As a shell reports the signal of a closed pipe.
constexpr char kStatusOfClosedPipe[] = "status 141\n";

TEST_F(OutputStreamTest, AReaderThatGoesAwayEndsTheProgramQuietly) {
  write("run.log", logWithDocumentOver(1 << 20));
  const ProgramResult result =
      runInShell("{ \"$0\" \"$@\"; echo \"status $?\" >&2; } | :", {"run.log", "-o", "-"});
  EXPECT_EQ(result.errors, kStatusOfClosedPipe);
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(OutputStreamTest, AListingIsWholeWhenNobodyReadsTheSummary) {
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "one.csv"}), SucceedsQuietly());
  for (const std::string limit : {"none", "1GiB"}) {
    write("out.csv", "kept\n");
    const ProgramResult result =
        runInShell("{ sleep 0.1; \"$0\" \"$@\"; echo \"status $?\" >&2; } | :",
                   {"run.log", "-r", "summary", "-o", "out.csv", "--max-output", limit});
    EXPECT_EQ(result.errors, kStatusOfClosedPipe) << limit;
    EXPECT_EQ(read("out.csv"), "kept\n" + read("one.csv"));
    EXPECT_THAT(names(), ElementsAre("one.csv", "out.csv", "run.log"));
  }
}

TEST_F(OutputStreamTest, AClosedPipeIsQuietWhateverIsDoneWithItsSignal) {
  write("run.log", logWithDocumentOver(1 << 20));
  const ProgramResult result = runInShell(
      "trap '' PIPE; { \"$0\" \"$@\"; echo \"status $?\" >&2; } | :", {"run.log", "-o", "-"});
  EXPECT_EQ(result.errors, kStatusOfClosedPipe);
}

TEST_F(OutputStreamTest, HelpThatNobodyReadsEndsQuietly) {
  const ProgramResult result =
      runInShell("{ sleep 0.1; \"$0\" \"$@\"; echo \"status $?\" >&2; } | :", {"--help"});
  EXPECT_EQ(result.errors, kStatusOfClosedPipe);
}

class OutputPipeTest : public OutputStreamTest {
 protected:
  OutputPipeTest() {
    mkfifo((directory() / "pipe").c_str(), 0666);
    m_cat.emplace(ProgramCall{.words = {"cat", "pipe"}, .directory = directory()});
  }

  std::string received() { return m_cat->wait().output; }

 private:
  std::optional<RunningProgram> m_cat;
};

TEST_F(OutputPipeTest, GetsTheDocument) {
  EXPECT_THAT(run({"run.log", "-o", "pipe"}), SucceedsQuietly());
  EXPECT_EQ(received(), document());
  EXPECT_TRUE(fs::is_fifo(directory() / "pipe"));
}

TEST_F(OutputPipeTest, EndsEmptyWhenTheLogIsBad) {
  write("bad.log", "none");
  EXPECT_EQ(run({"bad.log", "-o", "pipe"}).exitStatus, 1);
  EXPECT_EQ(received(), "");
}

}  // namespace
}  // namespace vyn::test
