#include <sys/resource.h>

#include "host/host_fixture.h"
#include "support/shared_log.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::string tooLarge(const std::string& target, std::size_t limit) {
  return target + ": the output is larger than " + std::to_string(limit) +
         " bytes; if you trust the log, give more with --max-output SIZE or --max-output none";
}

class OutputLimitTest : public HostTest {
 protected:
  OutputLimitTest() { write("run.log", logWithDocumentOver(100'000)); }

  ProgramResult runLimited(std::size_t limit, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"run.log", "--max-output", std::to_string(limit)});
    return run(std::move(arguments));
  }

  std::size_t sizeOf(const std::string& name) const { return fs::file_size(directory() / name); }
};

TEST_F(OutputLimitTest, ADocumentMayJustReachIt) {
  ASSERT_THAT(run({"run.log", "-o", "out.json"}), SucceedsQuietly());
  const std::size_t size = sizeOf("out.json");
  EXPECT_THAT(runLimited(size, {"-o", "out.json"}), SucceedsQuietly());
  EXPECT_EQ(sizeOf("out.json"), size);
  write("out.json", "old");
  EXPECT_THAT(runLimited(size - 1, {"-o", "out.json"}), FailsWith(tooLarge("out.json", size - 1)));
  EXPECT_EQ(read("out.json"), "old");
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(OutputLimitTest, HoldsForStandardOutput) {
  const ProgramResult result = runLimited(5000, {"-o", "-"});
  EXPECT_THAT(result, FailsWith(tooLarge("standard output", 5000)));
  EXPECT_EQ(result.output, "");
}

TEST_F(OutputLimitTest, HoldsForTheSummary) {
  const std::size_t size = run({"run.log", "-r", "summary"}).output.size();
  EXPECT_EQ(runLimited(size, {"-r", "summary"}).output.size(), size);
  const ProgramResult result = runLimited(size - 1, {"-r", "summary"});
  EXPECT_THAT(result, FailsWith(tooLarge("standard output", size - 1)));
  EXPECT_EQ(result.output, "");
}

TEST_F(OutputLimitTest, HoldsForWhatIsAddedToAListing) {
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "out.csv"}), SucceedsQuietly());
  const std::size_t size = sizeOf("out.csv");
  EXPECT_THAT(runLimited(size, {"-r", "summary", "-o", "out.csv"}), SucceedsQuietly());
  EXPECT_EQ(sizeOf("out.csv"), 2 * size);
  EXPECT_THAT(runLimited(size - 1, {"-r", "summary", "-o", "out.csv"}),
              FailsWith(tooLarge("out.csv", size - 1)));
  EXPECT_EQ(sizeOf("out.csv"), 2 * size);
}

TEST_F(OutputLimitTest, ALongFileBehindStandardOutputIsAddedTo) {
  const std::string text = run({"run.log", "-r", "summary"}).output;
  write("long.txt", std::string(1'000'000, '.'));
  const ProgramResult result =
      runInShell("\"$0\" \"$@\" >>long.txt",
                 {"run.log", "-r", "summary", "--max-output", std::to_string(text.size())});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(read("long.txt").substr(1'000'000), text);
}

TEST_F(OutputLimitTest, ALowerLimitOfTheUsersIsNamed) {
  EXPECT_THAT(runInShell("ulimit -f 8; exec \"$0\" \"$@\"",
                         {"run.log", "-o", "out", "--max-output", "50KB"}),
              FailsWith("out: the output is larger than a file may be; raise the limit or choose "
                        "another place"));
}

TEST_F(OutputLimitTest, TakesUnitsAndNone) {
  for (const std::string size : {"2000KB", "2MiB", "2GiB", "none", "3000000", "1 GB", "1g",
                                 "16777215TiB", "18446744073709551615"}) {
    EXPECT_THAT(run({"run.log", "-o", "out.json", "--max-output", size}), SucceedsQuietly())
        << size;
  }
  EXPECT_THAT(run({"run.log", "-o", "out.json", "--max-output", "1KiB"}),
              FailsWith(tooLarge("out.json", 1024)));
}

TEST_F(OutputLimitTest, OtherTextsAreWrongUsage) {
  const auto expectRefused = [this](const std::string& size, const std::string& reason) {
    const ProgramResult result = run({"run.log", "-o", "out.json", "--max-output", size});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              ownLine("--max-output: " + reason + "; see vyn-profile-viewer --help"));
  };
  for (const std::string size :
       {"", "-1", "+1", "much", "5 apples", "1.5GB", "1xb", "0x10", "1 2"}) {
    expectRefused(
        size, "'" + size + "' is no size; give whole bytes, a size like 500MB or 2GiB, or none");
  }
  for (const std::string size :
       {"18446744073709551616", "99999999999999999999GB", "16777216TiB", "18446744073710MB"}) {
    expectRefused(size, size + " is too large; for no limit give none");
  }
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

double childSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) +
         static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
}

// The document would have 60 GB, for each byte of its texts needs escaping.
TEST_F(OutputLimitTest, AnAmplifiedDocumentIsStoppedAtOnce) {
  write("run.log", logOfSharedEvent(50'000, 200'000, '\x01'));
  const double before = childSeconds();
  EXPECT_THAT(runLimited(10'000'000, {"-o", "out.json"}),
              FailsWith(tooLarge("out.json", 10'000'000)));
  EXPECT_LT(childSeconds() - before, 10);  // making all of its text takes minutes
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

}  // namespace
}  // namespace vyn::test
