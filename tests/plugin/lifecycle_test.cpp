// What a reader does out of order: after its read, and after a read that failed.

#include <gtest/gtest.h>

#include "support/captured_output.h"
#include "support/json_log.h"
#include "support/loaded_plugin.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

class Lifecycle : public testing::TestWithParam<const char*> {
 protected:
  TempFolder m_folder;
  LoadedPlugin m_plugin{GetParam()};
};

const std::string kChunk =
    "{header:{netRunVersion:\"2.0.0\",backendVersion:\"1\"},"
    "messages:[{header:{},appMetrics:{},method:5},{header:{},appMetrics:{},method:5}]}";

const std::string kReadOnce = "<ms> [ ERROR ] A reader reads its log once: ";

TEST_P(Lifecycle, NoMessageIsLeftAfterTheRead) {
  const auto reader = m_plugin.reader(m_folder.add("run.log", logOf({kChunk})));
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_FALSE(reader->processNextMessage());
  EXPECT_FALSE(reader->processNextMessage());
}

TEST_P(Lifecycle, NoMessageIsLeftAfterAFailedRead) {
  const auto reader =
      m_plugin.reader(m_folder.add("run.log", logOf({kChunk}) + framed("0123456789abcdef")));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  EXPECT_FALSE(reader->processNextMessage());
}

TEST_P(Lifecycle, ASecondReadIsRefused) {
  const std::string path = m_folder.add("run.log", logOf({kChunk}));
  const auto reader = m_plugin.reader(path);
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); }),
            kReadOnce + path + "\n");
}

TEST_P(Lifecycle, AReadAfterAFailedOneIsRefusedEvenIfTheLogIsMended) {
  const std::string path = m_folder.add("run.log", logOf({kChunk}) + framed("0123456789abcdef"));
  const auto reader = m_plugin.reader(path);
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  m_folder.add("run.log", logOf({kChunk}));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); }),
            kReadOnce + path + "\n");
}

TEST_P(Lifecycle, ALogThatWasNotThereCanBeReadOnceItIs) {
  const auto reader = m_plugin.reader(m_folder.path("run.log"));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  m_folder.add("run.log", logOf({kChunk}));
  EXPECT_TRUE(reader->readInputFile(false));
}

INSTANTIATE_TEST_SUITE_P(Both, Lifecycle, testing::Values(VYN_JSON_PLUGIN, VYN_BASE_PLUGIN),
                         [](const auto& plugin) { return plugin.index == 0 ? "Json" : "Base"; });

}  // namespace
}  // namespace vyn::test
