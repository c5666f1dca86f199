// The name that a document gets when the user gives none.

#include <sys/stat.h>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr char kIsThere[] =
    "run.log.json: is there already; give another name with --output, or --force to replace it";

class DefaultOutputTest : public HostTest {
 protected:
  DefaultOutputTest() {
    for (const std::string folder : {"a", "b"}) {
      fs::create_directory(directory() / folder);
      write(folder + "/run.log", smallLog());
    }
  }

  void expectKept(const std::string& content, std::vector<std::string> arguments) const {
    EXPECT_THAT(run(std::move(arguments)), FailsWith(kIsThere));
    EXPECT_EQ(read("run.log.json"), content);
  }
};

TEST_F(DefaultOutputTest, TheDocumentOfAnotherLogIsKept) {
  ASSERT_EQ(run({"a/run.log"}).exitStatus, 0);
  const std::string first = read("run.log.json");
  EXPECT_THAT(first, HasSubstr("\"a/run.log\""));
  expectKept(first, {"b/run.log"});
}

TEST_F(DefaultOutputTest, AnOlderDocumentOfTheSameLogIsReplaced) {
  ASSERT_EQ(run({"a/run.log"}).exitStatus, 0);
  write("a/run.log", smallLog() + smallLog());
  EXPECT_EQ(run({"./a/run.log"}).exitStatus, 0);
  EXPECT_THAT(read("run.log.json"), HasSubstr("\"./a/run.log\""));
}

TEST_F(DefaultOutputTest, ADocumentNamesItsLogWhateverThePathNeedsToBeWritten) {
  const std::string folder = std::string("q\"b\\s\n\x01") + "ü" + std::string(200, '\x02');
  fs::create_directory(directory() / folder);
  write(folder + "/run.log", smallLog());
  ASSERT_EQ(run({folder + "/run.log"}).exitStatus, 0);
  EXPECT_EQ(run({folder + "/run.log"}).exitStatus, 0);
  expectKept(read("run.log.json"), {"a/run.log"});
}

TEST_F(DefaultOutputTest, ADocumentThatNamesNoLogIsKept) {
  write("a/run.log", logOfExecutions(1));
  ASSERT_EQ(run({"a/run.log"}).exitStatus, 0);
  expectKept(read("run.log.json"), {"a/run.log"});
  EXPECT_EQ(run({"a/run.log", "--force"}).exitStatus, 0);
}

TEST_F(DefaultOutputTest, WhatIsNoDocumentIsKept) {
  for (const std::string content : {"", "notes\n", "{\n    \"messages\": []\n}\n"}) {
    write("run.log.json", content);
    expectKept(content, {"a/run.log"});
  }
}

TEST_F(DefaultOutputTest, ALinkToNothingIsKept) {
  fs::create_symlink("elsewhere", directory() / "run.log.json");
  EXPECT_THAT(run({"a/run.log"}), FailsWith(kIsThere));
  EXPECT_FALSE(fs::exists(directory() / "elsewhere"));
}

// What came through the pipe is gone: another log may come next.
TEST_F(DefaultOutputTest, TheDocumentOfAPipeIsKept) {
  fs::remove(directory() / "a/run.log");
  ASSERT_EQ(mkfifo((directory() / "a/run.log").c_str(), 0600), 0);
  const std::string document =
      "{\n    \"metadata\": {\n        \"inputLogFileLocation\": \"a/run.log\"";
  write("run.log.json", document);
  expectKept(document, {"a/run.log"});
}

TEST_F(DefaultOutputTest, ForceReplaces) {
  write("run.log.json", "notes\n");
  EXPECT_EQ(run({"b/run.log", "--force"}).exitStatus, 0);
  EXPECT_THAT(read("run.log.json"), HasSubstr("\"b/run.log\""));
}

TEST_F(DefaultOutputTest, ANamedOutputIsReplaced) {
  write("run.log.json", "notes\n");
  EXPECT_THAT(run({"b/run.log", "-o", "run.log.json"}), SucceedsQuietly());
  EXPECT_THAT(read("run.log.json"), HasSubstr("\"b/run.log\""));
}

// The log is a pipe, so that the name is looked up before the other file is there.
TEST_F(DefaultOutputTest, WhatCameMeanwhileIsKept) {
  mkfifo((directory() / "pipe").c_str(), 0666);
  const ProgramResult result = runInShell(
      "\"$0\" \"$@\" & exec 3>pipe; until ls -A | grep -q '^.pipe.json'; do sleep 0.01; done; "
      "echo notes >pipe.json; cat a/run.log >&3; exec 3>&-; wait $!",
      {"pipe"});
  EXPECT_THAT(result, FailsWith(std::string("pipe") + (kIsThere + sizeof("run.log") - 1)));
  EXPECT_EQ(read("pipe.json"), "notes\n");
}

}  // namespace
}  // namespace vyn::test
