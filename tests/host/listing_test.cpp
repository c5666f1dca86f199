// Listings that several runs add to one file.

#include <sys/file.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <list>
#include <memory>
#include <thread>

#include "host/nobody_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr int kRuns = 8;
constexpr int kRounds = 5;

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

class ConcurrentListingTest : public HostTest {
 protected:
  // Every run's listing is there, whole, and what was there before.
  void expectAllListings(const std::string& before) const {
    std::filesystem::remove(directory() / "single.csv");
    ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "single.csv"}), SucceedsQuietly());
    std::string expected = before;
    for (int i = 0; i < kRuns; ++i) {
      expected += read("single.csv");
    }
    const std::string listing = read("out.csv");
    EXPECT_EQ(occurrences(listing, "input log file location"), std::size_t{kRuns});
    EXPECT_TRUE(listing == expected);
    EXPECT_THAT(names(), ElementsAre("out.csv", "run.log", "single.csv"));
  }

  void runAllAtOnce() const {
    std::list<RunningProgram> programs;
    for (int i = 0; i < kRuns; ++i) {
      programs.emplace_back(call({"run.log", "-r", "summary", "-o", "out.csv"}));
    }
    for (RunningProgram& program : programs) {
      EXPECT_THAT(program.wait(), SucceedsQuietly());
    }
  }
};

TEST_F(ConcurrentListingTest, AreAllKept) {
  write("run.log", logWithDocumentOver(1 << 16));
  for (int i = 0; i < kRounds; ++i) {
    write("out.csv", "kept\n");
    runAllAtOnce();
    expectAllListings("kept\n");
  }
}

TEST_F(ConcurrentListingTest, AreAllKeptInANewFile) {
  write("run.log", logWithDocumentOver(1 << 16));
  for (int i = 0; i < kRounds; ++i) {
    std::filesystem::remove(directory() / "out.csv");
    runAllAtOnce();
    expectAllListings("");
  }
}

TEST_F(ConcurrentListingTest, AreAllKeptBesideThoseOfAShell) {
  write("run.log", logWithDocumentOver(1 << 16));
  for (int i = 0; i < kRounds; ++i) {
    write("out.csv", "kept\n");
    std::list<RunningProgram> programs;
    for (int j = 0; j < kRuns / 2; ++j) {
      programs.emplace_back(call({"run.log", "-r", "summary", "-o", "out.csv"}));
      ProgramCall shell = call({"run.log", "-r", "summary", "-o", "/dev/fd/3"});
      shell.words.insert(shell.words.begin(), {"/bin/sh", "-c", "exec \"$0\" \"$@\" 3>>out.csv"});
      programs.emplace_back(shell);
    }
    for (RunningProgram& program : programs) {
      EXPECT_THAT(program.wait(), SucceedsQuietly());
    }
    expectAllListings("kept\n");
  }
}

class ListingFileTest : public NobodyTest {
 protected:
  ListingFileTest() {
    write("run.log", smallLog());
    EXPECT_THAT(runTo("one.csv"), SucceedsQuietly());
    m_listing = read("one.csv");
    fs::remove(directory() / "one.csv");
  }

  static std::vector<std::string> wordsTo(const std::string& output) {
    return {"run.log", "-r", "summary", "-o", output};
  }
  ProgramResult runTo(const std::string& output) const { return run(wordsTo(output)); }
  const std::string& listing() const { return m_listing; }

 private:
  std::string m_listing;
};

TEST_F(ListingFileTest, StaysWhatOthersHaveOpenOrKnowByAnotherName) {
  write("out.csv", "kept\n");
  fs::create_hard_link(directory() / "out.csv", directory() / "twin.csv");
  std::ofstream open(directory() / "out.csv", std::ios::app);
  ASSERT_THAT(runTo("out.csv"), SucceedsQuietly());
  open << "mark\n" << std::flush;
  EXPECT_EQ(read("out.csv"), "kept\n" + listing() + "mark\n");
  EXPECT_EQ(read("twin.csv"), read("out.csv"));
}

