#include <sys/stat.h>

#include "host/nobody_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class OutputFileTest : public HostTest {
 protected:
  OutputFileTest() { write("run.log", smallLog()); }

  ProgramResult runTo(const std::string& output) const { return run({"run.log", "-o", output}); }

  unsigned modeOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(stat((directory() / name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }
};

TEST_F(OutputFileTest, ANewFileHasTheModeThatTheUmaskLeaves) {
  EXPECT_THAT(runInShell("umask 027; exec \"$0\" \"$@\"", {"run.log", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(modeOf("out.json"), 0640U);
}

TEST_F(OutputFileTest, AReplacedFileKeepsItsMode) {
  write("out.json", "old");
  chmod((directory() / "out.json").c_str(), 0604);
  EXPECT_THAT(runTo("out.json"), SucceedsQuietly());
  EXPECT_EQ(modeOf("out.json"), 0604U);
  EXPECT_NE(read("out.json"), "old");
}

TEST_F(OutputFileTest, ASymbolicLinkIsFollowed) {
  fs::create_directory(directory() / "elsewhere");
  write("elsewhere/real.json", "old");
  fs::create_symlink("elsewhere/real.json", directory() / "out.json");
  EXPECT_THAT(runTo("out.json"), SucceedsQuietly());
  EXPECT_TRUE(fs::is_symlink(directory() / "out.json"));
  EXPECT_NE(read("elsewhere/real.json"), "old");
  EXPECT_EQ(read("elsewhere/real.json"), read("out.json"));
}

TEST_F(OutputFileTest, ASymbolicLinkToNothingMakesTheFile) {
  fs::create_directory(directory() / "elsewhere");
  fs::create_symlink("elsewhere/link.json", directory() / "out.json");
  fs::create_symlink(directory() / "real.json", directory() / "elsewhere/link.json");
  EXPECT_THAT(runTo("out.json"), SucceedsQuietly());
  EXPECT_TRUE(fs::is_symlink(directory() / "out.json"));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(directory() / "real.json")));
}

TEST_F(OutputFileTest, ACircleOfSymbolicLinksIsRefused) {
  fs::create_symlink("out.json", directory() / "out.json");
  EXPECT_THAT(runTo("out.json"),
              FailsWith("out.json: Too many levels of symbolic links; check the file and its "
                        "place"));
  EXPECT_TRUE(fs::is_symlink(directory() / "out.json"));
}

TEST_F(OutputFileTest, ANameOfFullLengthWorks) {
  const std::string name(255, 'n');
  EXPECT_THAT(runTo(name), SucceedsQuietly());
  EXPECT_THAT(names(), ElementsAre(name, "run.log"));
}

TEST_F(OutputFileTest, ADirectoryIsRefused) {
  fs::create_directory(directory() / "out");
  EXPECT_THAT(runTo("out"), FailsWith("out: is a directory; give the name of a file"));
  EXPECT_THAT(names(), ElementsAre("out", "run.log"));
}

TEST_F(OutputFileTest, AMissingDirectoryIsRefused) {
  EXPECT_THAT(runTo("none/out.json"),
              FailsWith("none/out.json: its directory does not exist; make it or choose another"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(OutputFileTest, TheLogItselfIsRefusedUnderAnyName) {
  fs::create_symlink("run.log", directory() / "link");
  fs::create_hard_link(directory() / "run.log", directory() / "twin");
  for (const std::string name : {"run.log", "./run.log", "link", "twin"}) {
    EXPECT_THAT(runTo(name),
                FailsWith(name + ": is the log itself; give another name for the output"));
  }
  EXPECT_EQ(read("run.log"), smallLog());
}

class PermissionTest : public NobodyTest {
 protected:
  PermissionTest() { write("run.log", smallLog()); }
};

TEST_F(PermissionTest, ReadersAreFoundBesideTheProgram) {
  EXPECT_THAT(runAsNobody({"run.log", "-o", "out.json"}), SucceedsQuietly());
}

TEST_F(PermissionTest, AnUnreadableLogIsRefused) {
  setMode("run.log", 0);
  EXPECT_THAT(runAsNobody({"run.log"}),
              FailsWith("run.log: no permission; change the permissions or choose another file"));
}

TEST_F(PermissionTest, AWriteProtectedFileIsKept) {
  write("out.json", "old");
  setMode("out.json", 0444);
  EXPECT_THAT(runAsNobody({"run.log", "-o", "out.json"}),
              FailsWith("out.json: no permission; change the permissions or choose another file"));
  EXPECT_EQ(read("out.json"), "old");
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(PermissionTest, AFileOfAnotherInOnesOwnStickyDirectoryIsReplaced) {
  fs::create_directory(directory() / "out");
  setMode("out", 01777);
  write("out/x.json", "old");
  fs::permissions(directory() / "out/x.json", fs::perms(0666));
  EXPECT_THAT(runAsNobody({"run.log", "-o", "out/x.json"}), SucceedsQuietly());
  EXPECT_NE(read("out/x.json"), "old");
}

TEST_F(PermissionTest, AWriteProtectedDirectoryIsRefused) {
  fs::create_directory(directory() / "out");
  setMode("out", 0555);
  EXPECT_THAT(
      runAsNobody({"run.log", "-o", "out/x.json"}),
      FailsWith("out/x.json: no permission; change the permissions or choose another file"));
}

}  // namespace
}  // namespace vyn::test
