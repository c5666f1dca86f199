#include <sys/stat.h>

#include "host/host_fixture.h"
#include "support/json_log.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kHint[] = "; --search looks for sound chunks behind the damage, too";

class RecoverTest : public HostTest {
 protected:
  void expectResult(const ProgramResult& result, int status,
                    const std::vector<std::string>& lines) const {
    std::string errors;
    for (const std::string& line : lines) {
      errors += ownLine(line);
    }
    EXPECT_EQ(result.errors, errors);
    EXPECT_EQ(result.exitStatus, status);
  }

  std::string m_first = logOfExecutions(1);
  std::string m_second = logOfExecutions(2);
  std::string m_third = smallLog();
};

std::string brokenInside(std::string chunk) {
  chunk[7] = '\x7f';  // the root's offset, now beyond the chunk
  return chunk;
}

std::string lostLine(std::size_t from, std::size_t to, const std::string& why,
                     const std::string& log = "run.log") {
  return log + ": lost " + std::to_string(to - from) + " bytes from byte offset " +
         std::to_string(from) + " to " + std::to_string(to) + ": " + why;
}

std::string corrupt(const std::string& chunk) {
  return "the chunk of " + std::to_string(chunk.size() - 4) + " bytes is corrupt";
}

std::string savedLine(const std::string& amount, std::size_t bytes, const std::string& rest,
                      const std::string& output = "out") {
  return "run.log: saved " + amount + ", " + std::to_string(bytes) + " bytes to " + output + "; " +
         rest;
}

TEST_F(RecoverTest, ASoundLogIsCopied) {
  write("run.log", m_first + m_second + m_third);
  for (const std::vector<std::string>& search : {std::vector<std::string>{}, {"--search"}}) {
    std::vector<std::string> arguments = {"recover", "run.log", "-o", "out"};
    arguments.insert(arguments.end(), search.begin(), search.end());
    expectResult(run(arguments), 0,
                 {savedLine("3 chunks, 4 messages", read("run.log").size(), "nothing was lost")});
    EXPECT_EQ(read("out"), read("run.log"));
    EXPECT_THAT(names(), ElementsAre("out", "run.log"));
  }
}

TEST_F(RecoverTest, AnEmptyLogLosesNothing) {
  write("run.log", "");
  expectResult(run({"recover", "run.log", "-o", "out"}), 0,
               {savedLine("0 chunks, 0 messages", 0, "nothing was lost")});
  EXPECT_EQ(read("out"), "");
}

TEST_F(RecoverTest, WhatStandsBeforeTheDamageIsSaved) {
  const std::string log = m_first + brokenInside(m_second) + m_third;
  write("run.log", log);
  const std::size_t lost = log.size() - m_first.size();
  expectResult(run({"recover", "run.log", "-o", "out"}), 3,
               {lostLine(m_first.size(), log.size(), corrupt(m_second)),
                savedLine("1 chunk, 1 message", m_first.size(),
                          "lost 1 range, " + std::to_string(lost) + " bytes" + kHint)});
  EXPECT_EQ(read("out"), m_first);
  EXPECT_THAT(run({"out", "-o", "-"}), SucceedsQuietly());
}

TEST_F(RecoverTest, ASearchSavesWhatStandsBehindIt) {
  const std::string damage = brokenInside(m_second);
  const std::size_t behind = m_first.size() + damage.size();
  const std::size_t end = behind + m_third.size();
  write("run.log", m_first + damage + m_third + m_first.substr(0, 60));
  expectResult(
      run({"recover", "--search", "run.log", "-o", "out"}), 3,
      {lostLine(m_first.size(), behind, corrupt(m_second)),
       lostLine(end, end + 60,
                "the log ends inside the chunk: 56 of " + std::to_string(m_first.size() - 4) +
                    " bytes are there; the run may still be writing, or was ended in the "
                    "middle of it"),
       savedLine("2 chunks, 2 messages", m_first.size() + m_third.size(),
                 "lost 2 ranges, " + std::to_string(damage.size() + 60) + " bytes")});
  EXPECT_EQ(read("out"), m_first + m_third);
}

