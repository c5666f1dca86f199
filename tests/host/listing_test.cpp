// Listings that several runs add to one file.

#include <list>

#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;

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

}  // namespace
}  // namespace vyn::test
