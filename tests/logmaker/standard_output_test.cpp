#include <gmock/gmock.h>

#include <string>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr char kDiskFull[] =
    "vyn-make-log: standard output: disk full; free some space or choose another place\n";

TEST(StandardOutput, FullOneIsNoticed) {
  const TempFolder folder;
  for (const std::string arguments : {"-o -", "-o log --record -", "--help", "--version"}) {
    const ProgramResult result = runMaker(folder, arguments + " >/dev/full)", "(");
    EXPECT_EQ(result.exitStatus, 1) << arguments;
    EXPECT_EQ(result.errors, kDiskFull) << arguments;
    EXPECT_THAT(folder.files(), IsEmpty()) << arguments;
  }
}

TEST(StandardOutput, ClosedOneIsNoticed) {
  const TempFolder folder;
  for (const std::string arguments : {"-o -", "-o log --record -", "--help", "--version"}) {
    const ProgramResult result = runMaker(folder, arguments + " >&-)", "(");
    EXPECT_EQ(result.exitStatus, 1) << arguments;
    EXPECT_THAT(result.errors, isOneOwnLine());
    EXPECT_THAT(result.errors, StartsWith("vyn-make-log: standard output: "));
    EXPECT_THAT(result.errors, Not(HasSubstr("space")));
    EXPECT_THAT(folder.files(), IsEmpty()) << arguments;
  }
}

// A shell adds 128 to the number of the signal that ended a program.
TEST(StandardOutput, ClosedPipeEndsTheProgramInSilence) {
  const TempFolder folder;
  for (const std::string arguments :
       {"-o - --size 1MB --record record", "-o log --size 1MB --record -"}) {
    const ProgramResult result =
        runMaker(folder, arguments + "; echo $? >status) | head -c 1", "(");
    EXPECT_EQ(readFile(folder.path("status")), "141\n") << arguments;
    EXPECT_EQ(result.errors, "") << arguments;
    EXPECT_THAT(folder.files(), ElementsAre("status")) << arguments;
  }
}

TEST(StandardOutput, IsNotTakenForLogAndRecordUnderTwoNames) {
  const TempFolder folder;
  for (const std::string arguments :
       {"-o - --record /dev/stdout >both)", "-o /dev/stdout --record - >both)",
        "-o - --record both >both)", "-o - --record /dev/stdout | cat)"}) {
    const ProgramResult result = runMaker(folder, "--nodes 1 " + arguments, "(");
    EXPECT_EQ(result.errors,
              "vyn-make-log: --record: names the same file as --output; see vyn-make-log --help\n")
        << arguments;
  }
}

TEST(StandardOutput, FileThatIsCalledMinusIsAnotherOne) {
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, "-o - --record ./-").exitStatus, 0);
  EXPECT_THAT(folder.files(), ElementsAre("-"));
}

}  // namespace
}  // namespace vyn::logmaker::test
