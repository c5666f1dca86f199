#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

// As much as there is, and 10 GB more.
TEST(LogWritingFailure, TooLittleSpaceIsNoticedBeforeAnythingIsWritten) {
  const TempFolder folder;
  const std::uint64_t size = fs::space(folder.path("")).available / 1'000'000 + 10'000;  // MB
  if (size > 1'000'000) {
    GTEST_SKIP() << "there is more space than a log may take";
  }
  folder.add("log", "kept");
  const ProgramResult result =
      runMaker(folder, "-o log --size " + std::to_string(size) + "MB", "timeout 20");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, isOneOwnLine());
  EXPECT_THAT(result.errors,
              HasSubstr("log: is to have " + std::to_string(size) + "000000 bytes, and "));
  EXPECT_EQ(readFile(folder.path("log")), "kept");
  EXPECT_THAT(folder.files(), ElementsAre("log"));
}

TEST(LogWritingFailure, DirectoryIsNotWritten) {
  const TempFolder folder;
  fs::create_directory(folder.path("logs"));
  const ProgramResult result = runMaker(folder, "-o logs");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, "vyn-make-log: logs: is a directory; give the name of a file\n");
  EXPECT_THAT(folder.files(), ElementsAre("logs"));
}

TEST(LogWritingFailure, MissingDirectoryIsNamed) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o nowhere/log");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: nowhere/log: no such file or directory; check the name\n");
}

// Runs the program as a user who may do nothing but what modes allow; root may do everything.
ProgramResult runAsNobody(const TempFolder& folder, const std::string& arguments) {
  fs::copy(VYN_MAKE_LOG, folder.path("maker"));  // its own place may be closed to that user
  const std::string program = "setpriv --reuid 65534 --regid 65534 --clear-groups ./maker ";
  ProgramResult result = vyn::test::runProgram(
      {.words = {"/bin/sh", "-c", program + arguments + " #"}, .directory = folder.path("")});
  fs::remove(folder.path("maker"));
  return result;
}

constexpr char kNoPermission[] = ": no permission; change the permissions or choose another file\n";

TEST(LogWritingFailure, FilesThatTheUserMayNotWriteAreKept) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can become another user";
  }
  const TempFolder folder;
  fs::permissions(folder.path(""), fs::perms::all);
  folder.add("theirs", "kept");
  fs::permissions(folder.path("theirs"), fs::perms(0644));
  for (const std::string arguments : {"-o theirs", "-o log --record theirs"}) {
    const ProgramResult result = runAsNobody(folder, arguments);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, std::string("vyn-make-log: theirs") + kNoPermission);
    EXPECT_EQ(readFile(folder.path("theirs")), "kept");
    EXPECT_THAT(folder.files(), ElementsAre("theirs"));
  }
}

// There only a file's owner may replace it; known before the record is written.
TEST(LogWritingFailure, FilesOfOthersInAStickyFolderAreKept) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can become another user";
  }
  const TempFolder folder;
  fs::permissions(folder.path(""), fs::perms::all | fs::perms::sticky_bit);
  folder.add("theirs", "kept");
  fs::permissions(folder.path("theirs"), fs::perms(0666));
  const ProgramResult result = runAsNobody(folder, "-o theirs --record record");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("vyn-make-log: theirs: "));
  EXPECT_EQ(readFile(folder.path("theirs")), "kept");
  EXPECT_THAT(folder.files(), ElementsAre("theirs"));
}

TEST(LogWriting, ALinkToNoFileYetIsFollowed) {
  const TempFolder folder;
  fs::create_symlink("log", folder.path("link"));
  EXPECT_EQ(runMaker(folder, "-o link").exitStatus, 0);
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
  EXPECT_TRUE(fs::is_regular_file(folder.path("log")));
}

TEST(LogWritingFailure, FullDeviceIsNoticed) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o /dev/full");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors,
            "vyn-make-log: /dev/full: disk full; free some space or choose another place\n");
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

// A limit on the size of files stands for a full disk; it is given in blocks of 512 bytes or more.
constexpr char kSmallDisk[] = "ulimit -f 40;";

