// Logs that name the same bytes over and over: what the summary reader takes of time and memory.

#include <sys/resource.h>

#include "host/host_fixture.h"
#include "support/shared_log.h"
#include "vyn/profiling/event_node.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

class SharedBytesTest : public HostTest {
 protected:
  // Seconds of the program's processor time for a log, with the system's on its behalf.
  double timeFor(const std::string& log, std::vector<std::string> options = {}) {
    write("run.log", log);
    options.insert(options.begin(), {"run.log", "-r", "summary"});
    const double before = childTime();
    EXPECT_THAT(run(std::move(options)), SucceedsQuietly());
    return childTime() - before;
  }

  // Four times the log may take four times the time; a growth by its square takes sixteen times.
  void expectLinear(double time, double timeOfFourTimesAsMuch) {
#ifdef __SANITIZE_ADDRESS__
    constexpr double kMostTimes = 12;  // what the system does for the sanitizers varies
#else
    constexpr double kMostTimes = 8;  // room for a busy machine
#endif
    constexpr double kStart = 0.3;  // seconds
    EXPECT_LT(timeOfFourTimesAsMuch, kMostTimes * time + kStart);
  }

 private:
  static double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  }

  static double childTime() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
  }
};

TEST_F(SharedBytesTest, TimeGrowsWithALogOfOneLongGraphName) {
  expectLinear(timeFor(logOfSharedGraphName(8'000, 250'000)),
               timeFor(logOfSharedGraphName(32'000, 1'000'000)));
}

TEST_F(SharedBytesTest, TimeGrowsWithALogOfOverlappingGraphNames) {
  expectLinear(timeFor(logOfOverlappingGraphNames(1'000)),
               timeFor(logOfOverlappingGraphNames(4'000)));
}

TEST_F(SharedBytesTest, TimeGrowsWithTheCopiesOfALongIdentifier) {
  expectLinear(timeFor(logOfSharedEvent(2'000, 4'000), {"-o", "once.csv"}),
               timeFor(logOfSharedEvent(8'000, 4'000), {"-o", "four_times.csv"}));
}

class SummaryMemoryTest : public HostTest {
 protected:
  void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the address sanitizer needs more address space than the tests allow";
#endif
    HostTest::SetUp();
  }

  // The size in bytes of a log's summary, which needs no room on a disk, when the program has this
  // much address space beside what it always needs.
  ProgramResult summaryWithin(std::size_t bytes, const std::string& log,
                              std::vector<std::string> options = {}) {
    constexpr std::size_t kProgramItself = std::size_t{32} * 1024 * 1024;  // bytes
    write("run.log", log);
    options.insert(options.begin(), {"run.log", "-r", "summary"});
    const std::string limit = std::to_string((bytes + kProgramItself) / 1024);
    return runInShell("ulimit -v " + limit + "; { \"$0\" \"$@\" || echo failed >&2; } | wc -c",
                      std::move(options));
  }
};

constexpr std::size_t kNode = sizeof(profiling::EventNode);  // bytes
// A copy more must not fit into the room for the program itself.
constexpr std::size_t kCount = 8'000;
constexpr std::size_t kLength = 16'000;
constexpr std::size_t kCopies = kCount * kLength;  // bytes

// The model, the copy that is listed, and the text of three blocks.
TEST_F(SummaryMemoryTest, TextOfSharedIdentifiersIsHeldOnce) {
  constexpr std::size_t kFew = kCount / 4;
  const ProgramResult result =
      summaryWithin(kFew * kLength * 52 / 10, logOfSharedEvent(kFew, kLength));
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_GT(std::stoul(result.output), kFew * kLength * 3);
}

// The three below have hardly any text: what they take is the model and one copy at a time.
TEST_F(SummaryMemoryTest, SharedIdentifiersAreCopiedTwice) {
  EXPECT_THAT(summaryWithin(kCopies * 22 / 10, logOfUnlistedEvent(kCount, kLength)),
              SucceedsQuietly());
}

TEST_F(SummaryMemoryTest, NestedEventsAreCopiedTwice) {
  constexpr std::size_t kDepth = 18;
  EXPECT_THAT(summaryWithin(kNode * (2U << kDepth) * 23 / 10, logOfSharedTree(kDepth)),
              SucceedsQuietly());
}

// Averaging keeps an index of the identifiers, but not beside the averages.
TEST_F(SummaryMemoryTest, AveragedEventsAreCopiedTwice) {
  constexpr std::size_t kEvents = 600'000;
  EXPECT_THAT(summaryWithin(kNode * kEvents * 25 / 10, logOfOneMoreSmallExecution(kEvents)),
              SucceedsQuietly());
}

// In its group and its three figures; then the text of three blocks.
TEST_F(SummaryMemoryTest, GraphNamesAreHeldFourTimesAndPrintedThreeTimes) {
  constexpr std::size_t kNames = 5'000;
  constexpr std::size_t kBytes = kNames * 300 + 4 * kNames * (kNames - 1) / 2;
  EXPECT_THAT(summaryWithin(kBytes * 72 / 10, logOfDifferentOverlappingGraphNames(kNames)),
              SucceedsQuietly());
}

TEST_F(SummaryMemoryTest, NamesOfFinalizeStepsAreHeldAndPrintedOnce) {
  EXPECT_THAT(summaryWithin(kCopies * 22 / 10, logOfSharedFinalizeName(kCount, kLength)),
              SucceedsQuietly());
}

TEST_F(SummaryMemoryTest, SharedPayloadBytesAreNotCopiedToBeListed) {
  const std::string log = logOfSharedPayload(kCount, kLength);
  EXPECT_THAT(summaryWithin(kCopies * 12 / 10, log), SucceedsQuietly());
  EXPECT_THAT(summaryWithin(kCopies * 12 / 10, log, {"-o", "listing.csv"}), SucceedsQuietly());
}

// What a text's value word holds is an address, which differs from run to run.
TEST_F(SharedBytesTest, TwoRunsGiveTheSameBytes) {
  const Message execution = execute("net", {}, {text("t", "some text")});
  write("run.log", logWith({execution, execution}));
  const ProgramResult first = run({"run.log", "-r", "summary", "-o", "first.csv"});
  const ProgramResult second = run({"run.log", "-r", "summary", "-o", "second.csv"});
  EXPECT_THAT(first.output, HasSubstr("    Backend (t): 0 us\n"));
  EXPECT_EQ(first.output, second.output);
  EXPECT_EQ(read("first.csv"), read("second.csv"));
}

}  // namespace
}  // namespace vyn::test
