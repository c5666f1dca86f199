#include "log/logger.h"

#include <gtest/gtest.h>

#include <chrono>
#include <clocale>
#include <ctime>
#include <stdexcept>
#include <vector>

#include "log/logger_registry.h"
#include "log/platform_utilities.h"
#include "support/captured_output.h"
#include "support/foreign_locale.h"

namespace vyn::log {
namespace {

using test::printedBy;

struct Received {
  std::string format;
  std::uint32_t level;
  std::uint64_t elapsedNs;
};

std::vector<Received> g_received;

void receive(const char* format, std::uint32_t level, std::uint64_t elapsedNs,
             std::va_list /*arguments*/) {
  g_received.push_back({format, level, elapsedNs});
}

[[gnu::format(printf, 3, 4)]] void callDefault(std::uint32_t level, std::uint64_t elapsedNs,
                                               const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  defaultLogCallback(format, level, elapsedNs, arguments);
  va_end(arguments);
}

std::string rawPrintedBy(std::uint32_t level, std::uint64_t elapsedNs, const char* text) {
  std::fflush(stdout);
  testing::internal::CaptureStdout();
  callDefault(level, elapsedNs, "%s", text);
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

TEST(DefaultLogCallback, WritesTimeLabelAndMessage) {
  EXPECT_EQ(rawPrintedBy(1, 12340000, "Unknown method type."),
            "    12.3ms [ ERROR ] Unknown method type.\n");
}

TEST(DefaultLogCallback, HasALabelForEachLevel) {
  EXPECT_EQ(rawPrintedBy(1, 0, "x"), "     0.0ms [ ERROR ] x\n");
  EXPECT_EQ(rawPrintedBy(2, 0, "x"), "     0.0ms [WARNING] x\n");
  EXPECT_EQ(rawPrintedBy(3, 0, "x"), "     0.0ms [  INFO ] x\n");
  EXPECT_EQ(rawPrintedBy(4, 0, "x"), "     0.0ms [VERBOSE] x\n");
  EXPECT_EQ(rawPrintedBy(5, 0, "x"), "     0.0ms [ DEBUG ] x\n");
  EXPECT_EQ(rawPrintedBy(2147483647, 0, "x"), "     0.0ms [UNKNOWN] x\n");
  EXPECT_EQ(rawPrintedBy(6, 0, "x"), "     0.0ms [       ] x\n");
  EXPECT_EQ(rawPrintedBy(0, 0, "x"), "     0.0ms [       ] x\n");
}

TEST(DefaultLogCallback, CutsLongLinesAt1023Characters) {
  const std::string text(3000, 'y');
  const std::string prefix = "     0.0ms [ ERROR ] ";
  EXPECT_EQ(rawPrintedBy(1, 0, text.c_str()),
            prefix + std::string(1023 - prefix.size(), 'y') + "\n");
}

TEST(DefaultLogCallback, LongestTimeStillFits) {
  EXPECT_EQ(rawPrintedBy(1, ~std::uint64_t{0}, "x"), "18446744073709.6ms [ ERROR ] x\n");
}

TEST(DefaultLogCallback, WritesAPointWhateverTheLocale) {
  const test::GermanLocale german;
  EXPECT_EQ(rawPrintedBy(1, 12340000, "x"), "    12.3ms [ ERROR ] x\n");
  EXPECT_STREQ(std::localeconv()->decimal_point, ",");  // the host's own locale is back
}

class LoggerLevels : public testing::Test {
 protected:
  void SetUp() override { g_received.clear(); }
};

TEST_F(LoggerLevels, StatusTellsWhetherTheLevelIsValid) {
  for (const int level : {1, 2, 3, 4, 5}) {
    std::uint64_t status = 7;
    const Logger logger(receive, level, &status);
    EXPECT_EQ(status, 0U) << level;
  }
  for (const int level : {-1, 0, 6, 2147483647}) {
    std::uint64_t status = 7;
    const Logger logger(receive, level, &status);
    EXPECT_EQ(status, 11003U) << level;
    EXPECT_EQ(logger.maxLevel(), level);  // stored all the same
  }
}

TEST_F(LoggerLevels, NullCallbackStandsForTheDefaultOne) {
  const Logger logger(nullptr, 1);
  EXPECT_EQ(logger.callback(), &defaultLogCallback);
}

TEST_F(LoggerLevels, MessagesAboveTheMaximumAreDropped) {
  Logger logger(receive, 3);
  logger.log(4, "", 0, "dropped");
  logger.log(3, "", 0, "kept");
  logger.log(4294967295U, "", 0, "dropped too");
  ASSERT_EQ(g_received.size(), 1U);
  EXPECT_EQ(g_received[0].format, "kept");
  EXPECT_EQ(g_received[0].level, 3U);
}

TEST_F(LoggerLevels, SetMaxLevelKeepsTheOldOneWhenOutOfRange) {
  Logger logger(receive, 2);
  EXPECT_FALSE(logger.setMaxLevel(0));
  EXPECT_FALSE(logger.setMaxLevel(6));
  EXPECT_EQ(logger.maxLevel(), 2);
  EXPECT_TRUE(logger.setMaxLevel(5));
  EXPECT_EQ(logger.maxLevel(), 5);
}

void logWithList(Logger& logger, std::uint32_t level, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  logger.logV(level, "", 0, format, arguments);
  logger.logV(level, format, arguments);
  va_end(arguments);
}

TEST_F(LoggerLevels, CallersWithAListHaveTestedTheLevelThemselves) {
  Logger logger(receive, 1);
  logWithList(logger, 5, "text");
  EXPECT_EQ(g_received.size(), 2U);
}

TEST_F(LoggerLevels, NullFormatThrows) {
  Logger logger(receive, 1);
  const char* none = nullptr;
  try {
    logWithList(logger, 1, none);
    FAIL();
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "basic_string::_M_construct null not valid");
  }
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"
  EXPECT_THROW(logger.log(1, "", 0, none), std::logic_error);
  EXPECT_NO_THROW(logger.log(2, "", 0, none));  // the level is tested first
#pragma GCC diagnostic pop
}

class Logging : public testing::Test {
 protected:
  void SetUp() override {
    g_received.clear();
    g_loggerRegistry.loggers.clear();
    g_currentLogger = 0;
  }
  void TearDown() override { SetUp(); }
};

TEST_F(Logging, BeforeInitialisationIsOff) {
  EXPECT_EQ(getMaxLogLevel(), 2147483647);
  EXPECT_EQ(getLogCallback(), nullptr);
  EXPECT_FALSE(isLoggingInitialized());
  EXPECT_FALSE(setMaxLogLevel(3));
  EXPECT_EQ(printedBy([] { log(kError, "nobody hears this"); }), "");
}

TEST_F(Logging, AtLevelOnePrintsErrorsOnly) {
  ASSERT_TRUE(initializeLogging(nullptr, kError));
  EXPECT_EQ(printedBy([] {
              log(kDebug, "detail");
              log(kError, "failure %d", 7);
            }),
            "<ms> [ ERROR ] failure 7\n");
}

TEST_F(Logging, LevelCanBeChanged) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  EXPECT_FALSE(setMaxLogLevel(0));
  EXPECT_FALSE(setMaxLogLevel(6));
  EXPECT_EQ(getMaxLogLevel(), 1);
  EXPECT_TRUE(setMaxLogLevel(5));
  EXPECT_EQ(getMaxLogLevel(), 5);
  EXPECT_EQ(getLogCallback(), &receive);
}

TEST_F(Logging, LevelOutOfRangeLeavesItOff) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  EXPECT_FALSE(initializeLogging(nullptr, 6));
  EXPECT_FALSE(isLoggingInitialized());
  EXPECT_EQ(g_currentLogger, 0U);
  EXPECT_TRUE(g_loggerRegistry.loggers.empty());
}

