#include "base/version/profile_viewer_version.h"
#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CommandLineTest : public HostTest {
 protected:
  void expectUsageError(const std::vector<std::string>& arguments, const std::string& line) const {
    const ProgramResult result = run(arguments);
    const bool hasVerb =
        !arguments.empty() && (arguments.front() == "view" || arguments.front() == "export");
    const std::string verb = hasVerb ? arguments.front() + " " : "";
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors, ownLine(line + "; see vyn-profile-viewer " + verb + "--help"));
    EXPECT_EQ(result.output, "");
  }
};

TEST_F(CommandLineTest, VersionNamesTheBuild) {
  const std::vector<std::vector<std::string>> calls = {
      {"--version"}, {"-V"}, {"view", "--version"}, {"view", "-V"}, {"run.log", "-V"}};
  for (const std::vector<std::string>& arguments : calls) {
    const ProgramResult result = run(arguments);
    EXPECT_THAT(result, SucceedsQuietly());
    EXPECT_EQ(result.output,
              "vyn-profile-viewer " + std::string(profiling::kProfileViewerVersion) + "\n");
  }
}

TEST_F(CommandLineTest, HelpHasAnExampleForEachVerb) {
  for (const char* option : {"--help", "-h"}) {
    const ProgramResult result = run({option});
    EXPECT_THAT(result, SucceedsQuietly());
    EXPECT_THAT(result.output, HasSubstr("\n  vyn-profile-viewer view run.log"));
  }
}

TEST_F(CommandLineTest, HelpTellsTheExitStatuses) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"--help"}, {"view", "--help"}, {"export", "--help"}}) {
    EXPECT_THAT(
        run(words).output,
        HasSubstr("\nExit status: 0 done; 1 failed; 2 wrong usage; 3 done, but something in "
                  "the log was damaged or\nlost; 4 done, but what was measured misses what "
                  "was asked for.\n"));
  }
}

constexpr const char* kViewOptions[] = {"-o,--output", "-r,--reader", "-l,--level", "--payloads",
                                        "--header"};

TEST_F(CommandLineTest, HelpShowsWhatACommandLineWithoutAVerbTakes) {
  const ProgramResult result = run({"--help"});
  EXPECT_THAT(result.output, HasSubstr("\nUsage: vyn-profile-viewer [view] LOG [options]\n"));
  EXPECT_THAT(result.output, HasSubstr("\n  LOG  "));
  for (const char* option : kViewOptions) {
    EXPECT_THAT(result.output, HasSubstr(std::string("\n  ") + option));
  }
}

