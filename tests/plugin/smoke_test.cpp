#include <gtest/gtest.h>

#include "support/json_log.h"
#include "support/loaded_plugin.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::test {
namespace {

TEST(EmptyLog, BecomesADocumentWithoutMessages) {
  const TempFolder folder;
  const LoadedPlugin plugin(VYN_JSON_PLUGIN);
  const auto reader = plugin.reader(folder.add("empty.log", ""));
  ASSERT_TRUE(reader->readInputFile(false));
  ASSERT_TRUE(reader->generateOutput(folder.path("out.json")));
  EXPECT_EQ(readFile(folder.path("out.json")), "{\n    \"messages\": []\n}\n");
}

}  // namespace
}  // namespace vyn::test