TEST_F(Logging, SecondInitialisationReplacesTheLoggerAndRestartsItsClock) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  sleepMilliseconds(30);
  log(kError, "late");
  ASSERT_TRUE(initializeLogging(receive, kError));
  log(kError, "early");
  ASSERT_EQ(g_received.size(), 2U);
  EXPECT_GE(g_received[0].elapsedNs, 30000000U);
  EXPECT_LT(g_received[1].elapsedNs, g_received[0].elapsedNs);
  EXPECT_EQ(g_loggerRegistry.loggers.size(), 1U);
}

TEST_F(Logging, LoggerThatSomebodyHoldsOutlivesItsReplacement) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  const std::uint64_t handle = g_currentLogger;
  const auto held = getLogger(handle);
  ASSERT_TRUE(initializeLogging(receive, kWarning));
  EXPECT_EQ(getLogger(handle), nullptr);
  held->log(1, "", 0, "still here");
  EXPECT_EQ(g_received.size(), 1U);
}

TEST_F(Logging, TerminationTurnsItOffButKeepsTheHandle) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  const std::uint64_t handle = g_currentLogger;
  terminateLogging();
  EXPECT_EQ(g_currentLogger, handle);
  EXPECT_FALSE(isLoggingInitialized());
  EXPECT_EQ(getMaxLogLevel(), 2147483647);
  EXPECT_TRUE(initializeLogging(receive, kError));
  EXPECT_TRUE(isLoggingInitialized());
}

TEST_F(Logging, HandlesAreOpaque) {
  ASSERT_TRUE(initializeLogging(receive, kError));
  EXPECT_NE(g_currentLogger, 0U);
  EXPECT_NE(g_currentLogger, reinterpret_cast<std::uintptr_t>(getLogger(g_currentLogger).get()));
}

TEST(PlatformUtilities, TimeOfDayIsTheSystemClocks) {
  TimeOfDay now{};
  ASSERT_EQ(getTimeOfDay(&now), 0);
  EXPECT_NEAR(static_cast<double>(now.seconds), static_cast<double>(std::time(nullptr)), 2.0);
  EXPECT_LT(now.microseconds, 1000000);
  EXPECT_EQ(sizeof(TimeOfDay), 16U);
  EXPECT_EQ(getTimeOfDay(nullptr), -1);
}

TEST(PlatformUtilities, SleepTakesMillisecondsBelowAndAboveASecond) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(sleepMilliseconds(20), 0);
  EXPECT_EQ(sleepMilliseconds(1010), 0);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1030));
}

}  // namespace
}  // namespace vyn::log
