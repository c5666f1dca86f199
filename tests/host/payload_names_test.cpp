// What is done about the names that a log gives its payloads, before any is written.

#include <sys/stat.h>

#include "host/nobody_fixture.h"
#include "support/shared_log.h"

namespace vyn::test {
namespace {

using namespace std::string_literals;  // NOLINT(google-build-using-namespace)

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kOrAnywhere[] = "; add --payloads-anywhere if you trust the log";

Event payloadEvent(const std::string& fileName) {
  Event event = object(fileName, "by");
  event.identifier = "blob";
  return event;
}

std::string logWithPayload(const std::string& fileName) {
  return logWith({finalize("net", {}, {payloadEvent(fileName)})});
}

std::string refusal(const std::string& name, const std::string& reason) {
  return "run.log: the payload of event \"blob\", named \"" + name + "\", " + reason;
}

class PayloadNamesTest : public NobodyTest {
 protected:
  // In a folder of its own, so that what leaves it stays in the test's.
  ProgramResult runIn(const std::string& folder, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"run.log", "-r", "summary", "--payloads"});
    ProgramCall inside = call(std::move(arguments));
    inside.directory = directory() / folder;
    return runProgram(inside);
  }

  void expectRefused(const std::string& name, const std::string& reason) const {
    write("run.log", logWithPayload(name));
    const auto before = names();
    EXPECT_THAT(runIn(".", {}), FailsWith(refusal(name, reason)));
    EXPECT_EQ(names(), before);
  }
};

TEST_F(PayloadNamesTest, MustStayInTheCurrentDirectory) {
  const std::string leaves = std::string("would leave the current directory") + kOrAnywhere;
  fs::create_directory(directory() / "sub");
  for (const std::string& name :
       {(directory() / "abs.bin").string(), std::string("../x.bin"), std::string("sub/../../x.bin"),
        std::string("sub/../x.bin"), std::string(".."), std::string("sub/..")}) {
    expectRefused(name, leaves);
  }
}

TEST_F(PayloadNamesTest, MayLeaveItWhenAllowed) {
  fs::create_directory(directory() / "sub");
  for (const std::string& name : {(directory() / "abs.bin").string(), std::string("../rel.bin")}) {
    write("sub/run.log", logWithPayload(name));
    EXPECT_THAT(runIn("sub", {"--payloads-anywhere"}), SucceedsQuietly());
  }
  EXPECT_EQ(read("abs.bin"), "by");
  EXPECT_EQ(read("rel.bin"), "by");
}

TEST_F(PayloadNamesTest, AnywhereNeedsPayloads) {
  write("run.log", logWithPayload("x.bin"));
  EXPECT_EQ(run({"run.log", "-r", "summary", "--payloads-anywhere"}).exitStatus, 2);
}

TEST_F(PayloadNamesTest, MayLeadIntoADirectoryOfTheCurrentOne) {
  fs::create_directories(directory() / "sub/deeper");
  write("run.log", logWithPayload("./sub//deeper/x.bin"));
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
  EXPECT_EQ(read("sub/deeper/x.bin"), "by");
}

TEST_F(PayloadNamesTest, MustNotGoThroughALink) {
  fs::create_directory(directory() / "sub");
  fs::create_directory_symlink("sub", directory() / "link");
  fs::create_symlink("elsewhere", directory() / "dangling.bin");
  fs::create_symlink("elsewhere", directory() / "numbered_7.bin");
  fs::create_symlink("elsewhere", directory() / "plain_1");
  fs::create_symlink("elsewhere", directory() / "sub/below_2.bin");
  for (const auto& [name, link] :
       std::vector<std::pair<std::string, std::string>>{{"link/x.bin", "link"},
                                                        {"./link/x.bin", "link"},
                                                        {"dangling.bin", "dangling.bin"},
                                                        {"numbered.bin", "numbered_7.bin"},
                                                        {"plain", "plain_1"},
                                                        {"sub/below.bin", "sub/below_2.bin"}}) {
    expectRefused(name, "would go through the symbolic link " + link + kOrAnywhere);
  }
  write("run.log", logWithPayload("dangling.bin"));
  EXPECT_THAT(runIn(".", {"--payloads-anywhere"}), SucceedsQuietly());
  EXPECT_EQ(read("elsewhere"), "by");
}

TEST_F(PayloadNamesTest, LinksOfOtherNamesDoNotMatter) {
  for (const std::string link : {"x_.bin", "x_1a.bin", "x_1.txt", "x1.bin", "y_1.bin", "_1"}) {
    fs::create_symlink("elsewhere", directory() / link);
  }
  write("run.log", logWithPayload("x.bin"));
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
  EXPECT_EQ(read("x.bin"), "by");
}

TEST_F(PayloadNamesTest, EndAtTheirFirstZeroByte) {
  fs::create_directory(directory() / "sub");
  write("sub/run.log", logWithPayload("../x.bin\0y"s));
  EXPECT_EQ(runIn("sub", {}).exitStatus, 1);
  write("run.log", logWithPayload("\0../x.bin"s));
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
}

TEST_F(PayloadNamesTest, AreLookedAtInSubEventsAndInEveryChunk) {
  const Message inside = execute("net", {}, {{.subEvents = {payloadEvent("../x")}}});
  const std::string line =
      refusal("../x", std::string("would leave the current directory") + kOrAnywhere);
  write("run.log", logWith({inside}));
  EXPECT_THAT(runIn(".", {}), FailsWith(line));
  write("run.log", smallLog() + logWith({execute("net"), inside}));
  EXPECT_THAT(runIn(".", {}), FailsWith(line));
}

TEST_F(PayloadNamesTest, OfOtherEventsAreNoFiles) {
  write("run.log",
        logWith({execute("net", {}, {{.unit = EventUnit::COUNT, .secondaryName = "/x/y"}})}));
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
}

