#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using Files = std::vector<std::string>;
namespace fs = std::filesystem;

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
  EXPECT_NE(result.errors.find("log: is to have " + std::to_string(size) + "000000 bytes, and "),
            std::string::npos)
      << result.errors;
  EXPECT_EQ(fileContents(directory.path("log")), "kept");
  EXPECT_EQ(directory.files(), Files{"log"});
}

TEST(Failure, DirectoryIsNotWritten) {
  const TestDirectory directory;
  fs::create_directory(directory.path("logs"));
  const RunResult result = runMaker(directory, "-o logs");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "vyn-make-log: logs: is a directory; give the name of a file\n");
  EXPECT_EQ(directory.files(), Files{"logs"});
}

TEST(Failure, MissingDirectoryIsNamed) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o nowhere/log");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: nowhere/log: no such file or directory; check the name\n");
}

TEST(Failure, FullDeviceIsNoticed) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o /dev/full");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: /dev/full: disk full; free some space or choose another place\n");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

// A limit on the size of files stands for a full disk; it is given in blocks of 512 bytes or more.
constexpr char kSmallDisk[] = "ulimit -f 40;";

TEST(Failure, ShortWriteLeavesNoFile) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o log --size 1MB", kSmallDisk);
  EXPECT_EQ(result.status, 1);
  expectOneLine(result.errors);
  EXPECT_NE(result.errors.find("log: the output is larger than a file may be; "), std::string::npos)
      << result.errors;
  EXPECT_EQ(directory.files(), Files{});
}

TEST(Failure, ShortWriteOfRecordLeavesNoFile) {
  const TestDirectory directory;
  const RunResult result =
      runMaker(directory, "-o /dev/null --record record --size 1MB", kSmallDisk);
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.errors.find("record: the output is larger than a file may be; "),
            std::string::npos)
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

// From fewer than the program needs to be loaded to as many as it likes: how many are open already
// is up to whoever runs the test.
TEST(Failure, TooManyOpenFilesAreNamed) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizers open files of their own while they check an object";
#endif
  const TestDirectory directory;
  int refused = 0;
  for (int limit = 4; limit < 1000; ++limit) {
    // One shell directs the outputs, the next lowers the limit.
    const RunResult result =
        runMaker(directory, "-o log --record record",
                 "sh -c 'ulimit -n " + std::to_string(limit) + R"(; exec "$0" "$@"')");
    if (result.status == 0) {
      break;
    }
    ASSERT_EQ(directory.files(), Files{});
    if (result.errors.rfind("vyn-make-log: ", 0) == 0) {
      ASSERT_EQ(result.status, 1) << limit;
      ASSERT_NE(result.errors.find(": too many open files; "), std::string::npos) << result.errors;
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

// From less than the program needs to as much as it likes.
TEST(Failure, LittleMemoryIsSaidAndLeavesNothing) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs more address space than the test allows";
#endif
  const TestDirectory directory;
  int refused = 0;
  for (int limit = 10'000;; limit += 3'000) {  // KiB
    const RunResult result =
        runMaker(directory, "-o log --record record --nodes 20000 --executions 1 --chunk-size 1GB",
                 "ulimit -v " + std::to_string(limit) + ";");
    if (result.status == 0) {
      break;
    }
    ASSERT_EQ(result.status, 1) << limit;
    expectOneLine(result.errors);
    ASSERT_NE(result.errors.find("not enough memory; "), std::string::npos) << result.errors;
    ASSERT_EQ(directory.files(), Files{});
    ++refused;
  }
  EXPECT_GT(refused, 2);
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
