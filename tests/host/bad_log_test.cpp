#include <sys/stat.h>

#include <fstream>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSubsetOf;

constexpr char kNoLog[] =
    ": not a profiling log, or damaged from its first chunk on; give a log that vyn-net-run wrote, "
    "or look for sound chunks: vyn-profile-viewer recover ";

class BadLogTest : public HostTest {
 protected:
  // The run fails with the line for this log, and leaves nothing but the old output.
  void expectRefused(const std::string& log, const std::string& line) const {
    for (const char* reader : {"json", "summary"}) {
      write("out", "old\n");
      const ProgramResult result = run({log, "-r", reader, "-o", "out"});
      EXPECT_THAT(result, FailsWith(line));
      EXPECT_EQ(result.output, "");
      EXPECT_EQ(read("out"), "old\n");
      EXPECT_THAT(names(), IsSubsetOf({std::string("out"), log}));
    }
  }
};

TEST_F(BadLogTest, AMissingFileIsNamed) {
  expectRefused("run.log", "run.log: no such file or directory; check the name");
}

TEST_F(BadLogTest, ADirectoryIsRefused) {
  std::filesystem::create_directory(directory() / "logs");
  expectRefused("logs", "logs: is a directory; give the name of a file");
}

TEST_F(BadLogTest, AFileInAFileIsRefused) {
  write("run.log", smallLog());
  EXPECT_THAT(run({"run.log/x"}),
              FailsWith("run.log/x: a part of its path is not a directory; check the name"));
}

TEST_F(BadLogTest, AnotherKindOfFileIsNoProfilingLog) {
  write("run.log", "These are not the bytes of a log.\n");
  expectRefused("run.log", std::string("run.log") + kNoLog + "run.log -o FILE --search");
}

TEST_F(BadLogTest, ALengthThatNoChunkHasIsDamage) {
  write("run.log", std::string("\xff\xff\xff\xff") + smallLog());
  expectRefused("run.log", std::string("run.log") + kNoLog + "run.log -o FILE --search");
}

TEST_F(BadLogTest, DamageTellsHowMuchIsWhole) {
  const std::string first = logOfExecutions(3);
  const std::string second = logOfExecutions(1);
  std::string third = smallLog();
  third[7] = '\x7f';  // the root's offset, now beyond the chunk
  write("run.log", first + second + third);
  const std::string offset = std::to_string(first.size() + second.size());
  expectRefused("run.log", "run.log: damaged after chunk 2 at byte offset " + offset +
                               " (whole chunks before it: 2, 4 messages); copy the log again, or "
                               "save what is whole: vyn-profile-viewer recover run.log -o FILE");
}

TEST_F(BadLogTest, ACutChunkIsDamage) {
  const std::string first = logOfExecutions(1);
  write("run.log", first + smallLog().substr(0, 60));
  const std::string offset = std::to_string(first.size());
  expectRefused("run.log", "run.log: damaged after chunk 1 at byte offset " + offset +
                               " (whole chunks before it: 1, 1 message); the run may still be "
                               "writing, or was ended in the middle of it; copy the log again, or "
                               "save what is whole: vyn-profile-viewer recover run.log -o FILE");
}

TEST_F(BadLogTest, AFirstChunkThatIsCutIsSaid) {
  const std::string log = smallLog();
  write("run.log", log.substr(0, 60));
  expectRefused("run.log",
                "run.log: not a profiling log, or one that ends inside its first chunk: 56 of " +
                    std::to_string(log.size() - 4) +
                    " bytes are there (the run may still be writing, or was ended in the middle of "
                    "it); copy the log again, or give one that vyn-net-run wrote");
}

// The line is copied as it stands, but for FILE.
TEST_F(BadLogTest, TheHintSavesWhatIsWhole) {
  const std::vector<std::string> logs = {"run.log", "-run.log", "my run's.log",
                                         "$HOME `ls` \"a\" \\n*", "a\n\x1b[31m\xc2\x9b\\'f.log"};
  for (const std::string& name : logs) {
    write(name, logOfExecutions(1) + "damage, 20 bytes.");
    const std::string errors = run({"--", name}).errors;
    const std::string hint = errors.substr(errors.find("recover "));
    const std::string command = "exec \"$0\" " + hint.substr(0, hint.find("FILE")) + "whole";
    ProgramCall shell = call({});
    shell.words.insert(shell.words.begin(), {"/bin/bash", "-c", command});
    EXPECT_EQ(runProgram(shell).exitStatus, 3) << hint;
    EXPECT_EQ(read("whole"), logOfExecutions(1)) << hint;
  }
}

TEST_F(BadLogTest, ControlCharactersOfTheNameAreShownNotSent) {
  write("a\n\x1b[31m\xc2\x9b.log", "none");
  EXPECT_THAT(run({"a\n\x1b[31m\xc2\x9b.log"}),
              FailsWith(std::string("a\\x0a\\x1b[31m\\xc2\\x9b.log") + kNoLog +
                        "$'a\\x0a\\x1b[31m\\xc2\\x9b.log' -o FILE --search"));
}

