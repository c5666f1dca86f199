#include <gtest/gtest.h>

#include <string>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using Files = std::vector<std::string>;

constexpr char kDiskFull[] =
    "vyn-make-log: standard output: disk full; free some space or choose another place\n";

TEST(StandardOutput, FullOneIsNoticed) {
  const TestDirectory directory;
  for (const std::string arguments : {"-o -", "-o log --record -", "--help", "--version"}) {
    const RunResult result = runMaker(directory, arguments + " >/dev/full)", "(");
    EXPECT_EQ(result.status, 1) << arguments;
    EXPECT_EQ(result.errors, kDiskFull) << arguments;
    EXPECT_EQ(directory.files(), Files{}) << arguments;
  }
}

TEST(StandardOutput, ClosedOneIsNoticed) {
  const TestDirectory directory;
  for (const std::string arguments : {"-o -", "-o log --record -", "--help", "--version"}) {
    const RunResult result = runMaker(directory, arguments + " >&-)", "(");
    EXPECT_EQ(result.status, 1) << arguments;
    expectOneLine(result.errors);
    EXPECT_EQ(result.errors.rfind("vyn-make-log: standard output: ", 0), 0U) << result.errors;
    EXPECT_EQ(result.errors.find("space"), std::string::npos) << result.errors;
    EXPECT_EQ(directory.files(), Files{}) << arguments;
  }
}

// A shell adds 128 to the number of the signal that ended a program.
TEST(StandardOutput, ClosedPipeEndsTheProgramInSilence) {
  const TestDirectory directory;
  for (const std::string arguments :
       {"-o - --size 1MB --record record", "-o log --size 1MB --record -"}) {
    const RunResult result = runMaker(directory, arguments + "; echo $? >status) | head -c 1", "(");
    EXPECT_EQ(fileContents(directory.path("status")), "141\n") << arguments;
    EXPECT_EQ(result.errors, "") << arguments;
    EXPECT_EQ(directory.files(), Files{"status"}) << arguments;
  }
}

TEST(StandardOutput, IsNotTakenForLogAndRecordUnderTwoNames) {
  const TestDirectory directory;
  for (const std::string arguments :
       {"-o - --record /dev/stdout >both)", "-o /dev/stdout --record - >both)",
        "-o - --record both >both)", "-o - --record /dev/stdout | cat)"}) {
    const RunResult result = runMaker(directory, "--nodes 1 " + arguments, "(");
    EXPECT_EQ(result.errors,
              "vyn-make-log: --record: names the same file as --output; see vyn-make-log --help\n")
        << arguments;
  }
}

TEST(StandardOutput, FileThatIsCalledMinusIsAnotherOne) {
  const TestDirectory directory;
  EXPECT_EQ(runMaker(directory, "-o - --record ./-").status, 0);
  EXPECT_EQ(directory.files(), Files{"-"});
}

}  // namespace
}  // namespace vyn::logmaker::test
