// How the readers start logging, and what they say when it does not start.

#include "core/start_logging.h"

#include <gtest/gtest.h>

#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

class StartLogging : public testing::Test {
 protected:
  void TearDown() override { log::terminateLogging(); }
};

TEST_F(StartLogging, LetsErrorsThroughOnly) {
  testing::internal::CaptureStderr();
  EXPECT_TRUE(startLogging());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(StartLogging, StartsAfresh) {
  ASSERT_TRUE(log::initializeLogging(nullptr, 5));
  EXPECT_TRUE(startLogging());
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(StartLogging, SaysOnStandardErrorThatItFailed) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(startLogging(0));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "ERROR: Unable to initialize logging\n");
  EXPECT_FALSE(log::isLoggingInitialized());
}

}  // namespace
}  // namespace vyn::profiling