// A name is printed as it stands but for what a terminal would obey.
TEST_F(BadLogTest, NamesAreEscapedByteByByte) {
  const std::string missing = ": no such file or directory; check the name";
  const std::vector<std::pair<std::string, std::string>> names = {
      {"ä€\U0001F600\u00a0", "ä€\U0001F600\u00a0"},
      {"\x01\x1f\x7f", "\\x01\\x1f\\x7f"},
      {"a\x9b"
       "b",
       "a\\x9bb"},
      {"\u0080\u009f", "\\xc2\\x80\\xc2\\x9f"},
      {"\u061c", "\\xd8\\x9c"},
      {"\u200d\u200e\u200f\u2010", "\u200d\\xe2\\x80\\x8e\\xe2\\x80\\x8f\u2010"},
      {"\u2027\u2028\u2029\u202a", "\u2027\\xe2\\x80\\xa8\\xe2\\x80\\xa9\\xe2\\x80\\xaa"},
      {"\u202e\u202f", "\\xe2\\x80\\xae\u202f"},
      {"\u2065\u2066\u2069\u206a", "\u2065\\xe2\\x81\\xa6\\xe2\\x81\\xa9\u206a"},
      // No valid sequences: overlong, a surrogate, too large, cut off, wrong continuation.
      {"\xc0\x80\xe0\x9f\xbf", "\\xc0\\x80\\xe0\\x9f\\xbf"},
      {"\xed\xa0\x80", "\\xed\\xa0\\x80"},
      {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
      {"\xf8\xe2\x82", "\\xf8\\xe2\\x82"},
      {"\xe2\x82(", "\\xe2\\x82("}};
  for (const auto& [name, shown] : names) {
    EXPECT_THAT(run({name}), FailsWith(shown + missing));
  }
}

TEST_F(BadLogTest, KnownFormatsAreNamed) {
  const std::string json = "looks like JSON, not like a log; is it the output of one?";
  const std::vector<std::pair<std::string, std::string>> formats = {
      {"\x1f\x8b\x08", "is compressed with gzip; unpack it first: gunzip"},
      {"PK\x03\x04", "is a zip archive; unpack it first: unzip"},
      {"\x28\xb5\x2f\xfd", "is compressed with zstd; unpack it first: unzstd"},
      {std::string("\xfd\x37zXZ\0", 6), "is compressed with xz; unpack it first: unxz"},
      {"BZh9", "is compressed with bzip2; unpack it first: bunzip2"},
      {"{\n    \"metadata\"", json},
      {"[{\"a\": 1}]", json},
      {"input log file location, run.log\n",
       "is a CSV listing, not a log; give the log that it was made of"}};
  for (const auto& [start, explanation] : formats) {
    write("run.log", start + std::string(40, 'x'));
    expectRefused("run.log", "run.log: " + explanation);
  }
}

// Behind a whole chunk the same bytes are damage like any other.
TEST_F(BadLogTest, AFormatCountsOnlyAtTheStart) {
  write("run.log", logOfExecutions(1) + "\x1f\x8b\x08" + std::string(40, 'x'));
  EXPECT_THAT(run({"run.log"}).errors, HasSubstr("damaged after chunk 1"));
}

// How many files the program may open rises until it has enough of them.
TEST_F(BadLogTest, TooManyOpenFilesAreSaid) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizers need files of their own";
#endif
  write("run.log", smallLog());
  for (const char* reader : {"json", "summary"}) {
    std::string errors;
    for (int limit = 3; limit < 100; ++limit) {
      const ProgramResult result =
          runInShell("ulimit -n " + std::to_string(limit) + "; exec \"$0\" \"$@\"",
                     {"run.log", "-r", reader, "-o", "out"});
      if (result.exitStatus == 0) {
        break;
      }
      if (result.errors.starts_with("vyn-profile-viewer: ")) {  // not the shell or the loader
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_THAT(result.errors, HasSubstr("too many open files; close some or raise the limit"));
      }
      EXPECT_THAT(names(), ElementsAre("run.log"));
      errors += result.errors;
    }
    EXPECT_THAT(errors, HasSubstr(ownLine("run.log: cannot be opened: too many open files; close "
                                          "some or raise the limit (ulimit -n)")));
    std::filesystem::remove(directory() / "out");
  }
}

// Writes all of `content` to a pipe once a reader has opened it.
ProgramResult runFed(RunningProgram& program, const std::filesystem::path& pipe,
                     const std::string& content) {
  std::ofstream(pipe, std::ios::binary) << content;
  return program.wait();
}

class PipedLogTest : public BadLogTest {
 protected:
  PipedLogTest() { mkfifo(pipe().c_str(), 0666); }

  std::filesystem::path pipe() const { return directory() / "pipe"; }
};

TEST_F(PipedLogTest, IsReadLikeAFile) {
  RunningProgram program(call({"pipe", "-o", "out.json"}));
  EXPECT_THAT(runFed(program, pipe(), smallLog()), SucceedsQuietly());
  EXPECT_THAT(read("out.json"), HasSubstr("\"vynNetRunVersion\": \"net-run 7\""));
}

TEST_F(PipedLogTest, DamageHasNoPlace) {
  RunningProgram program(call({"pipe", "-o", "out.json"}));
  EXPECT_THAT(runFed(program, pipe(), smallLog() + "damage, 20 bytes."),
              FailsWith("pipe: the log is damaged; write it to a file and read that to learn "
                        "where, or save what is whole of it with vyn-profile-viewer recover"));
  EXPECT_THAT(names(), ElementsAre("pipe"));
}

TEST_F(BadLogTest, TooLittleMemoryForAChunkIsSaid) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs more address space than the test allows";
#endif
  write("run.log", std::string("\xfe\xff\xff\x7f") + std::string(100, 'x'));
  const ProgramResult result =
      runInShell("ulimit -v 500000; exec \"$0\" \"$@\"", {"run.log", "-o", "out.json"});
  EXPECT_THAT(result, FailsWith("run.log: not enough memory to read it; free some memory or read a "
                                "shorter log"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

}  // namespace
}  // namespace vyn::test
