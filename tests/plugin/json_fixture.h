#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/captured_output.h"
#include "support/json_log.h"
#include "support/loaded_plugin.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::test {

/// A JSON plug-in that no other test has touched, and a folder for its logs and documents.
class JsonPlugin : public testing::Test {
 protected:
  /// Reads a log and expects that to succeed.
  LoadedPlugin::Reader readLog(const std::string& bytes, const std::string& name = "run.log") {
    auto reader = m_plugin.reader(m_folder.add(name, bytes));
    EXPECT_TRUE(reader->readInputFile(false));
    return reader;
  }

  /// The document of a log that is the first output of its process.
  std::string documentOf(const std::string& bytes) {
    const auto reader = readLog(bytes);
    return output(*reader);
  }

  std::string output(profiling::ProfileLogReader& reader, bool expected = true) {
    const std::string path = m_folder.path("out.json");
    EXPECT_EQ(reader.generateOutput(path), expected);
    return masked(readFile(path));
  }

  TempFolder m_folder;
  LoadedPlugin m_plugin{VYN_JSON_PLUGIN};
};

/// A log of one message with one event, given by its fields.
inline std::string logOfEvent(const std::string& fields) {
  return logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[{" + fields + "}]}]}"});
}

/// The document of such a log, given the lines of its event object.
inline std::string documentOfEvent(const std::string& lines) {
  return R"({
    "messages": [
        {
            "header": {
                "timestamp": 0,
                "sequenceNumber": 0
            },
            "method": "NONE",
            "profilingEvents": [
                {
)" + lines +
         R"(
                }
            ]
        }
    ]
}
)";
}

}  // namespace vyn::test
