#include <cmath>
#include <limits>

#include "base/version/profile_viewer_version.h"
#include "host/host_fixture.h"
#include "support/json_log.h"

namespace vyn::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

using JsonOutputTest = HostTest;

std::string smallDocument(const std::string& logPath) {
  return R"({
    "metadata": {
        "inputLogFileLocation": ")" +
         logPath + R"(",
        "timeScale": 1.0,
        "epochTime": 0,
        "timestamp": 0,
        "version": {
            "major": 1,
            "minor": 2,
            "teeny": 3
        },
        "vynProfileViewerVersion": ")" +
         profiling::kProfileViewerVersion + R"(",
        "vynNetRunVersion": "net-run 7",
        "backendVersion": ""
    },
    "messages": [
        {
            "header": {
                "timestamp": 10,
                "sequenceNumber": 1
            },
            "method": "BACKEND_EXECUTE",
            "appMetrics": {
                "startTime": 100,
                "stopTime": 107
            },
            "profilingEvents": [
                {
                    "identifier": "run",
                    "unit": "MICROSEC",
                    "type": "EXECUTE",
                    "value": 3
                }
            ]
        }
    ]
}
)";
}

TEST_F(JsonOutputTest, WritesTheDocumentToTheNamedFile) {
  write("run.log", smallLog());
  const ProgramResult result = run({"run.log", "-o", "out.json"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(read("out.json"), smallDocument("run.log"));
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(JsonOutputTest, WithoutANameTheDocumentIsNamedAfterTheLog) {
  std::filesystem::create_directory(directory() / "logs");
  write("logs/run.log", smallLog());
  const ProgramResult result = run({"logs/run.log"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(result.errors, ownLine("wrote run.log.json"));
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(read("run.log.json"), smallDocument("logs/run.log"));
}

TEST_F(JsonOutputTest, AnEmptyLogGivesADocumentWithoutMessages) {
  write("empty.log", "");
  EXPECT_THAT(run({"empty.log", "-o", "out.json"}), SucceedsQuietly());
  EXPECT_EQ(read("out.json"), "{\n    \"messages\": []\n}\n");
}

TEST_F(JsonOutputTest, TakesMessagesOfEveryVisibilityLevel) {
  write("run.log", logWith({{.sequenceNumber = 1, .visibilityLevel = 127},
                            {.sequenceNumber = 2, .visibilityLevel = -128}}));
  EXPECT_THAT(run({"run.log", "-o", "out.json"}), SucceedsQuietly());
  EXPECT_THAT(read("out.json"),
              AllOf(HasSubstr("\"sequenceNumber\": 1"), HasSubstr("\"sequenceNumber\": 2")));
}

constexpr char kNotANumber[] =
    ": not written, for the log holds a value that is not a number (NaN or infinity), which JSON "
    "cannot hold; read the log with --reader summary";

TEST_F(JsonOutputTest, AValueThatIsNotANumberFailsAndKeepsTheOldFile) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double value : {std::nan(""), kInfinity, -kInfinity}) {
    write("run.log", logWith({execute("net", {}, {doubleEvent(value)})}));
    write("out.json", "old");
    EXPECT_THAT(run({"run.log", "-o", "out.json"}),
                FailsWith(std::string("out.json") + kNotANumber));
    EXPECT_EQ(read("out.json"), "old");
    EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
  }
}

TEST_F(JsonOutputTest, ATimeScaleThatIsNotANumberFails) {
  write("run.log", logOf({"{header: {timeScale: nan}}"}));
  EXPECT_THAT(run({"run.log"}), FailsWith(std::string("run.log.json") + kNotANumber));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(JsonOutputTest, HalfADocumentNeverReachesStandardOutput) {
  write("run.log", logWith({execute("net", {}, {doubleEvent(std::nan(""))})}));
  const ProgramResult result = run({"run.log", "-o", "-"});
  EXPECT_THAT(result, FailsWith(std::string("standard output") + kNotANumber));
  EXPECT_EQ(result.output, "");
}

}  // namespace
}  // namespace vyn::test
