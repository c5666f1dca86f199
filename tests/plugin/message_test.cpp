// One message of a log as an object of the document.

#include <utility>
#include <vector>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;

class JsonMessage : public JsonPlugin {
 protected:
  void expectMessage(const std::string& fields, const std::string& lines) {
    EXPECT_EQ(documentOf(logOf({"{messages:[{" + fields + "}]}"})),
              "{\n    \"messages\": [\n        {\n" + lines + "\n        }\n    ]\n}\n");
  }
};

constexpr char kZeroHeader[] = R"(            "header": {
                "timestamp": 0,
                "sequenceNumber": 0
            },
            "method": "NONE")";

TEST_F(JsonMessage, WithoutMetricsAndEventsHasHeaderAndMethodAlone) {
  expectMessage("header:{},appMetrics:{}", kZeroHeader);
}

TEST_F(JsonMessage, MetricsThatAreZeroAreLeftOut) {
  expectMessage("header:{},appMetrics:{stopMem:4096}", std::string(kZeroHeader) + R"(,
            "appMetrics": {
                "stopMem": 4096
            })");
}

TEST_F(JsonMessage, EachMetricIsWrittenWhenItAloneIsNotZero) {
  std::string messages;
  std::string objects;
  for (const std::string metric : {"startTime", "stopTime", "startMem", "stopMem"}) {
    messages +=
        (messages.empty() ? "" : ",") + std::string("{header:{},appMetrics:{") + metric + ":1}}";
    objects += (objects.empty() ? "        {\n" : ",\n        {\n") + std::string(kZeroHeader) +
               ",\n            \"appMetrics\": {\n                \"" + metric +
               "\": 1\n            }\n        }";
  }
  EXPECT_EQ(documentOf(logOf({"{messages:[" + messages + "]}"})),
            "{\n    \"messages\": [\n" + objects + "\n    ]\n}\n");
}

TEST_F(JsonMessage, KeepsTheOrderOfItsMembers) {
  expectMessage(
      "profilingEvents:[],graphName:\"net\",visibilityLevel:3,method:\"BACKEND_EXECUTE\","
      "appMetrics:{stopMem:4,startMem:3,stopTime:2,startTime:1},"
      "header:{sequenceNumber:9,timestamp:8}",
      R"(            "header": {
                "timestamp": 8,
                "sequenceNumber": 9
            },
            "method": "BACKEND_EXECUTE",
            "appMetrics": {
                "startTime": 1,
                "stopTime": 2,
                "startMem": 3,
                "stopMem": 4
            },
            "profilingEvents": [])");
}

TEST_F(JsonMessage, LargeNumbersStayUnsigned) {
  expectMessage(
      "header:{timestamp:18446744073709551615,sequenceNumber:9223372036854775808},"
      "appMetrics:{startTime:18446744073709551614}",
      R"(            "header": {
                "timestamp": 18446744073709551615,
                "sequenceNumber": 9223372036854775808
            },
            "method": "NONE",
            "appMetrics": {
                "startTime": 18446744073709551614
            })");
}

TEST_F(JsonMessage, EveryMethodHasItsTextAndTheOthersTheEmptyOne) {
  const std::vector<std::pair<std::int8_t, const char*>> texts{{0, "NONE"},
                                                               {1, "BACKEND_EXECUTE"},
                                                               {2, "BACKEND_FINALIZE"},
                                                               {3, "BACKEND_EXECUTE_ASYNC"},
                                                               {4, "BACKEND_CREATE_FROM_BINARY"},
                                                               {5, "BACKEND_DEINIT"},
                                                               {6, "APP_CONTEXT_CREATE"},
                                                               {7, "APP_COMPOSE_GRAPHS"},
                                                               {8, "APP_EXECUTE_IPS"},
                                                               {9, "BACKEND_GRAPH_COMPONENT"},
                                                               {10, ""},
                                                               {11, ""},
                                                               {12, ""},
                                                               {-1, ""},
                                                               {127, ""},
                                                               {-128, ""}};
  std::vector<Message> messages;
  std::vector<std::string> lines;
  for (const auto& [code, text] : texts) {
    messages.push_back({.method = MethodType{code}});
    lines.push_back(std::string("\"method\": \"") + text + "\"");
  }
  EXPECT_EQ(linesOf("method", documentOf(logWith(messages))), lines);
}

TEST_F(JsonMessage, NoVisibilityLevelIsFilteredOut) {
  const std::string log = logWith({{.sequenceNumber = 1, .visibilityLevel = 127},  //
                                   {.sequenceNumber = 2}});
  const auto reader = m_plugin.reader(m_folder.add("run.log", log), -128);
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_THAT(linesOf("sequenceNumber", output(*reader)),
              ElementsAre("\"sequenceNumber\": 1", "\"sequenceNumber\": 2"));
}

TEST_F(JsonMessage, MessagesOfAllChunksFollowEachOther) {
  const std::string document = documentOf(logOf(
      {chunkOf({{.sequenceNumber = 1}}), "{messages:[]}", "{}", chunkOf({{.sequenceNumber = 2}})}));
  EXPECT_EQ(document, R"({
    "messages": [
        {
            "header": {
                "timestamp": 0,
                "sequenceNumber": 1
            },
            "method": "NONE"
        },
        {
            "header": {
                "timestamp": 0,
                "sequenceNumber": 2
            },
            "method": "NONE"
        }
    ]
}
)");
}

}  // namespace
}  // namespace vyn::test
