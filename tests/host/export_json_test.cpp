// The document that is written message by message, against the plug-in's: view writes that one.

#include <fstream>

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

TEST_F(ExportJsonTest, EmptyLog) { expectSameDocument(""); }

TEST_F(ExportJsonTest, HeaderAlone) { expectSameDocument(logOf({"{" + kHeader + "}"})); }

TEST_F(ExportJsonTest, HeaderInTheFirstChunk) {
  expectSameDocument(
      logOf({"{" + kHeader + ",messages:[" + kMessage + "]}", "{messages:[" + kMessage + "]}"}));
}

TEST_F(ExportJsonTest, HeaderBehindMessages) {
  expectSameDocument(
      logOf({"{messages:[" + kMessage + "]}", "{" + kHeader + ",messages:[" + kMessage + "]}",
             "{header:{timeScale:9},messages:[" + kMessage + "]}"}));
}

TEST_F(ExportJsonTest, HeaderBehindChunksWithoutMessages) {
  expectSameDocument(logOf({"{}", "{messages:[]}", "{" + kHeader + "}", "{}"}));
}

TEST_F(ExportJsonTest, NoHeader) {
  expectSameDocument(logOf({"{messages:[" + kMessage + "," + kMessage + "]}", "{}"}));
}

TEST_F(ExportJsonTest, HeaderBehindMoreTextThanABlockHolds) {
  const std::string messages =
      makeChunk(std::vector<std::string>(1000, doubleEvent("0.1")));  // some 400 KB of text
  expectSameDocument(messages + logOf({"{" + kHeader + "}"}) + messages);
}

TEST_F(ExportJsonTest, TextsThatNeedEscapingAndThoseThatDoNot) {
  const std::string text = "\\u0001\\\"/\\\\\\u007f\\u0080\\u2028 plain";
  expectSameDocument(logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[{identifier:\"" +
                            text + "\",valueType:6,stringValue:\"" + std::string(9000, 'x') + text +
                            std::string(9000, 'y') + text + "\"}]}]}"}));
}

TEST_F(ExportJsonTest, NumbersOfAllKinds) {
  std::string events;
  for (const char* value : {"0.1", "1e-320", "1e308", "-0.0", "123456789012345680", "5e-324",
                            "9007199254740993", "1e21", "1e22", "0.000001", "1e-7"}) {
    events += "{valueType:5,doubleValue:" + std::string(value) +
              "},{valueType:3,floatValue:" + (std::string(value) == "1e308" ? "3e38" : value) +
              "},";
  }
  events +=
      "{valueType:1,int64Value:-9223372036854775808},{valueType:2,uint64Value:"
      "18446744073709551615},{valueType:1},{valueType:4},{valueType:6},{type:401,unit:7}";
  expectSameDocument(
      logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[" + events + "]}]}"}));
}

TEST_F(ExportJsonTest, EventsNestedDeep) {
  std::string events = "[]";
  for (int level = 0; level < 62; ++level) {
    events = "[{identifier:\"at " + std::to_string(level) + "\",subEvents:" + events + "},{}]";
  }
  expectSameDocument(
      logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:" + events + "}]}"}));
}

TEST_F(ExportJsonTest, LogFromAPipe) {
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
  EXPECT_EQ(result.errors, run({"view", "run.log", "-o", "out.json"}).errors);
  EXPECT_EQ(read("out.json"), "old");
  EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
}

TEST_F(ExportJsonTest, DamagedLogEndsTheTextOfAPipe) {
  write("run.log",
        logOf({"{" + kHeader + "}"}) + logWithDocumentOver(600'000) + framed("0123456789abcdef"));
  const ProgramResult result = run({"export", "json", "run.log", "-o", "-"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.output, Not(IsEmpty()));
  EXPECT_THAT(result.output, Not(EndsWith("}\n")));
}

TEST_F(ExportJsonTest, ValueThatIsNoNumberIsRefused) {
  for (const char* value : {"nan", "inf", "-inf"}) {
    write("run.log", makeChunk({doubleEvent(value)}));
    EXPECT_THAT(run({"export", "json", "run.log", "-o", "out.json"}),
                FailsWith(std::string("out.json") + kHoldsNoNumber));
    EXPECT_THAT(run({"view", "run.log", "-o", "out.json"}),
                FailsWith(std::string("out.json") + kHoldsNoNumber));
  }
  write("run.log", logOf({"{header:{timeScale:nan}}"}));
  EXPECT_EQ(run({"export", "json", "run.log", "-o", "out.json"}).exitStatus, 1);
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(ExportJsonTest, StopsAtTheLargestOutput) {
  write("run.log", logWithDocumentOver(600'000));
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
                                   "vyn-profile-viewer --help"));
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
