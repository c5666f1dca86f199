#include <sys/stat.h>

#include <fstream>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSubsetOf;

constexpr char kNoLog[] =
    ": not a profiling log, or damaged from its first chunk on; give a log that vyn-net-run wrote";

class BadLogTest : public HostTest {
 protected:
  // The run fails with the line for this log, and leaves nothing but the old output.
  void expectRefused(const std::string& log, const std::string& line) const {
    for (const char* reader : {"json", "summary"}) {
      write("out", "old\n");
      EXPECT_THAT(run({log, "-r", reader, "-o", "out"}), FailsWith(line));
      EXPECT_EQ(read("out"), "old\n");
      EXPECT_THAT(names(), IsSubsetOf({std::string("out"), log}));
    }
  }
};

TEST_F(BadLogTest, NoSuchFile) {
  expectRefused("run.log", "run.log: no such file or directory; check the name");
}

TEST_F(BadLogTest, ADirectory) {
  std::filesystem::create_directory(directory() / "logs");
  expectRefused("logs", "logs: is a directory; give the name of a file");
}

TEST_F(BadLogTest, AFileInAFile) {
  write("run.log", smallLog());
  EXPECT_THAT(run({"run.log/x"}),
              FailsWith("run.log/x: a part of its path is not a directory; check the name"));
}

TEST_F(BadLogTest, NotAProfilingLog) {
  write("run.log", "These are not the bytes of a log.\n");
  expectRefused("run.log", std::string("run.log") + kNoLog);
}

TEST_F(BadLogTest, ALengthThatNoChunkHas) {
  write("run.log", std::string("\xff\xff\xff\xff") + smallLog());
  expectRefused("run.log", std::string("run.log") + kNoLog);
}

TEST_F(BadLogTest, DamageTellsHowMuchIsWhole) {
  const std::string first = makeChunk({"", "", ""});
  const std::string second = makeChunk({""});
  std::string third = smallLog();
  third[7] = '\x7f';  // the root's offset, now beyond the chunk
  write("run.log", first + second + third);
  const std::string offset = std::to_string(first.size() + second.size());
  expectRefused("run.log", "run.log: damaged after chunk 2 at byte offset " + offset +
                               " (whole chunks before it: 2, 4 messages); copy the log again, or "
                               "keep what is whole with head -c " +
                               offset);
}

TEST_F(BadLogTest, ACutChunkIsDamage) {
  const std::string first = makeChunk({""});
  write("run.log", first + smallLog().substr(0, 60));
  const std::string offset = std::to_string(first.size());
  expectRefused("run.log", "run.log: damaged after chunk 1 at byte offset " + offset +
                               " (whole chunks before it: 1, 1 message); copy the log again, or "
                               "keep what is whole with head -c " +
                               offset);
}

TEST_F(BadLogTest, TheWholePartThatTheHintKeepsIsReadable) {
  write("run.log", makeChunk({""}) + "damage, 20 bytes.");
  EXPECT_EQ(run({"run.log"}).exitStatus, 1);
  write("whole.log", read("run.log").substr(0, makeChunk({""}).size()));
  EXPECT_THAT(run({"whole.log", "-o", "-"}), SucceedsQuietly());
}

TEST_F(BadLogTest, ControlCharactersOfTheNameAreShownNotSent) {
  write("a\n\x1b[31m\xc2\x9b.log", "none");
  EXPECT_THAT(run({"a\n\x1b[31m\xc2\x9b.log"}),
              FailsWith(std::string("a\\x0a\\x1b[31m\xc2\\x9b.log") + kNoLog));
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
                        "where"));
  EXPECT_THAT(names(), ElementsAre("pipe"));
}

TEST_F(BadLogTest, NotEnoughMemoryForAChunk) {
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
