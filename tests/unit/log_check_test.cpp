#include "analysis/log_check.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "support/shared_log.h"

namespace vyn::profiling {
namespace {

Findings findingsOf(const std::string& log) {
  MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  LogCheck check;
  return check.finish(walkLog(source, check));
}

// Seconds of processor time for a log whose events share that name.
double timeFor(const std::string& name) {
  constexpr std::size_t kEvents = 3'000'000;
  const std::string log = test::logOfSharedPayload(kEvents, name);
  const std::clock_t start = std::clock();
  EXPECT_EQ(findingsOf(log).count(CheckCode::kNotUtf8), 0U);
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(LogCheck, ASharedNameCostsTheSameInAnyScript) {
  std::string name;
  while (name.size() < 60) {
    name += "\u00e4";
  }
  constexpr double kMostTimes = 2;
  constexpr double kStart = 0.05;  // seconds
  EXPECT_LT(timeFor(name), kMostTimes * timeFor(std::string(60, 'n')) + kStart);
}

}  // namespace
}  // namespace vyn::profiling