TEST(LogWritingFailure, ShortWriteLeavesNoFile) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o log --size 1MB", kSmallDisk);
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, isOneOwnLine());
  EXPECT_THAT(result.errors, HasSubstr("log: the output is larger than a file may be; "));
  EXPECT_THAT(folder.files(), IsEmpty());
}

TEST(LogWritingFailure, ShortWriteOfRecordLeavesNoFile) {
  const TempFolder folder;
  const ProgramResult result =
      runMaker(folder, "-o /dev/null --record record --size 1MB", kSmallDisk);
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("record: the output is larger than a file may be; "));
  EXPECT_THAT(folder.files(), IsEmpty());
}

TEST(LogWritingFailure, FailedRunKeepsTheFileThatWasThere) {
  const TempFolder folder;
  folder.add("log", "kept");
  EXPECT_EQ(runMaker(folder, "-o log --size 1MB", kSmallDisk).exitStatus, 1);
  EXPECT_EQ(readFile(folder.path("log")), "kept");
  EXPECT_THAT(folder.files(), ElementsAre("log"));
}

TEST(LogWritingFailure, UnwritableRecordLeavesNoLog) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o log --record /dev/full");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("/dev/full"));
  EXPECT_THAT(folder.files(), IsEmpty());
}

// From fewer than the program needs to be loaded to as many as it likes: how many are open already
// is up to whoever runs the test.
TEST(LogWritingFailure, TooManyOpenFilesAreNamed) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizers open files of their own while they check an object";
#endif
  const TempFolder folder;
  int refused = 0;
  for (int limit = 4; limit < 1000; ++limit) {
    // One shell directs the outputs, the next lowers the limit.
    const ProgramResult result =
        runMaker(folder, "-o log --record record",
                 "sh -c 'ulimit -n " + std::to_string(limit) + R"(; exec "$0" "$@"')");
    if (result.exitStatus == 0) {
      break;
    }
    ASSERT_THAT(folder.files(), IsEmpty());
    if (result.errors.starts_with("vyn-make-log: ")) {
      ASSERT_EQ(result.exitStatus, 1) << limit;
      ASSERT_THAT(result.errors, HasSubstr(": too many open files; "));
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

// From less than the program needs to as much as it likes.
TEST(LogWritingFailure, LittleMemoryIsSaidAndLeavesNothing) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs more address space than the test allows";
#endif
  const TempFolder folder;
  int refused = 0;
  for (int limit = 10'000;; limit += 3'000) {  // KiB
    const ProgramResult result =
        runMaker(folder, "-o log --record record --nodes 20000 --executions 1 --chunk-size 1GB",
                 "ulimit -v " + std::to_string(limit) + ";");
    if (result.exitStatus == 0) {
      break;
    }
    ASSERT_EQ(result.exitStatus, 1) << limit;
    EXPECT_THAT(result.errors, isOneOwnLine());
    ASSERT_THAT(result.errors, HasSubstr("not enough memory; "));
    ASSERT_THAT(folder.files(), IsEmpty());
    ++refused;
  }
  EXPECT_GT(refused, 2);
}

TEST(Overwriting, ReplacesTheWholeFile) {
  const TempFolder folder;
  folder.add("log", std::string(1'000'000, 'x'));
  EXPECT_EQ(runMaker(folder, "-o log").exitStatus, 0);
  EXPECT_GT(MadeLog(readFile(folder.path("log"))).chunkCount(), 0U);
  EXPECT_THAT(folder.files(), ElementsAre("log"));
}

TEST(Overwriting, FollowsALink) {
  const TempFolder folder;
  folder.add("log", "old");
  fs::create_symlink("log", folder.path("link"));
  EXPECT_EQ(runMaker(folder, "-o link").exitStatus, 0);
  EXPECT_TRUE(fs::is_symlink(folder.path("link")));
  EXPECT_GT(MadeLog(readFile(folder.path("log"))).chunkCount(), 0U);
}

}  // namespace
}  // namespace vyn::logmaker::test
