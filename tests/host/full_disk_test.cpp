#include <sys/mount.h>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;

constexpr std::size_t kDiskSize = std::size_t{64} * 1024;  // bytes
constexpr char kDiskFull[] = ": disk full; free some space or choose another place";

class FullDiskTest : public HostTest {
 protected:
  void SetUp() override {
    write("run.log", logWithDocumentOver(4 * kDiskSize));
    std::filesystem::create_directory(disk());
    const std::string options = "size=" + std::to_string(kDiskSize);
    m_isMounted = mount("tmpfs", disk().c_str(), "tmpfs", 0, options.c_str()) == 0;
    if (!m_isMounted) {
      GTEST_SKIP() << "mounting a small disk needs root";
    }
  }

  void TearDown() override {
    if (m_isMounted) {
      umount(disk().c_str());
    }
  }

  std::filesystem::path disk() const { return directory() / "disk"; }

  // Only the old output is there, untouched, and no more of the disk is used than by it.
  void expectOnlyOldOutput(const std::string& name) const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(disk())) {
      found.push_back(entry.path().filename());
    }
    EXPECT_THAT(found, ElementsAre(name));
    EXPECT_EQ(read("disk/" + name), "old\n");
  }

 private:
  bool m_isMounted = false;
};

TEST_F(FullDiskTest, AShortJsonDocumentIsNoticed) {
  write("disk/out.json", "old\n");
  EXPECT_THAT(run({"run.log", "-o", "disk/out.json"}),
              FailsWith(std::string("disk/out.json") + kDiskFull));
  expectOnlyOldOutput("out.json");
}

TEST_F(FullDiskTest, AShortListingIsNoticed) {
  write("disk/out.csv", "old\n");
  EXPECT_THAT(run({"run.log", "-r", "summary", "-o", "disk/out.csv"}),
              FailsWith(std::string("disk/out.csv") + kDiskFull));
  expectOnlyOldOutput("out.csv");
}

TEST_F(FullDiskTest, AFileTooLargeToCopyForAddingIsNoticed) {
  const std::string old(kDiskSize * 3 / 4, '\n');
  write("disk/out.csv", old);
  EXPECT_THAT(run({"run.log", "-r", "summary", "-o", "disk/out.csv"}),
              FailsWith(std::string("disk/out.csv") + kDiskFull));
  EXPECT_TRUE(read("disk/out.csv") == old);
}

TEST_F(FullDiskTest, AFullScratchDirectoryIsNamed) {
  ProgramCall toStandardOutput = call({"run.log", "-o", "-"});
  toStandardOutput.environment = {"TMPDIR=" + disk().string()};
  const ProgramResult result = runProgram(toStandardOutput);
  EXPECT_THAT(result, FailsWith(disk().string() + kDiskFull));
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(std::filesystem::is_empty(disk()));
}

TEST_F(FullDiskTest, AScratchDirectoryWithoutRoomForTheSummaryIsNamed) {
  write("disk/all", std::string(kDiskSize, 'x'));
  ProgramCall summary = call({"run.log", "-r", "summary"});
  summary.environment = {"TMPDIR=" + disk().string()};
  const ProgramResult result = runProgram(summary);
  EXPECT_THAT(result, FailsWith(disk().string() + kDiskFull));
  EXPECT_EQ(result.output, "");
}

TEST_F(FullDiskTest, ADocumentThatFitsIsWritten) {
  write("small.log", smallLog());
  EXPECT_THAT(run({"small.log", "-o", "disk/out.json"}), SucceedsQuietly());
}

class FileSizeLimitTest : public HostTest {};

TEST_F(FileSizeLimitTest, IsNamedAndLeavesNothing) {
  write("run.log", logWithDocumentOver(kDiskSize));
  for (const char* reader : {"json", "summary"}) {
    EXPECT_THAT(
        runInShell("ulimit -f 8; exec \"$0\" \"$@\"", {"run.log", "-r", reader, "-o", "out"}),
        FailsWith("out: the output is larger than a file may be; raise the limit or choose "
                  "another place"));
    EXPECT_THAT(names(), ElementsAre("run.log"));
  }
}

TEST_F(FullDiskTest, ARecoveredLogIsNotCutShort) {
  write("disk/out", "old\n");
  for (const std::string log : {"run.log", "small.log"}) {
    std::string chunks;
    while (chunks.size() < 2 * kDiskSize) {
      chunks += smallLog();
    }
    write("small.log", chunks);
    EXPECT_THAT(run({"recover", log, "-o", "disk/out"}),
                FailsWith(std::string("disk/out") + kDiskFull));
    expectOnlyOldOutput("out");
  }
}

TEST_F(FullDiskTest, APipeThatIsSearchedNeedsRoomForItsCopy) {
  ProgramCall program = call({"recover", "-", "-o", "out", "--search"});
  program.words.insert(program.words.begin(),
                       {"/bin/sh", "-c", "cat run.log run.log | \"$0\" \"$@\""});
  program.environment = {"TMPDIR=" + disk().string()};
  EXPECT_THAT(runProgram(program), FailsWith(disk().string() + kDiskFull));
  EXPECT_TRUE(std::filesystem::is_empty(disk()));
}

}  // namespace
}  // namespace vyn::test
