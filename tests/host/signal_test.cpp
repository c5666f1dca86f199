#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

// The log is a pipe, so that the program stays in the midst of reading.
class InterruptionTest : public HostTest {
 protected:
  InterruptionTest() {
    mkfifo((directory() / "pipe").c_str(), 0666);
    write("out.json", "old");
  }

  void waitForTempFile() const {
    constexpr std::chrono::milliseconds kStep(5);
    for (int i = 0; i < 2000 && names().size() < 3; ++i) {
      std::this_thread::sleep_for(kStep);
    }
    EXPECT_THAT(names(), ElementsAre(StartsWith(".out.json."), "out.json", "pipe"));
  }
};

class FatalSignalTest : public InterruptionTest, public testing::WithParamInterface<int> {};

TEST_P(FatalSignalTest, RemovesTheTempFileAndKeepsTheOldOutput) {
  RunningProgram program(call({"pipe", "-o", "out.json"}));
  waitForTempFile();
  program.send(GetParam());
  EXPECT_EQ(program.wait().signal, GetParam());
  EXPECT_EQ(read("out.json"), "old");
  EXPECT_THAT(names(), ElementsAre("out.json", "pipe"));
}

INSTANTIATE_TEST_SUITE_P(Signals, FatalSignalTest,
                         testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGALRM, SIGVTALRM,
                                         SIGPROF, SIGUSR1, SIGUSR2, SIGXCPU, SIGIO, SIGPWR,
                                         SIGSTKFLT, SIGABRT, SIGRTMIN, SIGRTMAX),
                         [](const auto& signal) {
                           const char* name = sigabbrev_np(signal.param);
                           return name != nullptr ? std::string(name)
                                                  : "RT" + std::to_string(signal.param);
                         });

// As timeout(1) sends it, once to the program and once to its group.
TEST_F(InterruptionTest, ASignalThatComesTwiceRemovesTheTempFile) {
  for (int i = 0; i < 30; ++i) {
    RunningProgram program(call({"pipe", "-o", "out.json"}));
    waitForTempFile();
    program.send(SIGTERM);
    program.send(SIGTERM);
    EXPECT_EQ(program.wait().signal, SIGTERM);
    ASSERT_THAT(names(), ElementsAre("out.json", "pipe"));
  }
}

TEST_F(InterruptionTest, AKilledProgramLeavesTheOldOutput) {
  RunningProgram program(call({"pipe", "-o", "out.json"}));
  waitForTempFile();
  program.send(SIGKILL);
  EXPECT_EQ(program.wait().signal, SIGKILL);
  EXPECT_EQ(read("out.json"), "old");
}

TEST_F(InterruptionTest, AnIgnoredSignalStaysIgnored) {
  ProgramCall shell = call({"pipe", "-o", "out.json"});
  shell.words.insert(shell.words.begin(), {"/bin/sh", "-c", "trap '' HUP; exec \"$0\" \"$@\""});
  RunningProgram program(shell);
  waitForTempFile();
  program.send(SIGHUP);
  std::ofstream(directory() / "pipe") << smallLog();
  EXPECT_THAT(program.wait(), SucceedsQuietly());
  EXPECT_NE(read("out.json"), "old");
}

}  // namespace
}  // namespace vyn::test