TEST_F(CommandLineTest, HelpOfAVerbTellsItsOptions) {
  const ProgramResult result = run({"view", "--help"});
  EXPECT_THAT(result, SucceedsQuietly());
  for (const char* option : kViewOptions) {
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
  expectUsageError({"a.log", "b.log"}, "one log at a time; b.log is one too many");
}

TEST_F(CommandLineTest, AnUnknownOptionIsRefused) {
  expectUsageError({"a.log", "--nope"}, "--nope: no such option");
  expectUsageError({"--nope"}, "--nope: no such option");
  expectUsageError({"a.log", "-x"}, "-x: no such option");
}

TEST_F(CommandLineTest, TheOptionThatWasMeantIsNamed) {
  const std::vector<std::pair<std::string, std::string>> misspelt = {
      {"--outptu", "--output"},    {"--ouput", "--output"},   {"--redaer", "--reader"},
      {"--payload", "--payloads"}, {"--headers", "--header"}, {"--hlep", "--help"},
      {"--versoin", "--version"}};
  for (const auto& [word, meant] : misspelt) {
    const std::string line = word + ": no such option (did you mean " + meant + "?)";
    expectUsageError({"a.log", word}, line);
    expectUsageError({word, "a.log"}, line);
    expectUsageError({"view", "a.log", word + "=x"}, line);
  }
}

TEST_F(CommandLineTest, AnUnknownOptionThatIsAFileIsToldHowToBeGiven) {
  write("-x", smallLog());
  expectUsageError({"-x"}, "-x: no such option; a log of this name is given as ./-x");
  EXPECT_THAT(run({"-o", "out.json", "--", "-x"}), SucceedsQuietly());
  EXPECT_THAT(run({"--", "-y"}), FailsWith("-y: no such file or directory; check the name"));
}

TEST_F(CommandLineTest, TheVerbThatWasMeantIsNamedUnlessAFileHasItsName) {
  expectUsageError({"viwe", "run.log"}, "viwe: no such verb and no such file (did you mean view?)");
  expectUsageError({"veiw", "run.log", "-o", "x"},
                   "veiw: no such verb and no such file (did you mean view?)");
  expectUsageError({"a.log", "run.log"}, "one log at a time; run.log is one too many");
  expectUsageError({"view", "view", "run.log"}, "one log at a time; run.log is one too many");
  write("viwe", smallLog());
  expectUsageError({"viwe", "run.log"}, "one log at a time; run.log is one too many");
}

TEST_F(CommandLineTest, AnOutputWithoutAFileIsRefused) {
  expectUsageError({"a.log", "-o"}, "--output needs FILE behind it");
  expectUsageError({"a.log", "--output="}, "--output needs FILE behind it");
  expectUsageError({"a.log", "-l"}, "--level needs N behind it");
  expectUsageError({"a.log", "-r"}, "--reader needs NAME|PATH behind it");
  expectUsageError({"a.log", "-o", "--header", "-r", "summary"},
                   "--output: needs FILE before --header; a file of this name is given as "
                   "./--header");
}

TEST_F(CommandLineTest, OptionsThatTheReaderIgnoresAreRefused) {
  for (const std::string reader : {"json", VYN_JSON_PLUGIN}) {
    const std::string rest = ": has no effect on a JSON document; add --reader summary";
    expectUsageError({"a.log", "-r", reader, "-l", "127"}, "--level" + rest);
    expectUsageError({"a.log", "-r", reader, "--payloads"}, "--payloads" + rest);
    expectUsageError({"a.log", "-r", reader, "--header"}, "--header" + rest);
  }
  expectUsageError({"a.log", "--header"},
                   "--header: has no effect on a JSON document; add --reader summary");
}

TEST_F(CommandLineTest, OptionsThatNothingIsLeftForAreRefused) {
  expectUsageError({"-", "--force"},
                   "--force: has no effect on a log from standard input, whose document goes to "
                   "standard output");
  EXPECT_EQ(run({"a.log", "-r", "summary", "--header", "--max-output", "100"}).exitStatus, 2);
}

TEST_F(CommandLineTest, AnOptionGivenTwiceIsNamed) {
  const std::vector<std::vector<std::string>> calls = {{"--reader", "-r", "json", "-r", "summary"},
                                                       {"--output", "-o", "x", "--output", "y"},
                                                       {"--level", "-l", "1", "-l2"},
                                                       {"--output", "-o", "x", "-o", "x"}};
  for (std::vector<std::string> words : calls) {
    const std::string name = std::exchange(words.front(), "a.log");
    expectUsageError(words, name + " is given twice");
  }
}

TEST_F(CommandLineTest, AnUnknownReaderNameIsRefused) {
  expectUsageError({"a.log", "-r", "xml"},
                   "--reader: no reader is named xml (there are json, summary; a library's path "
                   "needs a /)");
}

TEST_F(CommandLineTest, TheReaderThatWasMeantIsNamed) {
  for (const auto& [word, meant] : std::vector<std::pair<std::string, std::string>>{
           {"sumary", "summary"}, {"JSON", "json"}, {"Summary", "summary"}}) {
    expectUsageError({"a.log", "-r", word}, "--reader: no reader is named " + word +
                                                " (did you mean " + meant +
                                                "?; a library's path needs a /)");
  }
}

TEST_F(CommandLineTest, WordsBehindTwoDashesAreLogs) {
  expectUsageError({"--", "run.log", "-o", "x"}, "one log at a time; -o is one too many");
}

TEST_F(CommandLineTest, TheOptionOfAWordThatOthersKnowIsNamed) {
  for (const std::string word : {"help", "version"}) {
    const ProgramResult result = run({word});
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              ownLine(word + ": no such verb and no such file (did you mean --" + word + "?)"));
  }
}

TEST_F(CommandLineTest, AnEmptyLogNameIsRefused) {
  expectUsageError({""}, "LOG: the name of the log is empty");
}

TEST_F(CommandLineTest, FlagsTakeNoValue) {
  for (const std::string flag : {"--payloads", "--payloads-anywhere", "--header", "--force"}) {
    expectUsageError({"a.log", "-r", "summary", flag + "=false"}, flag + " takes no value");
  }
}

TEST_F(CommandLineTest, HelpIsInWordsForUsers) {
  const std::string text = run({"--help"}).output + run({"view", "--help"}).output;
  for (const char* word : {"REQUIRED", "INT", "Excludes", "Needs"}) {
    EXPECT_THAT(text, testing::Not(HasSubstr(word)));
  }
}

TEST_F(CommandLineTest, AnEmptyOutputNameIsRefused) {
  expectUsageError({"a.log", "-o", ""}, "--output: the name of the output is empty");
}

TEST_F(CommandLineTest, LevelsOutsideASignedByteAreRefused) {
  expectUsageError({"a.log", "-l", "128"}, "--level: '128' is not a whole number from -128 to 127");
  expectUsageError({"a.log", "-l", "-129"},
                   "--level: '-129' is not a whole number from -128 to 127");
  for (const std::string text : {"many", "3.5", "", "0x1", "99999999999"}) {
    expectUsageError({"a.log", "-l", text},
                     "--level: '" + text + "' is not a whole number from -128 to 127");
  }
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
