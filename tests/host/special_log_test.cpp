// Logs that are no plain files, and lengths that promise more than the file holds.

#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kNoLog[] =
    ": not a profiling log, or damaged from its first chunk on; give a log that vyn-net-run wrote, "
    "or look for sound chunks: vyn-profile-viewer recover ";

class SpecialLogTest : public HostTest, public testing::WithParamInterface<std::string> {
 protected:
  ProgramResult view(const std::string& log) const {
    return run({log, "-o", "out.txt", "--reader", GetParam()});
  }
};

TEST_P(SpecialLogTest, TheNullDeviceIsAnEmptyLog) {
  EXPECT_THAT(view("/dev/null"), SucceedsQuietly());
}

TEST_P(SpecialLogTest, ADeviceWithoutEndIsRefusedAtItsFirstChunk) {
  const ProgramResult result = view("/dev/zero");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(
      result.errors.substr(result.errors.find("/dev/zero")),
      "/dev/zero: the log is damaged; write it to a file and read that to learn where, or save "
      "what is whole of it with vyn-profile-viewer recover\n");
  EXPECT_THAT(names(), ElementsAre());
}

TEST_P(SpecialLogTest, ACircleOfSymbolicLinksIsRefused) {
  std::filesystem::create_symlink("b", directory() / "a");
  std::filesystem::create_symlink("a", directory() / "b");
  EXPECT_THAT(view("a"), FailsWith("a: Too many levels of symbolic links; check the file and its "
                                   "place"));
}

TEST_P(SpecialLogTest, APipeThatEndsWithoutDataIsAnEmptyLog) {
  mkfifo((directory() / "pipe").c_str(), 0666);
  RunningProgram program(call({"pipe", "-o", "out.txt", "--reader", GetParam()}));
  std::ofstream(directory() / "pipe").close();
  EXPECT_THAT(program.wait(), SucceedsQuietly());
}

TEST_P(SpecialLogTest, LengthsBeyondTheFileTakeNoMemory) {
  for (const std::string length :
       {"\xff\xff\xff\xff", "\xfe\xff\xff\x7f", "\x40\xb3\x3f\x71", "\x0c\x00\x00\x01"}) {
    write("run.log", length + std::string(100, 'x'));
    const ProgramResult result = view("run.log");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr(std::string("run.log") + kNoLog));
    EXPECT_THAT(names(), ElementsAre("run.log"));
  }
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
#ifndef __SANITIZE_ADDRESS__              // which has memory of its own
  EXPECT_LT(usage.ru_maxrss, 64 * 1024);  // KiB
#endif
}

TEST_P(SpecialLogTest, LittleMemoryIsSaidAndLeavesNothing) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs more address space than the test allows";
#endif
  const std::string chunk = smallLog();
  std::string log;
  for (int i = 0; i < 150'000; ++i) {
    log += chunk;
  }
  write("run.log", log);
  int refused = 0;
  bool isTaken = false;
  for (int limit = 16'000; !isTaken; limit += 10'000) {  // KiB
    const ProgramResult result =
        runInShell("ulimit -v " + std::to_string(limit) + "; exec \"$0\" \"$@\"",
                   {"run.log", "-o", "out.txt", "--reader", GetParam()});
    ASSERT_EQ(result.signal, 0) << limit;
    isTaken = result.exitStatus == 0;
    if (!isTaken) {
      ASSERT_EQ(result.exitStatus, 1) << limit;
      ASSERT_THAT(result.errors + result.output, HasSubstr("emory")) << limit;
      ASSERT_THAT(names(), ElementsAre("run.log")) << limit;
      ++refused;
    }
  }
  EXPECT_GE(refused, 1);
}

INSTANTIATE_TEST_SUITE_P(Readers, SpecialLogTest, testing::Values("json", "summary"),
                         [](const auto& reader) { return reader.param; });

}  // namespace
}  // namespace vyn::test