TEST_F(PayloadNamesTest, DoNotMatterWithoutPayloads) {
  write("run.log", logWithPayload("../x.bin"));
  EXPECT_THAT(run({"run.log", "-r", "summary"}), SucceedsQuietly());
}

TEST_F(PayloadNamesTest, MustNotBeTheOutputs) {
  const std::string reason = "has the name of the output; give another --output";
  write("run.log", logWithPayload("out.csv"));
  fs::create_directory(directory() / "sub");
  fs::create_symlink("../out.csv", directory() / "sub/link");
  for (const std::string& output :
       {std::string("out.csv"), std::string("./sub/../out.csv"), (directory() / "out.csv").string(),
        std::string("sub/link"), std::string("out_3.csv")}) {
    EXPECT_THAT(runIn(".", {"-o", output}), FailsWith(refusal("out.csv", reason))) << output;
  }
  EXPECT_THAT(runIn(".", {"-o", "sub/out.csv"}), SucceedsQuietly());
  EXPECT_EQ(read("out.csv"), "by");
}

TEST_F(PayloadNamesTest, MustNotBeThoseOfFilesThatOnlyMayBeWritten) {
  for (const std::string existing : {"x.bin", "x_1.bin"}) {
    write("run.log", logWithPayload("x.bin"));
    write(existing, "secret");
    setMode("run.log", 0600);
    setMode(existing, 0200);
    for (const std::string option : {"--payloads", "--payloads-anywhere"}) {
      EXPECT_THAT(runAsNobody({"run.log", "-r", "summary", "--payloads", option}),
                  FailsWith(refusal("x.bin", "would replace " + existing +
                                                 ", which may not be read; move it away")));
    }
    EXPECT_EQ(read(existing), "secret");
    fs::remove(directory() / existing);
  }
}

TEST_F(PayloadNamesTest, AFileThatMayBeReadIsKept) {
  write("run.log", logWithPayload("x.bin"));
  write("x.bin", "old");
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
  EXPECT_EQ(read("x.bin"), "old");
  EXPECT_EQ(read("x_1.bin"), "by");
}

TEST_F(PayloadNamesTest, MustBeSuchAsFilesCanHave) {
  expectRefused("none/x.bin", "cannot be written: none: no such file or directory; check the name");
  expectRefused(
      "run.log/x.bin",
      "cannot be written: run.log: a part of its path is not a directory; check the name");
  expectRefused("sub/", "cannot be written: sub: no such file or directory; check the name");
  fs::create_directory(directory() / "sub");
  expectRefused("sub/", "names a directory, not a file");
  write("run.log", logWithPayload(std::string(300, 'n')));
  EXPECT_THAT(runIn(".", {}).errors, HasSubstr("has a name that is too long"));
}

TEST_F(PayloadNamesTest, MustBeInADirectoryThatMayBeWritten) {
  write("run.log", logWithPayload("sub/x.bin"));
  fs::create_directory(directory() / "sub");
  setMode("run.log", 0600);
  setMode("sub", 0555);
  EXPECT_THAT(runAsNobody({"run.log", "-r", "summary", "--payloads"}),
              FailsWith(refusal("sub/x.bin",
                                "cannot be written: sub: no permission; change the permissions or "
                                "choose another file")));
}

TEST_F(PayloadNamesTest, MustNotBeNumberedInTheirDirectory) {
  fs::create_directory(directory() / "v1.0");
  write("run.log", logWithPayload("v1.0/blob"));
  EXPECT_THAT(runIn(".", {}), SucceedsQuietly());
  EXPECT_EQ(read("v1.0/blob"), "by");
  expectRefused("v1.0/blob",
                "would be numbered in the name of its directory, for that has the last dot; add "
                "--payloads-anywhere if you trust the log");
}

TEST_F(PayloadNamesTest, CannotBeLookedAtInAPipe) {
  mkfifo((directory() / "pipe").c_str(), 0666);
  EXPECT_THAT(
      run({"pipe", "-r", "summary", "--payloads"}),
      FailsWith("pipe: the names of its payloads cannot be looked at before it is read, for "
                "it is no file; write it to a file, or read it without --payloads"));
}

TEST_F(PayloadNamesTest, CountTogetherWithTheirPayloadsForTheLimit) {
  write("run.log", logWithPayload("x.bin"));
  EXPECT_THAT(runIn(".", {"--max-output", "6"}).errors,
              HasSubstr("the payloads of run.log: the output is larger than 6 bytes"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

// However small a payload is, its file takes room; a small log may name very many.
TEST_F(PayloadNamesTest, CountAtLeastABlockForEachFile) {
  write("run.log", logWith({finalize("net", {}, Events(10, payloadEvent("x.bin")))}));
  EXPECT_THAT(runIn(".", {"--max-output", "40959"}).errors,
              HasSubstr("the payloads of run.log: the output is larger than 40959 bytes"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
  EXPECT_THAT(runIn(".", {"--max-output", "40960"}), SucceedsQuietly());
}

// A payload of a top-level event is written once more for each of its sub-events.
TEST_F(PayloadNamesTest, ASmallLogCannotFillTheDiskWithFiles) {
  write("run.log", logOfPayloadAboveEvents("x.bin", 600));
  const ProgramResult result = runInShell("timeout --signal=KILL 2 \"$0\" \"$@\"",
                                          {"run.log", "-r", "summary", "--payloads"});
  EXPECT_THAT(result,
              FailsWith("the payloads of run.log: the output is larger than 1073741824 bytes, far "
                        "more than such a log should give; if you trust the log, give more with "
                        "--max-output SIZE or --max-output none"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

}  // namespace
}  // namespace vyn::test