TEST_F(ListingFileTest, BeginsOnALineOfItsOwn) {
  write("out.csv", "kept");
  ASSERT_THAT(runTo("out.csv"), SucceedsQuietly());
  EXPECT_EQ(read("out.csv"), "kept\n" + listing());
}

TEST_F(ListingFileTest, MayBeOneThatMayOnlyBeAddedTo) {
  write("out.csv", "kept\n");
  ProgramCall mark{.words = {"chattr", "+a", "out.csv"}, .directory = directory()};
  if (runProgram(mark).exitStatus != 0) {
    GTEST_SKIP() << "marking a file needs root and a file system with such marks";
  }
  EXPECT_THAT(runTo("out.csv"), SucceedsQuietly());
  mark.words[1] = "-a";
  runProgram(mark);
  EXPECT_EQ(read("out.csv"), "kept\n" + listing());
}

TEST_F(ListingFileTest, MayBeInADirectoryThatMayNotBeWrittenOrRead) {
  setMode("run.log", 0600);
  fs::create_directory(directory() / "sub");
  setMode("scratch", 0700);
  for (const mode_t mode : {0333U, 0555U}) {
    write("sub/out.csv", "kept\n");
    setMode("sub/out.csv", 0600);
    setMode("sub", mode);
    EXPECT_THAT(runAsNobody(wordsTo("sub/out.csv")), SucceedsQuietly()) << std::oct << mode;
    EXPECT_EQ(read("sub/out.csv"), "kept\n" + listing());
    setMode("sub", 0777);
  }
  EXPECT_THAT(names(), ElementsAre("run.log", "sub"));
}

// What a stranger's program has locked.
class LockedListingTest : public ListingFileTest {
 protected:
  void lock(const std::string& name) {
    m_locked.reset(std::fopen((directory() / name).c_str(), "re"));
    ASSERT_EQ(flock(fileno(m_locked.get()), LOCK_EX), 0);
  }
  void unlock() { m_locked.reset(); }

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_locked{nullptr, std::fclose};
};

TEST_F(LockedListingTest, ALockOfTheDirectoryDoesNotMatter) {
  lock(".");
  EXPECT_THAT(runTo("out.csv"), SucceedsQuietly());
}

TEST_F(LockedListingTest, ThatItWaitsIsSaid) {
  write("out.csv", "kept\n");
  lock("out.csv");
  RunningProgram program(call(wordsTo("out.csv")));
  std::this_thread::sleep_for(std::chrono::seconds(4));
  EXPECT_EQ(read("out.csv"), "kept\n");
  unlock();
  const ProgramResult result = program.wait();
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, ownLine("out.csv: waits for another program that has it locked"));
  EXPECT_EQ(read("out.csv"), "kept\n" + listing());
}

TEST_F(LockedListingTest, ItIsNotWaitedForWithoutEnd) {
  write("out.csv", "kept\n");
  lock("out.csv");
  const ProgramResult result = runTo("out.csv");
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors,
              HasSubstr("out.csv: another program keeps it locked; end that or give another"));
  EXPECT_EQ(read("out.csv"), "kept\n");
}

TEST_F(LockedListingTest, AFileThatTookItsPlaceMeanwhileIsAddedTo) {
  write("out.csv", "old\n");
  lock("out.csv");
  RunningProgram program(call(wordsTo("out.csv")));
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  write("new.csv", "new\n");
  fs::create_hard_link(directory() / "out.csv", directory() / "old.csv");
  fs::rename(directory() / "new.csv", directory() / "out.csv");
  EXPECT_THAT(program.wait(), SucceedsQuietly());
  EXPECT_EQ(read("out.csv"), "new\n" + listing());
  EXPECT_EQ(read("old.csv"), "old\n");
}

TEST_F(LockedListingTest, ASignalEndsTheWait) {
  write("out.csv", "kept\n");
  lock("out.csv");
  RunningProgram program(call(wordsTo("out.csv")));
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  program.send(SIGTERM);
  EXPECT_EQ(program.wait().signal, SIGTERM);
  EXPECT_THAT(names(), ElementsAre("out.csv", "run.log"));
}

}  // namespace
}  // namespace vyn::test
