// The JSON reader when logging does not start.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/start_logging.h"
#include "core/vyn_profile_log_reader_json.h"
#include "json/json_document.h"
#include "support/json_log.h"
#include "support/temp_folder.h"

namespace vyn::profiling {

bool startLogging(std::int32_t /*maxLevel*/) { return false; }

namespace {

class LoggingFailure : public testing::Test {
 protected:
  template <typename Operation>
  void expectRefusal(const Operation& operation) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(operation());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  }

  test::TempFolder m_folder;
  VynProfileLogReaderJSON m_reader{m_folder.add("run.log", test::logOf({"{header:{}}"})),
                                   VisibilityLevel{127}};
};

TEST_F(LoggingFailure, StopsTheReadBeforeTheLogIsTouched) {
  expectRefusal([&] { return m_reader.readInputFile(false); });
  EXPECT_TRUE(g_jsonDocument.Empty());
}

TEST_F(LoggingFailure, StopsTheOutputBeforeItsFileIsMade) {
  expectRefusal([&] { return m_reader.generateOutput(m_folder.path("out.json")); });
  EXPECT_FALSE(std::filesystem::exists(m_folder.path("out.json")));
  EXPECT_TRUE(g_writeSingleObject);
}

}  // namespace
}  // namespace vyn::profiling