// A length that reaches beyond the end is damage where chunks follow, not a run that still writes.
TEST_F(RecoverTest, ALengthThatIsTooLargeIsToldFromALogThatIsCut) {
  write("run.log", m_first + "\xff\xff\xff\x7e" + m_second.substr(4) + m_third);
  const std::size_t behind = m_first.size() + m_second.size();
  expectResult(run({"recover", "run.log", "-o", "out", "--search"}), 3,
               {lostLine(m_first.size(), behind,
                         "the log ends inside the chunk: " +
                             std::to_string(m_second.size() - 4 + m_third.size()) +
                             " of 2130706431 bytes are there"),
                savedLine("2 chunks, 2 messages", m_first.size() + m_third.size(),
                          "lost 1 range, " + std::to_string(m_second.size()) + " bytes")});
}

TEST_F(RecoverTest, ALengthThatIsCutIsLost) {
  write("run.log", m_first + "abc");
  expectResult(run({"recover", "run.log", "-o", "out"}), 3,
               {lostLine(m_first.size(), m_first.size() + 3,
                         "the log ends inside the length of a chunk: 3 of 4 bytes are there; the "
                         "run may still be writing, or was ended in the middle of it"),
                savedLine("1 chunk, 1 message", m_first.size(),
                          std::string("lost 1 range, 3 bytes") + kHint)});
  EXPECT_EQ(read("out"), m_first);
}

// The chunk is sound though its end is missing, but a copy of it would be no whole chunk.
TEST_F(RecoverTest, AChunkThatIsCutIsLostThoughItVerifies) {
  const std::string cut = lengthBytes(m_second.size() + 6) + m_second.substr(4);
  write("run.log", m_first + cut);
  for (const char* option : {"-q", "--search"}) {
    EXPECT_EQ(run({"recover", "run.log", "-o", "out", option}).exitStatus, 3);
    EXPECT_EQ(read("out"), m_first);
  }
  EXPECT_EQ(runInShell("cat run.log | \"$0\" \"$@\"", {"recover", "-", "-o", "out"}).exitStatus, 3);
  EXPECT_EQ(read("out"), m_first);
}

