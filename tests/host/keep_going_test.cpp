
#include "host/host_fixture.h"
#include "support/json_log.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class KeepGoingTest : public HostTest {
 protected:
  ProgramResult exportLog(std::vector<std::string> options) const {
    options.insert(options.begin(), {"export", "json", "run.log"});
    return run(std::move(options));
  }

  // The document of a log of that name with these bytes.
  std::string documentOf(const std::string& log) const {
    const std::string previous = read("run.log");
    write("run.log", log);
    const ProgramResult result = exportLog({"-o", "-"});
    EXPECT_THAT(result, SucceedsQuietly());
    write("run.log", previous);
    return result.output;
  }

  std::string m_first = smallLog();
  std::string m_second = logOfExecutions(2);
  std::string m_third = logOfExecutions(3);
};

std::string brokenInside(std::string chunk) {
  chunk[7] = '\x7f';  // the root's offset, now beyond the chunk
  return chunk;
}

TEST_F(KeepGoingTest, TheDocumentHoldsWhatStandsBeforeTheDamage) {
  write("run.log", m_first + brokenInside(m_second) + m_third);
  const std::string size = std::to_string(m_second.size() + m_third.size());
  const std::string from = std::to_string(m_first.size());
  const std::string to = std::to_string(read("run.log").size());
  const std::string lines =
      ownLine("run.log: lost " + size + " bytes from byte offset " + from + " to " + to +
              ": the chunk of " + std::to_string(m_second.size() - 4) + " bytes is corrupt") +
      ownLine("run.log: the document lacks what is lost: 1 range, " + size + " bytes");
  for (const char* output : {"-", "out.json"}) {
    const ProgramResult result = exportLog({"--keep-going", "-o", output});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.errors, lines);
    EXPECT_EQ(result.output + (*output == '-' ? "" : read("out.json")), documentOf(m_first));
  }
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(KeepGoingTest, ASearchAddsWhatStandsBehindIt) {
  write("run.log", m_first + brokenInside(m_second) + m_third);
  const ProgramResult result = exportLog({"--keep-going", "--search", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, documentOf(m_first + m_third));
  const ProgramResult piped = runInShell("cat run.log | \"$0\" \"$@\"",
                                         {"export", "json", "-", "--keep-going", "--search"});
  EXPECT_EQ(piped.exitStatus, 3);
  EXPECT_THAT(piped.errors, HasSubstr("standard input: the document lacks what is lost: 1 range"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(KeepGoingTest, ADocumentOfNothingIsWholeToo) {
  write("run.log", "These are not the bytes of a log.\n");
  const ProgramResult result = exportLog({"--keep-going", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, documentOf(""));
}

TEST_F(KeepGoingTest, WhereTheFileWentIsSaidAsWell) {
  write("run.log", m_first + brokenInside(m_second));
  const ProgramResult result = exportLog({"--keep-going"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.errors, testing::StartsWith(ownLine("wrote run.log.json")));
  EXPECT_EQ(read("run.log.json"), documentOf(m_first));
}

TEST_F(KeepGoingTest, OfASoundLogNothingIsSaid) {
  write("run.log", m_first + m_second);
  for (const std::vector<std::string>& options :
       {std::vector<std::string>{"--keep-going"}, {"--keep-going", "--search"}}) {
    std::vector<std::string> all = options;
    all.insert(all.end(), {"-o", "-"});
    const ProgramResult result = exportLog(all);
    EXPECT_THAT(result, SucceedsQuietly());
    EXPECT_EQ(result.output, documentOf(m_first + m_second));
  }
}

// What the plain export takes is no loss: a chunk that is sound without its end, a few bytes more.
std::string notWholeLine(const std::string& first, const std::string& log) {
  const std::string present = std::to_string(log.size() - first.size() - 4);
  return ownLine(
      "run.log: not whole: " + std::to_string(log.size() - first.size()) +
      " bytes from byte offset " + std::to_string(first.size()) + " to " +
      std::to_string(log.size()) + ": the log ends inside the chunk: " + present + " of " +
      std::to_string(log.size() - first.size() + 6) +
      " bytes are there; the run may still be writing, or was ended in the middle of it; "
      "its messages are all there");
}

TEST_F(KeepGoingTest, WhatIsTakenWithoutItIsTakenWithIt) {
  const std::string cut = m_first + lengthBytes(m_second.size() + 6) + m_second.substr(4);
  for (const std::string& log : {cut, m_first + "abc"}) {
    write("run.log", log);
    const ProgramResult plain = exportLog({"-o", "-"});
    EXPECT_THAT(plain, SucceedsQuietly());
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--keep-going"}, {"--keep-going", "--search"}}) {
      std::vector<std::string> all = options;
      all.insert(all.end(), {"-o", "-"});
      const ProgramResult result = exportLog(all);
      EXPECT_EQ(result.output, plain.output);
      EXPECT_EQ(result.exitStatus, log == cut ? 3 : 0);
      EXPECT_EQ(result.errors, log == cut ? notWholeLine(m_first, cut) : "");
    }
  }
}

TEST_F(KeepGoingTest, ASearchLooksIntoAChunkThatTheEndCuts) {
  write("run.log", m_first + "\xff\xff\xff\x7e" + m_second.substr(4) + m_third);
  const ProgramResult result = exportLog({"--keep-going", "--search", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, documentOf(m_first + m_third));
}

TEST_F(KeepGoingTest, WithoutItADamagedLogHasNoDocument) {
  write("run.log", m_first + brokenInside(m_second) + m_third);
  const ProgramResult result = exportLog({"-o", "out.json"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors,
              HasSubstr("); copy the log again, or go on without what is damaged with "
                        "--keep-going, or save what is whole: vyn-profile-viewer recover run.log "
                        "-o FILE\n"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(KeepGoingTest, ASearchWithoutItIsWrongUsage) {
  write("run.log", m_first);
  const ProgramResult result = exportLog({"--search", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.errors, HasSubstr("--keep-going"));
}

}  // namespace
}  // namespace vyn::test
