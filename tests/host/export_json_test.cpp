// The document that is written message by message, against the plug-in's: view writes that one.

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>

#include "host/host_fixture.h"
#include "support/json_log.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr char kHoldsNoNumber[] =
    ": not written, for the log holds a value that is not a number (NaN or infinity), which JSON "
    "cannot hold; read the log with --reader summary";

class ExportJsonTest : public HostTest {
 protected:
  void expectSameDocument(const std::string& log) const {
    write("run.log", log);
    ASSERT_THAT(run({"view", "run.log", "-o", "view.json"}), SucceedsQuietly());
    ASSERT_THAT(run({"export", "json", "run.log", "-o", "export.json"}), SucceedsQuietly());
    EXPECT_EQ(read("export.json"), read("view.json"));
    const ProgramResult piped = run({"export", "json", "run.log", "-o", "-"});
    EXPECT_THAT(piped, SucceedsQuietly());
    EXPECT_EQ(piped.output, read("view.json"));
    EXPECT_THAT(names(), ElementsAre("export.json", "run.log", "view.json"));
  }
};

const std::string kMessage = "{header:{sequenceNumber:7},appMetrics:{stopMem:5}}";
const std::string kHeader =
    "header:{timeScale:0.1,version:{major:3},netRunVersion:\"2\",backendVersion:\"b\\\"\\\\\"}";

TEST_F(ExportJsonTest, WritesAnEmptyLog) { expectSameDocument(""); }

TEST_F(ExportJsonTest, WritesAHeaderAlone) { expectSameDocument(logOf({"{" + kHeader + "}"})); }

TEST_F(ExportJsonTest, WritesAHeaderInTheFirstChunk) {
  expectSameDocument(
      logOf({"{" + kHeader + ",messages:[" + kMessage + "]}", "{messages:[" + kMessage + "]}"}));
}

TEST_F(ExportJsonTest, WritesAHeaderBehindMessages) {
  expectSameDocument(
      logOf({"{messages:[" + kMessage + "]}", "{" + kHeader + ",messages:[" + kMessage + "]}",
             "{header:{timeScale:9},messages:[" + kMessage + "]}"}));
}

TEST_F(ExportJsonTest, WritesAHeaderBehindChunksWithoutMessages) {
  expectSameDocument(logOf({"{}", "{messages:[]}", "{" + kHeader + "}", "{}"}));
}

TEST_F(ExportJsonTest, WritesTheFirstOfTwoHeadersWithoutMessagesBetween) {
  expectSameDocument(
      logOf({"{" + kHeader + "}", "{header:{timeScale:9}}", "{messages:[" + kMessage + "]}"}));
}

TEST_F(ExportJsonTest, WritesALogWithoutHeader) {
  expectSameDocument(logOf({"{messages:[" + kMessage + "," + kMessage + "]}", "{}"}));
}

TEST_F(ExportJsonTest, WritesAHeaderBehindMoreTextThanABlockHolds) {
  const std::string messages = logWith(
      std::vector<Message>(6000, execute("net", {}, {doubleEvent(0.1)})));  // some 2.4 MB of text
  expectSameDocument(messages + logOf({"{" + kHeader + "}"}) + messages);
}

TEST_F(ExportJsonTest, WritesTextsThatNeedEscapingAndThoseThatDoNot) {
  const std::string special = "\x01\"/\\\x7f\u0080\u2028 plain";
  const std::string longText = std::string(9000, 'x') + special + std::string(9000, 'y') + special;
  expectSameDocument(logWith({{.events = {text(special, longText)}}}));
}

TEST_F(ExportJsonTest, WritesNumbersOfAllKinds) {
  Events events;
  for (const double value : {0.1, 1e-320, 3e38, 1e308, -0.0, 123456789012345680.0, 5e-324,
                             9007199254740993.0, 1e21, 1e22, 0.000001, 1e-7}) {
    events.push_back({.value = value});
    events.push_back({.value = static_cast<float>(std::min(value, 3e38))});
  }
  events.push_back({.value = std::numeric_limits<std::int64_t>::min()});
  events.push_back({.value = std::numeric_limits<std::uint64_t>::max()});
  expectSameDocument(logWith({{.events = events}}));
}

TEST_F(ExportJsonTest, WritesEventsWhoseValueIsAbsentOrWhoseCodesAreUnknown) {
  expectSameDocument(
      logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[{valueType:INT64},"
             "{valueType:RAW_DATA},{valueType:STRING},{type:401,unit:7}]}]}"}));
}

TEST_F(ExportJsonTest, WritesEventsNestedDeep) {
  Events events;
  for (int depth = 0; depth < 62; ++depth) {
    events = {{.identifier = "at " + std::to_string(depth), .subEvents = events}, {}};
  }
  expectSameDocument(logWith({{.events = events}}));
}

TEST_F(ExportJsonTest, ReadsALogFromAPipe) {
  write("run.log", smallLog());
  ASSERT_THAT(run({"view", "run.log", "-o", "view.json"}), SucceedsQuietly());
  const ProgramResult result = runInShell("cat run.log | \"$0\" export json -", {});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_THAT(result.output, HasSubstr("\"inputLogFileLocation\": \"/dev/stdin\""));
  EXPECT_EQ(result.output.substr(result.output.find("timeScale")),
            read("view.json").substr(read("view.json").find("timeScale")));
}

