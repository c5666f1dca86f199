// The log header as the document's metadata.

#include <regex>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

class JsonMetadata : public JsonPlugin {
 protected:
  // The document of a log of these chunks, without what changes from test to test.
  std::string documentOfChunks(std::initializer_list<std::string> chunks) {
    const std::string document = documentOf(logOf(chunks));
    return std::regex_replace(document, std::regex("\"/[^\"]*run.log\""), "\"<path>\"");
  }
};

std::string metadata(const std::string& timeScale, const std::string& version,
                     const std::string& netRun, const std::string& numbers = "0") {
  return R"({
    "metadata": {
        "inputLogFileLocation": "<path>",
        "timeScale": )" +
         timeScale + R"(,
        "epochTime": )" +
         numbers + R"(,
        "timestamp": )" +
         numbers + R"(,
        "version": )" +
         version + R"(,
        "vynProfileViewerVersion": "<version>",
        "vynNetRunVersion": ")" +
         netRun + R"(",
        "backendVersion": ""
    },
    "messages": []
}
)";
}

TEST_F(JsonMetadata, HoldsTheWholeHeader) {
  EXPECT_EQ(documentOfChunks({"{header:{timeScale:1.0,epochTime:18446744073709551615,"
                              "timestamp:18446744073709551615,version:{major:4294967295,"
                              "minor:2,teeny:3,versionFlag:1},netRunVersion:\"2.0.0\"}}"}),
            metadata("1.0", R"({
            "major": 4294967295,
            "minor": 2,
            "teeny": 3
        })",
                     "2.0.0", "18446744073709551615"));
}

TEST_F(JsonMetadata, AbsentVersionIsAnEmptyObject) {
  EXPECT_EQ(documentOfChunks({"{header:{timeScale:0.5}}"}), metadata("0.5", "{}", ""));
}

TEST_F(JsonMetadata, AbsentFieldsReadAsZeroAndAsTheEmptyText) {
  EXPECT_EQ(documentOfChunks({"{header:{version:{}}}"}), metadata("0.0", R"({
            "major": 0,
            "minor": 0,
            "teeny": 0
        })",
                                                                  ""));
}

TEST_F(JsonMetadata, HeaderOfALaterChunkStillStandsBeforeTheMessages) {
  EXPECT_EQ(documentOfChunks({"{}", "{header:{timeScale:1.0,netRunVersion:\"late\"}}"}),
            metadata("1.0", "{}", "late"));
}

TEST_F(JsonMetadata, OnlyTheFirstHeaderCounts) {
  EXPECT_EQ(documentOfChunks({"{header:{timeScale:1.0,netRunVersion:\"first\"}}",
                              "{header:{timeScale:2.0,netRunVersion:\"second\"}}"}),
            metadata("1.0", "{}", "first"));
}

TEST_F(JsonMetadata, LogWithoutHeaderHasNone) {
  EXPECT_EQ(documentOfChunks({"{messages:[]}"}), "{\n    \"messages\": []\n}\n");
}

TEST_F(JsonMetadata, NamesTheLogAsItWasGiven) {
  const auto reader = m_plugin.reader(m_folder.path("") + "./run.log");
  m_folder.add("run.log", logOf({"{header:{}}"}));
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_THAT(output(*reader),
              HasSubstr("\"inputLogFileLocation\": \"" + m_folder.path("") + "./run.log\","));
}

TEST_F(JsonMetadata, NameOfTheLogEndsAtItsFirstZeroByte) {
  using namespace std::string_literals;  // NOLINT(google-build-using-namespace)
  const std::string path = m_folder.add("run.log", logOf({"{header:{}}"}));
  const auto reader = m_plugin.reader(path + "\0more\0and more"s);
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_THAT(output(*reader), HasSubstr("\"inputLogFileLocation\": \"" + path + "\",\n"));
}

TEST_F(JsonMetadata, VersionTextsEndAtTheirFirstZeroByte) {
  const std::string longText(300, 'n');
  const std::string document =
      documentOf(logOf({"{header:{netRunVersion:\"" + longText +
                        "\\u0000hidden\",backendVersion:\"1.2\\u0000hidden\"}}"}));
  EXPECT_THAT(document, HasSubstr("\"vynNetRunVersion\": \"" + longText +
                                  "\",\n        \"backendVersion\": \"1.2\"\n"));
}

TEST_F(JsonMetadata, JsonReaderKeepsNoHeaderDetails) {
  const auto reader = readLog(logOf({"{header:{timeScale:1.0}}"}));
  EXPECT_EQ(reader->getHeaderDetails(), "");
}

}  // namespace
}  // namespace vyn::test