TEST_F(RecoverTest, OfManyLossesTheFirstAreToldAndTheRestIsCounted) {
  std::string log;
  std::string whole;
  for (int i = 0; i < 23; ++i) {
    log += brokenInside(m_first) + m_second;
    whole += m_second;
  }
  write("run.log", log);
  const ProgramResult result = run({"recover", "run.log", "-o", "out", "--search"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(read("out"), whole);
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 22);
  EXPECT_THAT(
      result.errors,
      HasSubstr(
          ownLine("run.log: lost 3 more ranges, " + std::to_string(3 * m_first.size()) + " bytes") +
          ownLine(savedLine("23 chunks, 46 messages", whole.size(),
                            "lost 23 ranges, " + std::to_string(23 * m_first.size()) + " bytes"))));
}

TEST_F(RecoverTest, WhereNothingCanBeSavedTheFileIsEmpty) {
  write("run.log", "These are not the bytes of a log.\n");
  const ProgramResult result = run({"recover", "run.log", "-o", "out", "--search"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.errors, HasSubstr(ownLine("run.log: nothing could be saved: out is empty; "
                                               "lost 1 range, 34 bytes")));
  EXPECT_EQ(read("out"), "");
  std::filesystem::remove(directory() / "out");
  write("run.log", "\x1f\x8b\x08" + std::string(40, 'x'));
  EXPECT_THAT(run({"recover", "run.log", "-o", "out"}).errors,
              HasSubstr("run.log: is compressed with gzip; unpack it first: gunzip; nothing could "
                        "be saved: out is empty; lost 1 range, 43 bytes"));
}

TEST_F(RecoverTest, AnEmptyCopyReplacesNoFile) {
  write("run.log", "These are not the bytes of a log.\n");
  write("out", "old");
  const ProgramResult result = run({"recover", "run.log", "-o", "out", "--search"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors,
              testing::EndsWith(ownLine("run.log: nothing could be saved; out was left as it is")));
  EXPECT_THAT(result.errors, Not(HasSubstr("may still be writing")));
  EXPECT_EQ(read("out"), "old");
  EXPECT_THAT(names(), ElementsAre("out", "run.log"));
}

TEST_F(RecoverTest, StandardOutputTakesTheLogAlone) {
  write("run.log", m_first + brokenInside(m_second) + m_third);
  const ProgramResult result = run({"recover", "run.log", "-o", "-", "--search"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, m_first + m_third);
  EXPECT_THAT(result.errors, HasSubstr(" bytes to standard output; lost 1 range, "));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(RecoverTest, APipeIsSalvagedAsAFileIs) {
  write("run.log", m_first + brokenInside(m_second) + m_third);
  const std::size_t end = read("run.log").size();
  const ProgramResult before =
      runInShell("cat run.log | \"$0\" \"$@\"", {"recover", "-", "-o", "out"});
  EXPECT_EQ(before.exitStatus, 3);
  EXPECT_THAT(
      before.errors,
      HasSubstr(ownLine(lostLine(m_first.size(), end, corrupt(m_second), "standard input"))));
  EXPECT_EQ(read("out"), m_first);
  const ProgramResult behind =
      runInShell("cat run.log | \"$0\" \"$@\"", {"recover", "-", "-o", "-", "--search"});
  EXPECT_EQ(behind.exitStatus, 3);
  EXPECT_EQ(behind.output, m_first + m_third);
  EXPECT_THAT(names(), ElementsAre("out", "run.log"));
}

TEST_F(RecoverTest, AnExistingFileIsReplacedAndKeepsItsMode) {
  write("run.log", m_first);
  write("out", "old");
  chmod((directory() / "out").c_str(), 0604);
  EXPECT_EQ(run({"recover", "run.log", "-o", "out"}).exitStatus, 0);
  struct stat status {};
  ASSERT_EQ(stat((directory() / "out").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0604U);
  EXPECT_EQ(read("out"), m_first);
}

TEST_F(RecoverTest, TheLogItselfIsRefusedUnderAnyName) {
  const std::string log = m_first + brokenInside(m_second);
  write("run.log", log);
  fs::create_symlink("run.log", directory() / "link");
  fs::create_hard_link(directory() / "run.log", directory() / "twin");
  for (const std::string name : {"run.log", "./run.log", "link", "twin"}) {
    EXPECT_THAT(run({"recover", "run.log", "-o", name}),
                FailsWith(name + ": is the log itself; give another name for the output"));
  }
  EXPECT_THAT(runInShell("exec \"$0\" \"$@\" >>run.log", {"recover", "run.log", "-o", "-"}),
              FailsWith("standard output: is the log itself; give another name for the output"));
  EXPECT_EQ(read("run.log"), log);
}

TEST_F(RecoverTest, ALogThatCannotBeReadLeavesTheOldFile) {
  write("out", "old");
  EXPECT_THAT(run({"recover", "run.log", "-o", "out"}),
              FailsWith("run.log: no such file or directory; check the name"));
  fs::create_directory(directory() / "logs");
  EXPECT_THAT(run({"recover", "logs", "-o", "out"}),
              FailsWith("logs: is a directory; give the name of a file"));
  EXPECT_EQ(read("out"), "old");
}

TEST_F(RecoverTest, TheOutputMustBeNamed) {
  const ProgramResult result = run({"recover", "run.log"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, ownLine("--output is required; see vyn-profile-viewer recover --help"));
  EXPECT_EQ(run({"recover", "run.log", "-o", "out", "--force"}).exitStatus, 2);
}

// However much of the log a damaged length claims, it takes no memory.
TEST_F(RecoverTest, ADamagedLengthCostsNoMemory) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer needs more address space than the test allows";
#endif
  write("run.log", m_first + "\xfe\xff\xff\x70" + std::string(8'000'000, 'x') + m_third);
  for (const char* option : {"-q", "--search"}) {
    const ProgramResult result = runInShell("ulimit -v 60000; exec \"$0\" \"$@\"",
                                            {"recover", "run.log", "-o", "out", option});
    EXPECT_EQ(result.exitStatus, 3) << result.errors;
  }
  EXPECT_EQ(read("out"), m_first + m_third);
}

}  // namespace
}  // namespace vyn::test
