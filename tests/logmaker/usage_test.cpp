#include <gmock/gmock.h>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class WrongUsage : public testing::TestWithParam<const char*> {};

TEST_P(WrongUsage, ExitsWithTwoAndLeavesNoFile) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, GetParam());
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, isOneOwnLine());
  EXPECT_THAT(folder.files(), IsEmpty());
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
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, "-o log --seed 18446744073709551616").errors,
            "vyn-make-log: --seed: 18446744073709551616 is out of range, which is 0 to "
            "18446744073709551615; see vyn-make-log --help\n");
  EXPECT_EQ(runMaker(folder, "-o log --chunk-size 2GB").errors,
            "vyn-make-log: --chunk-size: 2GB is out of range, which is 1 to 1000000000 bytes; see "
            "vyn-make-log --help\n");
}

TEST(Usage, TheHelpNamesEveryUnit) {
  const TempFolder folder;
  EXPECT_THAT(runMaker(folder, "--help").output,
              HasSubstr(" units B, KB, MB, GB, TB, KiB, MiB, GiB, TiB."));
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
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, GetParam().arguments).errors,
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
  const TempFolder folder;
  EXPECT_EQ(runMaker(folder, "-o log --graphs \"$(printf '\\033[31m')\"").errors,
            "vyn-make-log: --graphs: '\\x1b[31m' is not a whole number; see vyn-make-log --help\n");
  EXPECT_EQ(runMaker(folder, "-o \"$(printf 'e\\nf/log')\"").errors,
            "vyn-make-log: e\\x0af/log: no such file or directory; check the name\n");
}

TEST(Usage, HelpAndVersionSucceed) {
  const TempFolder folder;
  const ProgramResult help = runMaker(folder, "--help");
  EXPECT_EQ(help.exitStatus, 0);
  EXPECT_THAT(help.output, HasSubstr("vyn-make-log -o big.log --size 100MB"));
  EXPECT_THAT(help.output, HasSubstr("--size SIZE not with: --executions"));
  const ProgramResult version = runMaker(folder, "--version");
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_THAT(version.output, StartsWith("vyn-make-log v"));
}

}  // namespace
}  // namespace vyn::logmaker::test
