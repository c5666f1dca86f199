#pragma once

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/captured_output.h"
#include "support/loaded_plugin.h"
#include "support/log_message.h"
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

/// A log of one message, which has nothing but this event.
inline std::string logOfEvent(const Event& event) { return logWith({Message{.events = {event}}}); }

/// The same of an event that is given by its fields, in the JSON form of the schema.
inline std::string logOfEventFields(const std::string& fields) {
  return logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[{" + fields + "}]}]}"});
}

/// The lines of a document that start with this key, without their indentation.
inline std::vector<std::string> linesOf(const std::string& key, const std::string& document) {
  std::istringstream stream(document);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream >> std::ws, line);) {
    if (line.starts_with("\"" + key + "\": ")) {
      lines.push_back(line);
    }
  }
  return lines;
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
