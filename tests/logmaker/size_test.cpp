#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

struct Size {
  std::string option;
  double bytes;

  // Names the case in the test's report.
  friend std::ostream& operator<<(std::ostream& out, const Size& size) {
    return out << size.option;
  }
};

class LogSize : public testing::TestWithParam<Size> {};

TEST_P(LogSize, IsReachedWithinATenth) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o log " + GetParam().option);
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  const auto size = static_cast<double>(std::filesystem::file_size(folder.path("log")));
  EXPECT_NEAR(size, GetParam().bytes, GetParam().bytes / 10);
}

INSTANTIATE_TEST_SUITE_P(Units, LogSize,
                         testing::Values(Size{"--size 300KB", 300e3}, Size{"--size 2MB", 2e6},
                                         Size{"--size 20MB", 20e6}, Size{"--size 2MiB", 2097152},
                                         Size{"--size 1500000", 1.5e6}));
INSTANTIATE_TEST_SUITE_P(Kinds, LogSize,
                         testing::Values(Size{"--size 5MB --graphs 4 --async", 5e6},
                                         Size{"--size 5MB --nodes 2", 5e6},
                                         Size{"--size 5MB --chunk-size 1MB", 5e6}));

TEST(LogSize, TooSmallStillExecutesEachGraphOnce) {
  const MadeLog log = MadeLog::withOptions("--size 1KB --graphs 3");
  EXPECT_EQ(log.messagesOf(schema::MethodType::BACKEND_EXECUTE).size(), 3U);
}

}  // namespace
}  // namespace vyn::logmaker::test
