// Which maximum level logging has after the readers' operations.

#include <gtest/gtest.h>

#include "core/vyn_profile_log_reader.h"
#include "core/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/json_log.h"
#include "support/temp_folder.h"

namespace vyn::profiling {
namespace {

using test::printedBy;

class LoggingLevel : public testing::Test {
 protected:
  void SetUp() override { log::terminateLogging(); }
  void TearDown() override { log::terminateLogging(); }

  test::TempFolder m_folder;
  std::string m_log = m_folder.add("run.log", test::logOf({"{header:{}}"}));
  VynProfileLogReaderJSON m_reader{m_log, VisibilityLevel{127}};
};

TEST_F(LoggingLevel, ReadingAsJsonStartsItForErrorsOnly) {
  EXPECT_TRUE(m_reader.readInputFile(false));
  EXPECT_EQ(log::getMaxLogLevel(), 1);
  EXPECT_EQ(log::getLogCallback(), &log::defaultLogCallback);
}

TEST_F(LoggingLevel, ReadingAsJsonReplacesAMoreTalkativeLogger) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  EXPECT_EQ(printedBy([&] { EXPECT_TRUE(m_reader.readInputFile(false)); }), "");
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(LoggingLevel, AReadThatFailsStartsItToo) {
  VynProfileLogReaderJSON reader("no such.log", VisibilityLevel{127});
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader.readInputFile(false)); }),
            "<ms> [ ERROR ] Invalid or nonexistent file: no such.log\n");
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(LoggingLevel, WritingJsonStartsItForErrorsOnly) {
  EXPECT_TRUE(m_reader.readInputFile(false));
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  m_reader.generateOutput("/dev/null");
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(LoggingLevel, AnEmptyOutputNameStartsItToo) {
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(m_reader.generateOutput("")); }),
            "<ms> [ ERROR ] Output JSON file not provided.\n");
  EXPECT_EQ(log::getMaxLogLevel(), 1);
}

TEST_F(LoggingLevel, TheSummaryReaderLeavesItAlone) {
  VynProfileLogReader reader(m_log, VisibilityLevel{127});
  printedBy([&] {
    EXPECT_TRUE(reader.readInputFile(false));
    EXPECT_TRUE(reader.generateOutput("/dev/null"));
    reader.generateOutput("");
  });
  EXPECT_FALSE(log::isLoggingInitialized());
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kInfo));
  printedBy([&] { EXPECT_TRUE(reader.generateOutput("/dev/null")); });
  EXPECT_EQ(log::getMaxLogLevel(), 3);
}

}  // namespace
}  // namespace vyn::profiling
