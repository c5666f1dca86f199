#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using Files = std::vector<std::string>;
namespace fs = std::filesystem;

void expectOneLine(const std::string& text) {
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
  EXPECT_EQ(text.back(), '\n');
  EXPECT_EQ(text.rfind("vyn-make-log: ", 0), 0U) << text;
}

class WrongUsage : public testing::TestWithParam<const char*> {};

TEST_P(WrongUsage, ExitsWithTwoAndLeavesNoFile) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, GetParam());
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  expectOneLine(result.errors);
  EXPECT_EQ(directory.files(), Files{});
}

INSTANTIATE_TEST_SUITE_P(
    Options, WrongUsage,
    testing::Values("", "-o", "-o ''", "-o log --record ''", "-o log extra", "-o log --unknown",
                    "-o log --graphs 0", "-o log --graphs -1", "-o log --nodes x",
                    "-o log --nodes 100001", "-o log --executions 1.5", "-o log --seed -1",
                    "-o log --seed ''", "-o log --seed 0x10", "-o log --seed 18446744073709551616",
                    "-o log --seed 99999999999999999999",
                    "-o log --executions 99999999999999999999", "-o log --object-payloads -1",
                    "-o log --binary-sections 1000001", "-o log --size 0", "-o log --size -1",
                    "-o log --size 99999999999999999999", "-o log --size 18446744073709551616",
                    "-o log --size 18446744073709552KB", "-o log --size 1TiB",
                    "-o log --size 1.5MB", "-o log --size MB", "-o log --size ''",
                    "-o log --size 5QB", "-o log --size 1MB --executions 3",
                    "-o log --chunk-size 0", "-o log --chunk-size 2GB", "-o log --record log",
                    "-o log --record ./log", "-o - --record -"));

TEST(Failure, ANumberOutOfRangeIsNamedWithItsRange) {
  const TestDirectory directory;
  EXPECT_EQ(runMaker(directory, "-o log --seed 18446744073709551616").errors,
            "vyn-make-log: --seed: 18446744073709551616 is out of range, which is 0 to "
            "18446744073709551615; see vyn-make-log --help\n");
  EXPECT_EQ(runMaker(directory, "-o log --chunk-size 2GB").errors,
            "vyn-make-log: --chunk-size: 2GB is out of range, which is 1 to 1000000000 bytes; see "
            "vyn-make-log --help\n");
}

TEST(Failure, TheHelpNamesEveryUnit) {
  const TestDirectory directory;
  EXPECT_NE(
      runMaker(directory, "--help").output.find(" units B, KB, MB, GB, TB, KiB, MiB, GiB, TiB."),
      std::string::npos);
}

// As much as there is, and 10 GB more.
TEST(Failure, TooLittleSpaceIsNoticedBeforeAnythingIsWritten) {
  const TestDirectory directory;
  const std::uint64_t size = fs::space(directory.path("")).available / 1'000'000 + 10'000;  // MB
  if (size > 1'000'000) {
    GTEST_SKIP() << "there is more space than a log may take";
  }
  std::ofstream(directory.path("log")) << "kept";
  const RunResult result =
      runMaker(directory, "-o log --size " + std::to_string(size) + "MB", "timeout 20");
  EXPECT_EQ(result.status, 1);
  expectOneLine(result.errors);
  EXPECT_NE(result.errors.find("cannot write log: it is to have " + std::to_string(size) +
                               "000000 bytes, and "),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(fileContents(directory.path("log")), "kept");
  EXPECT_EQ(directory.files(), Files{"log"});
}

TEST(Failure, HelpAndVersionSucceed) {
  const TestDirectory directory;
  const RunResult help = runMaker(directory, "--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("vyn-make-log -o big.log --size 100MB"), std::string::npos);
  const RunResult version = runMaker(directory, "--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output.rfind("vyn-make-log v", 0), 0U) << version.output;
}

TEST(Failure, DirectoryIsNotWritten) {
  const TestDirectory directory;
  fs::create_directory(directory.path("logs"));
  const RunResult result = runMaker(directory, "-o logs");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: cannot write logs: Is a directory; name a file in it instead\n");
  EXPECT_EQ(directory.files(), Files{"logs"});
}

TEST(Failure, MissingDirectoryIsNamed) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o nowhere/log");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: cannot write nowhere/log: No such file or directory; "
            "check that its directory exists and that you may write there\n");
}

TEST(Failure, FullDeviceIsNoticed) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: cannot write /dev/full: No space left on device; "
            "free some space or write to another place\n");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST(Failure, FullStandardOutputIsNoticed) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o - >/dev/full)", "(");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: cannot write standard output: No space left on device; "
            "free some space or write to another place\n");
}

// A limit on the size of files stands for a full disk; it is given in blocks of 512 bytes or more.
constexpr char kSmallDisk[] = "ulimit -f 40;";

TEST(Failure, ShortWriteLeavesNoFile) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o log --size 1MB", kSmallDisk);
  EXPECT_EQ(result.status, 1);
  expectOneLine(result.errors);
  EXPECT_NE(result.errors.find("cannot write log: File too large"), std::string::npos)
      << result.errors;
  EXPECT_EQ(directory.files(), Files{});
}

TEST(Failure, ShortWriteOfRecordLeavesNoFile) {
  const TestDirectory directory;
  const RunResult result =
      runMaker(directory, "-o /dev/null --record record --size 1MB", kSmallDisk);
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("cannot write record: File too large"), std::string::npos)
      << result.errors;
  EXPECT_EQ(directory.files(), Files{});
}

TEST(Failure, FailedRunKeepsTheFileThatWasThere) {
  const TestDirectory directory;
  std::ofstream(directory.path("log")) << "kept";
  EXPECT_EQ(runMaker(directory, "-o log --size 1MB", kSmallDisk).status, 1);
  EXPECT_EQ(fileContents(directory.path("log")), "kept");
  EXPECT_EQ(directory.files(), Files{"log"});
}

TEST(Failure, UnwritableRecordLeavesNoLog) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o log --record /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("/dev/full"), std::string::npos);
  EXPECT_EQ(directory.files(), Files{});
}

TEST(Failure, ClosedPipeIsNoticed) {
  const TestDirectory directory;
  runMaker(directory, "-o - --size 1MB --record record; echo $? >status) | head -c 1", "(");
  EXPECT_EQ(fileContents(directory.path("status")), "1\n");
  EXPECT_EQ(directory.files(), Files{"status"});
}

TEST(Overwriting, ReplacesTheWholeFile) {
  const TestDirectory directory;
  std::ofstream(directory.path("log")) << std::string(1'000'000, 'x');
  EXPECT_EQ(runMaker(directory, "-o log").status, 0);
  EXPECT_GT(MadeLog(fileContents(directory.path("log"))).chunkCount(), 0U);
  EXPECT_EQ(directory.files(), Files{"log"});
}

TEST(Overwriting, FollowsALink) {
  const TestDirectory directory;
  std::ofstream(directory.path("log")) << "old";
  fs::create_symlink("log", directory.path("link"));
  EXPECT_EQ(runMaker(directory, "-o link").status, 0);
  EXPECT_TRUE(fs::is_symlink(directory.path("link")));
  EXPECT_GT(MadeLog(fileContents(directory.path("log"))).chunkCount(), 0U);
}

}  // namespace
}  // namespace vyn::logmaker::test
