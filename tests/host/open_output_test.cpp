// Outputs that the shell has opened already, and the log among them.

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;

constexpr char kIsTheLog[] = ": is the log itself; give another name for the output";

class OpenOutputTest : public HostTest {
 protected:
  OpenOutputTest() { write("run.log", smallLog()); }

  ProgramResult runWith(const std::string& redirection, std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "run.log");
    return runInShell("\"$0\" \"$@\" " + redirection, std::move(arguments));
  }

  std::string document() const {
    EXPECT_THAT(run({"run.log", "-o", "expected.json"}), SucceedsQuietly());
    std::string text = read("expected.json");
    std::filesystem::remove(directory() / "expected.json");
    return text;
  }
};

TEST_F(OpenOutputTest, ADescriptorIsWrittenWhereItsShellOpenedIt) {
  const std::string expected = document();
  for (const std::string name : {"/dev/fd/3", "/proc/self/fd/3", "/proc/thread-self/fd/3"}) {
    write("out.txt", "kept\n");
    EXPECT_THAT(runWith("3>>out.txt", {"-o", name}), SucceedsQuietly()) << name;
    EXPECT_EQ(read("out.txt"), "kept\n" + expected) << name;
  }
  EXPECT_THAT(names(), ElementsAre("out.txt", "run.log"));
}

TEST_F(OpenOutputTest, AListingIsAddedWhereItsShellOpenedIt) {
  write("out.txt", "kept\n");
  EXPECT_THAT(runWith("3>>out.txt", {"-r", "summary", "-o", "/dev/fd/3"}), SucceedsQuietly());
  EXPECT_THAT(read("out.txt"), testing::StartsWith("kept\ninput log file location, run.log\n"));
}

TEST_F(OpenOutputTest, ALinkToADescriptorIsFollowedToIt) {
  write("out.txt", "kept\n");
  std::filesystem::create_symlink("/dev/fd/3", directory() / "link");
  EXPECT_THAT(runWith("3>>out.txt", {"-o", "link"}), SucceedsQuietly());
  EXPECT_EQ(read("out.txt"), "kept\n" + document());
}

TEST_F(OpenOutputTest, ADeletedFileGetsNoNameAgain) {
  const ProgramResult result = runInShell("exec 3>gone 4<gone; rm gone; \"$0\" \"$@\" && cat <&4",
                                          {"run.log", "-o", "/dev/fd/3"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, document());
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(OpenOutputTest, AFileThatAnotherProcessHoldsOpenIsAddedTo) {
  write("out.txt", "kept\n");
  EXPECT_THAT(runInShell("exec 5>>out.txt; \"$0\" \"$@\" -o /proc/$$/fd/5 && :", {"run.log"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.txt"), "kept\n" + document());
  EXPECT_THAT(names(), ElementsAre("out.txt", "run.log"));
}

TEST_F(OpenOutputTest, AClosedDescriptorIsRefused) {
  EXPECT_THAT(run({"run.log", "-o", "/dev/fd/9"}),
              FailsWith("/dev/fd/9: is closed; open it or choose another output"));
}

TEST_F(OpenOutputTest, AClosedStandardStreamIsRefused) {
  EXPECT_THAT(runWith(">&-", {"-o", "/dev/fd/1"}),
              FailsWith("/dev/fd/1: is closed; open it or choose another output"));
}

TEST_F(OpenOutputTest, ADescriptorForReadingIsRefused) {
  EXPECT_THAT(runWith("3<run.log", {"-o", "/dev/fd/3"}),
              FailsWith("/dev/fd/3: is open for reading only; open it for writing (3>FILE)"));
}

TEST_F(OpenOutputTest, WhatIsNoDescriptorIsRefused) {
  for (const std::string name : {"/dev/fd/3x", "/dev/fd/99999999999"}) {
    EXPECT_THAT(run({"run.log", "-o", name}),
                FailsWith(name + ": names no open file; give the number of one, as in /dev/fd/3"));
  }
}

TEST_F(OpenOutputTest, AScratchDirectoryThatIsNotThereIsNamed) {
  EXPECT_THAT(runInShell("TMPDIR=/nonexist \"$0\" \"$@\"", {"run.log", "-o", "-"}),
              FailsWith("/nonexist: is no directory, though TMPDIR names it; set TMPDIR to one"));
}

TEST_F(OpenOutputTest, StandardErrorIsWrittenNotReplaced) {
  const std::string expected = document();
  for (const std::string name : {"/dev/stderr", "out.txt"}) {
    write("out.txt", "kept\n");
    EXPECT_THAT(runWith("2>>out.txt", {"-o", name}), SucceedsQuietly()) << name;
    EXPECT_EQ(read("out.txt"), "kept\n" + expected) << name;
  }
}

class LogAsOutputTest : public OpenOutputTest {
 protected:
  void expectRefused(const std::string& redirection, std::vector<std::string> arguments,
                     const std::string& name) const {
    EXPECT_THAT(runWith(redirection, std::move(arguments)), FailsWith(name + kIsTheLog))
        << redirection;
    EXPECT_EQ(read("run.log"), smallLog()) << redirection;
    EXPECT_THAT(names(), ElementsAre("run.log"));
  }
};

TEST_F(LogAsOutputTest, IsRefusedBehindStandardOutput) {
  for (const std::string redirection : {">>run.log", "1<>run.log"}) {
    expectRefused(redirection, {"-o", "-"}, "standard output");
    expectRefused(redirection, {"-o", "/dev/stdout"}, "standard output");
    expectRefused(redirection, {"-r", "summary"}, "standard output");
    expectRefused(redirection, {"-r", "summary", "--header"}, "standard output");
    expectRefused(redirection, {"-r", "summary", "-o", "out.csv"}, "standard output");
  }
}

TEST_F(LogAsOutputTest, IsRefusedBehindADescriptor) {
  for (const std::string redirection : {"3>>run.log", "3<>run.log"}) {
    expectRefused(redirection, {"-o", "/dev/fd/3"}, "/dev/fd/3");
    expectRefused(redirection, {"-r", "summary", "-o", "/proc/self/fd/3"}, "/proc/self/fd/3");
  }
}

TEST_F(LogAsOutputTest, IsRefusedBehindStandardErrorWithoutAWord) {
  const ProgramResult result = runWith("2>>run.log", {"-o", "out.json"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(read("run.log"), smallLog());
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(LogAsOutputTest, ADeviceMayBeLogAndOutput) {
  ProgramCall empty = call({"/dev/null", "-r", "summary"});
  empty.standardOutput = "/dev/null";
  EXPECT_THAT(runProgram(empty), SucceedsQuietly());
}

}  // namespace
}  // namespace vyn::test
