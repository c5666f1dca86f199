#include "core/version/profile_viewer_version.h"
#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CommandLineTest : public HostTest {
 protected:
  void expectUsageError(std::vector<std::string> arguments, const std::string& line) const {
    const ProgramResult result = run(std::move(arguments));
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors, ownLine(line + "; see vyn-profile-viewer --help"));
    EXPECT_EQ(result.output, "");
  }
};

TEST_F(CommandLineTest, VersionNamesTheBuild) {
  const ProgramResult result = run({"--version"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output,
            "vyn-profile-viewer " + std::string(profiling::kProfileViewerVersion) + "\n");
}

TEST_F(CommandLineTest, HelpHasAnExampleForEachVerb) {
  for (const char* option : {"--help", "-h"}) {
    const ProgramResult result = run({option});
    EXPECT_THAT(result, SucceedsQuietly());
    EXPECT_THAT(result.output, HasSubstr("\n  vyn-profile-viewer view run.log"));
  }
}

TEST_F(CommandLineTest, HelpOfAVerbTellsItsOptions) {
  const ProgramResult result = run({"view", "--help"});
  EXPECT_THAT(result, SucceedsQuietly());
  for (const char* option :
       {"-o,--output", "-r,--reader", "-l,--level", "--payloads", "--header"}) {
    EXPECT_THAT(result.output, HasSubstr(option));
  }
}

TEST_F(CommandLineTest, HelpToAFullDiskFails) {
  ProgramCall help = call({"--help"});
  help.standardOutput = "/dev/full";
  const ProgramResult result = runProgram(help);
  EXPECT_THAT(result, FailsWith("standard output: disk full; free some space or choose another "
                                "place"));
}

TEST_F(CommandLineTest, ALogAloneMeansView) {
  write("run.log", smallLog());
  const ProgramResult shorthand = run({"run.log", "-o", "-"});
  EXPECT_THAT(shorthand, SucceedsQuietly());
  EXPECT_EQ(shorthand.output, run({"view", "run.log", "-o", "-"}).output);
  EXPECT_EQ(shorthand.output, run({"-o", "-", "run.log"}).output);
}

TEST_F(CommandLineTest, ALogNamedLikeAVerbIsReachedByAPath) {
  write("view", smallLog());
  EXPECT_THAT(run({"./view", "-o", "-"}), SucceedsQuietly());
}

TEST_F(CommandLineTest, ALogNamedLikeAnOptionFollowsTwoDashes) {
  write("-o", smallLog());
  EXPECT_THAT(run({"-o", "out.json", "--", "-o"}), SucceedsQuietly());
  EXPECT_THAT(names(), ElementsAre("-o", "out.json"));
}

TEST_F(CommandLineTest, ALogIsRequired) { expectUsageError({}, "LOG is required"); }

TEST_F(CommandLineTest, ASecondLogIsRefused) {
  expectUsageError({"a.log", "b.log"}, "The following argument was not expected: b.log");
}

TEST_F(CommandLineTest, AnUnknownOptionIsRefused) {
  expectUsageError({"a.log", "--nope"}, "The following argument was not expected: --nope");
}

TEST_F(CommandLineTest, AnUnknownReaderNameIsRefused) {
  expectUsageError({"a.log", "-r", "xml"},
                   "--reader: no reader is named xml (there are json, summary; a library's path "
                   "needs a /)");
}

TEST_F(CommandLineTest, AnEmptyOutputNameIsRefused) {
  expectUsageError({"a.log", "-o", ""}, "--output: the name of the output is empty");
}

TEST_F(CommandLineTest, LevelsOutsideASignedByteAreRefused) {
  expectUsageError({"a.log", "-l", "128"}, "--level: Value 128 not in range -128 to 127");
  expectUsageError({"a.log", "-l", "-129"}, "--level: Value -129 not in range -128 to 127");
  EXPECT_EQ(run({"a.log", "-l", "many"}).exitStatus, 2);
}

TEST_F(CommandLineTest, TheHeaderAloneExcludesOtherOutput) {
  EXPECT_EQ(run({"a.log", "--header", "-o", "x"}).exitStatus, 2);
  EXPECT_EQ(run({"a.log", "--header", "--payloads"}).exitStatus, 2);
}

TEST_F(CommandLineTest, ControlCharactersOfWordsAreShownNotSent) {
  const ProgramResult result = run({"a.log", "b\nc\x1b[2J"});
  EXPECT_THAT(result.errors, HasSubstr("b\\x0ac\\x1b[2J"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
}

}  // namespace
}  // namespace vyn::test