TEST_F(ExportJsonTest, WithoutOutputTheDocumentIsNamedAfterTheLog) {
  write("run.log", smallLog());
  EXPECT_EQ(run({"export", "json", "run.log"}).errors, ownLine("wrote run.log.json"));
  write("run.log.json", "mine");
  EXPECT_EQ(run({"export", "json", "run.log"}).exitStatus, 1);
  EXPECT_EQ(read("run.log.json"), "mine");
  EXPECT_EQ(run({"export", "json", "run.log", "--force"}).exitStatus, 0);
  EXPECT_THAT(read("run.log.json"), StartsWith("{\n"));
}

TEST_F(ExportJsonTest, DamagedLogLeavesNoDocument) {
  write("run.log", smallLog() + framed("0123456789abcdef"));
  write("out.json", "old");
  const ProgramResult result = run({"export", "json", "run.log", "-o", "out.json"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("run.log: damaged after chunk 1 at byte offset"));
  std::string expected = run({"view", "run.log", "-o", "out.json"}).errors;
  const std::size_t remedies = expected.find("save what is whole");
  ASSERT_NE(remedies, std::string::npos);
  expected.insert(remedies, "go on without what is damaged with --keep-going, or ");
  EXPECT_EQ(result.errors, expected);
  EXPECT_EQ(read("out.json"), "old");
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(ExportJsonTest, DamagedLogEndsTheTextOfAPipe) {
  write("run.log",
        logOf({"{" + kHeader + "}"}) + logWithDocumentOver(3'000'000) + framed("0123456789abcdef"));
  const ProgramResult result = run({"export", "json", "run.log", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, Not(IsEmpty()));
  EXPECT_THAT(result.output, Not(EndsWith("}\n")));
}

TEST_F(ExportJsonTest, TheTextOfADamagedLogEndsAtOnePlace) {
  constexpr std::size_t kSize = 9'000'000;
  write("run.log",
        logOf({"{" + kHeader + "}"}) + logWithDocumentOver(kSize) + framed("0123456789abcdef"));
  const std::string text = run({"export", "json", "run.log", "-o", "-"}).output;
  EXPECT_GT(text.size(), kSize - 2'000'000);  // all but what a block holds
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(run({"export", "json", "run.log", "-o", "-"}).output == text);
  }
}

TEST_F(ExportJsonTest, ValueThatIsNoNumberIsRefused) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double value : {std::nan(""), kInfinity, -kInfinity}) {
    write("run.log", logWith({execute("net", {}, {doubleEvent(value)})}));
    EXPECT_THAT(run({"export", "json", "run.log", "-o", "out.json"}),
                FailsWith(std::string("out.json") + kHoldsNoNumber));
    EXPECT_THAT(run({"view", "run.log", "-o", "out.json"}),
                FailsWith(std::string("out.json") + kHoldsNoNumber));
  }
  EXPECT_THAT(run({"export", "json", "run.log", "-o", "-"}).errors,
              HasSubstr("standard output: breaks off, for the log holds a value that is not a "));
  write("run.log", logOf({"{header:{timeScale:nan}}"}));
  EXPECT_EQ(run({"export", "json", "run.log", "-o", "out.json"}).exitStatus, 1);
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(ExportJsonTest, StopsAtTheLargestOutput) {
  write("run.log", logWithDocumentOver(3'000'000));
  const ProgramResult result =
      run({"export", "json", "run.log", "-o", "out.json", "--max-output", "300000"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, HasSubstr("--max-output"));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(ExportJsonTest, IsNamedWhereADocumentWouldNotFitIntoMemory) {
  write("run.log", smallLog());
  std::filesystem::resize_file(directory() / "run.log", 1'000'000'000'000);  // of holes
  const ProgramResult result = run({"view", "run.log", "-o", "out.json"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, StartsWith("vyn-profile-viewer: run.log: its document takes about "
                                        "3000000 MB of memory, and "));
  EXPECT_THAT(result.errors, HasSubstr("; write it with vyn-profile-viewer export json, "));
}

TEST_F(ExportJsonTest, RefusesWhatHasNoUse) {
  EXPECT_EQ(run({"export", "json", "-", "--force"}).exitStatus, 2);
  EXPECT_EQ(run({"export", "json", ""}).exitStatus, 2);
  EXPECT_EQ(run({"export", "json", "run.log", "-o", "out.json", "--force"}).exitStatus, 2);
}

TEST_F(ExportJsonTest, SaysWhichFormatsThereAre) {
  const ProgramResult result = run({"export", "xml", "run.log"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_EQ(result.errors, ownLine("FORMAT: no format is named xml (there is json); see "
                                   "vyn-profile-viewer export --help"));
  EXPECT_EQ(run({"export", "json"}).exitStatus, 2);
}

TEST_F(ExportJsonTest, LogIsNeverItsOwnOutput) {
  write("run.log", smallLog());
  EXPECT_EQ(run({"export", "json", "run.log", "-o", "run.log"}).exitStatus, 1);
  EXPECT_EQ(runInShell("\"$0\" export json run.log -o - >> run.log 2>/dev/null", {}).exitStatus, 1);
  EXPECT_EQ(read("run.log"), smallLog());
}

}  // namespace
}  // namespace vyn::test
