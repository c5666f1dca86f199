// What the platform's utilities ask of the system.

#include "log/platform_utilities.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/time.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> g_calls;
timeval g_now{};
int g_clockResult = 0;

}  // namespace

// The linker turns the utilities' calls into calls of these; see CMakeLists.txt.
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): the linker's names
int __wrap_gettimeofday(timeval* now, void* zone) {
  g_calls.emplace_back(zone == nullptr ? "gettimeofday" : "gettimeofday with a zone");
  *now = g_now;
  return g_clockResult;
}

unsigned __wrap_sleep(unsigned seconds) {
  g_calls.push_back("sleep " + std::to_string(seconds));
  return 0;
}

int __wrap_usleep(unsigned microseconds) {
  g_calls.push_back("usleep " + std::to_string(microseconds));
  return 0;
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

}  // extern "C"

namespace vyn::log {
namespace {

using testing::ElementsAre;

class PlatformUtilitiesCalls : public testing::Test {
 protected:
  void SetUp() override {
    g_calls.clear();
    g_clockResult = 0;
  }

  static std::vector<std::string> callsOfSleeping(std::uint32_t milliseconds) {
    g_calls.clear();
    EXPECT_EQ(sleepMilliseconds(milliseconds), 0);
    return g_calls;
  }
};

TEST_F(PlatformUtilitiesCalls, TimeOfDayIsTheSystemsSecondsAndMicroseconds) {
  g_now = {1700000000, 654321};
  TimeOfDay now{1, 2};
  EXPECT_EQ(getTimeOfDay(&now), 0);
  EXPECT_EQ(now.seconds, 1700000000);
  EXPECT_EQ(now.microseconds, 654321);
  EXPECT_THAT(g_calls, ElementsAre("gettimeofday"));
}

TEST_F(PlatformUtilitiesCalls, TimeOfDayIsLeftAloneWhenTheSystemHasNone) {
  g_now = {1700000000, 654321};
  g_clockResult = -1;
  TimeOfDay now{1, 2};
  EXPECT_EQ(getTimeOfDay(&now), -1);
  EXPECT_EQ(now.seconds, 1);
  EXPECT_EQ(now.microseconds, 2);
  EXPECT_EQ(getTimeOfDay(nullptr), -1);
}

TEST_F(PlatformUtilitiesCalls, LessThanASecondIsSleptInMicroseconds) {
  EXPECT_THAT(callsOfSleeping(0), ElementsAre("usleep 0"));
  EXPECT_THAT(callsOfSleeping(1), ElementsAre("usleep 1000"));
  EXPECT_THAT(callsOfSleeping(999), ElementsAre("usleep 999000"));
}

TEST_F(PlatformUtilitiesCalls, WholeSecondsAreSleptFirst) {
  EXPECT_THAT(callsOfSleeping(1000), ElementsAre("sleep 1", "usleep 0"));
  EXPECT_THAT(callsOfSleeping(1001), ElementsAre("sleep 1", "usleep 1000"));
  EXPECT_THAT(callsOfSleeping(2500), ElementsAre("sleep 2", "usleep 500000"));
  EXPECT_THAT(callsOfSleeping(4294967295), ElementsAre("sleep 4294967", "usleep 295000"));
}

}  // namespace
}  // namespace vyn::log
