// Payloads that cannot be written whole.

#include <sys/mount.h>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kDiskSize = std::size_t{64} * 1024;  // bytes

std::string logWithPayloadOf(std::size_t size) {
  return logWith({finalize("net", {}, {object("x.bin", std::string(size, '\x01'))})});
}

class PayloadWritingTest : public HostTest {};

TEST_F(PayloadWritingTest, AFileSizeLimitIsNamed) {
  write("run.log", logWithPayloadOf(20'000));
  const ProgramResult result =
      runInShell("ulimit -f 8; exec \"$0\" \"$@\"", {"run.log", "-r", "summary", "--payloads"});
  EXPECT_THAT(result,
              FailsWith("x.bin: the output is larger than a file may be; raise the limit or "
                        "choose another place"));
}

TEST_F(PayloadWritingTest, AWholePayloadIsAllThatIsAsked) {
  write("run.log", logWithPayloadOf(20'000));
  for (const std::string name : {"x.bin", "x_1.bin"}) {
    EXPECT_THAT(run({"run.log", "-r", "summary", "--payloads"}), SucceedsQuietly());
    EXPECT_EQ(read(name), std::string(20'000, '\x01'));
  }
}

// A reader from elsewhere that says so, and a summary that only looks like it.
TEST_F(PayloadWritingTest, WhatTheReaderSaysOfItIsAFailure) {
  write("fails_a_payload", "");
  const std::vector<std::string> words = {"fails_a_payload", "-r", VYN_MISBEHAVING_READER};
  EXPECT_EQ(run(words).exitStatus, 0);
  std::vector<std::string> withPayloads = words;
  withPayloads.insert(withPayloads.end(), {"--payloads"});
  const ProgramResult result = run(withPayloads);
  EXPECT_THAT(result, FailsWith("a\\x1b.bin: the payload could not be written; look what has this "
                                "name, and check the disk"));
  EXPECT_EQ(result.output, "");
  write("shows_a_payload", "");
  withPayloads.front() = "shows_a_payload";
  EXPECT_EQ(run(withPayloads).exitStatus, 0);
}

class FullDiskPayloadTest : public PayloadWritingTest {
 protected:
  void SetUp() override {
    fs::create_directory(disk());
    const std::string options = "size=" + std::to_string(kDiskSize) + ",nr_inodes=4";
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

  fs::path disk() const { return directory() / "disk"; }

  ProgramResult runOnDisk(const std::string& output) const {
    ProgramCall onDisk = call({"../run.log", "-r", "summary", "--payloads", "-o", output});
    onDisk.directory = disk();
    return runProgram(onDisk);
  }

 private:
  bool m_isMounted = false;
};

TEST_F(FullDiskPayloadTest, ACutPayloadIsNoticedAndTheListingDoesNotGrow) {
  write("run.log", logWithPayloadOf(2 * kDiskSize));
  write("out.csv", "kept\n");
  EXPECT_THAT(runOnDisk("../out.csv"),
              FailsWith("x.bin: disk full; free some space or choose another place"));
  EXPECT_EQ(read("out.csv"), "kept\n");
}

TEST_F(FullDiskPayloadTest, AMissingPayloadIsNoticed) {
  write("run.log", logWithPayloadOf(10));
  for (const std::string name : {"disk/1", "disk/2", "disk/3"}) {
    write(name, "");
  }
  EXPECT_THAT(runOnDisk("../out.csv"),
              FailsWith("x.bin: disk full; free some space or choose another place"));
  EXPECT_FALSE(fs::exists(directory() / "out.csv"));
}

// One of the name is there, so that counting names misses nothing.
TEST_F(FullDiskPayloadTest, APayloadMissingAmongOthersOfItsNameIsNoticed) {
  write("run.log", logWith({finalize("net", {}, Events(2, object("x.bin", "\x01")))}));
  for (const std::string name : {"disk/1", "disk/2"}) {
    write(name, "");
  }
  const ProgramResult result = runOnDisk("../out.csv");
  EXPECT_THAT(result, FailsWith("x_1.bin: disk full; free some space or choose another place"));
  EXPECT_EQ(result.output, "");
  EXPECT_FALSE(fs::exists(directory() / "out.csv"));
}

}  // namespace
}  // namespace vyn::test
