// The JSON reader when logging does not start.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/vyn_profile_log_reader_json.h"
#include "json/json_document.h"
#include "log/logger_registry.h"
#include "support/json_log.h"
#include "support/temp_folder.h"

namespace vyn::log {

// The linker turns the readers' calls of initializeLogging into calls of this; see CMakeLists.txt.
bool failingInitialization(LogCallback callback, std::int32_t maxLevel) __asm__(
    "__wrap__ZN3vyn3log17initializeLoggingEPFvPKcjmP13__va_list_tagEi");

bool failingInitialization(LogCallback /*callback*/, std::int32_t /*maxLevel*/) { return false; }

}  // namespace vyn::log

namespace vyn::profiling {
namespace {

class LoggingFailure : public testing::Test {
 protected:
  template <typename Operation>
  void expectRefusal(const Operation& operation) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(operation());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ERROR: Unable to initialize logging\n");
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
