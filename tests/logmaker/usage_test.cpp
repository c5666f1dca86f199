#include <gtest/gtest.h>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using Files = std::vector<std::string>;

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
                    "-o log --record ./log", "-o - --record -", "-o log --record",
                    "-o log --async=3", "-o log --components=false", "--version=3"));

TEST(Usage, ANumberOutOfRangeIsNamedWithItsRange) {
  const TestDirectory directory;
  EXPECT_EQ(runMaker(directory, "-o log --seed 18446744073709551616").errors,
            "vyn-make-log: --seed: 18446744073709551616 is out of range, which is 0 to "
            "18446744073709551615; see vyn-make-log --help\n");
  EXPECT_EQ(runMaker(directory, "-o log --chunk-size 2GB").errors,
            "vyn-make-log: --chunk-size: 2GB is out of range, which is 1 to 1000000000 bytes; see "
            "vyn-make-log --help\n");
}

TEST(Usage, TheHelpNamesEveryUnit) {
  const TestDirectory directory;
  EXPECT_NE(
      runMaker(directory, "--help").output.find(" units B, KB, MB, GB, TB, KiB, MiB, GiB, TiB."),
      std::string::npos);
}

struct Explained {
  const char* arguments;
  const char* explanation;

  // Names the case in the test's report.
  friend std::ostream& operator<<(std::ostream& out, const Explained& explained) {
    return out << explained.arguments;
  }
};

class ExplainedUsage : public testing::TestWithParam<Explained> {};

TEST_P(ExplainedUsage, SaysWhatIsWrong) {
  const TestDirectory directory;
  EXPECT_EQ(runMaker(directory, GetParam().arguments).errors,
            std::string("vyn-make-log: ") + GetParam().explanation + "; see vyn-make-log --help\n");
}

INSTANTIATE_TEST_SUITE_P(
    Options, ExplainedUsage,
    testing::Values(
        Explained{"", "--output is required"},
        Explained{"--outptu x", "--outptu: no such option (did you mean --output?)"},
        Explained{"-o log --asnyc", "--asnyc: no such option (did you mean --async?)"},
        Explained{"-o log --graph=2", "--graph: no such option (did you mean --graphs?)"},
        Explained{"-o log --wholly-other", "--wholly-other: no such option"},
        Explained{"-o log first second", "first: not expected here; a file is named with --output"},
        Explained{"-o", "--output needs FILE behind it"},
        Explained{"-o log --size", "--size needs SIZE behind it"},
        Explained{"-o a -o b", "--output is given more than once"},
        Explained{"-o a --seed 1 --seed 1", "--seed is given more than once"},
        Explained{"-o log --async=3", "--async takes no value"},
        Explained{"-o log --size 1MB --executions 3", "--executions excludes --size"},
        Explained{"-o log --record ./log", "--record: names the same file as --output"}));

TEST(Usage, WhatATerminalObeysIsEscaped) {
  const TestDirectory directory;
  EXPECT_EQ(runMaker(directory, "-o log --graphs \"$(printf '\\033[31m')\"").errors,
            "vyn-make-log: --graphs: '\\x1b[31m' is not a whole number; see vyn-make-log --help\n");
  EXPECT_EQ(runMaker(directory, "-o \"$(printf 'e\\nf/log')\"").errors,
            "vyn-make-log: e\\x0af/log: no such file or directory; check the name\n");
}

TEST(Usage, HelpAndVersionSucceed) {
  const TestDirectory directory;
  const RunResult help = runMaker(directory, "--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.output.find("vyn-make-log -o big.log --size 100MB"), std::string::npos);
  const RunResult version = runMaker(directory, "--version");
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output.rfind("vyn-make-log v", 0), 0U) << version.output;
}

}  // namespace
}  // namespace vyn::logmaker::test
