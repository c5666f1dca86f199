#include "host/host_fixture.h"

namespace vyn::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class InfoTest : public HostTest {
 protected:
  // What the program tells of a log of this content; its exit status must be this.
  std::string told(const std::string& log, int status = 0) const {
    write("run.log", log);
    ProgramCall info = call({"info", "run.log"});
    info.environment.emplace_back("TZ=UTC");
    const ProgramResult result = runProgram(info);
    EXPECT_EQ(result.exitStatus, status);
    EXPECT_EQ(result.errors, "");
    return result.output;
  }
};

MATCHER_P(HasLine, line, "has the line: " + std::string(line)) {
  return ("\n" + arg).find("\n" + std::string(line) + "\n") != std::string::npos;
}

std::string logOfAllKinds() {
  const Event nodes = {.identifier = "nodes",
                       .value = std::uint64_t{5},
                       .unit = EventUnit::CYCLES,
                       .type = EventType::EXECUTE,
                       .subEvents = {cycles("conv", 3), cycles("pool", 2)}};
  const std::string first =
      chunkOf({{.method = MethodType::BACKEND_EXECUTE,
                .timestamp = 1500,
                .sequenceNumber = 7,
                .visibilityLevel = 2,
                .graph = "net",
                .events = {nodes, object("weights.bin", std::string(1200, 'p'))}},
               {.method = MethodType::BACKEND_FINALIZE,
                .timestamp = 2600,
                .sequenceNumber = 8,
                .graph = "net"}},
              "{timeScale:0.5,epochTime:1733891934000000,timestamp:1234,netRunVersion:\"2.4.1\","
              "version:{major:1,minor:2,teeny:3,versionFlag:4}}");
  const std::string second =
      chunkOf({{.method = MethodType::BACKEND_EXECUTE_ASYNC,
                .timestamp = 2500,
                .sequenceNumber = 12,
                .graph = "other"},
               {.method = MethodType::LIBRARY_LOAD, .timestamp = 2501, .sequenceNumber = 12}},
              "{timeScale:0.5,epochTime:1733891934000001,timestamp:1234,"
              "netRunVersion:\"2.4.1\"}");
  return logOf({first, second});
}

TEST_F(InfoTest, TheOverviewHasAFigureForEachKind) {
  const std::string log = logOfAllKinds();
  const std::string output = told(log);
  EXPECT_THAT(output, StartsWith("run.log\n  size              2,016 bytes\n"));
  ASSERT_EQ(log.size(), 2016U);
  EXPECT_THAT(output, HasLine("  messages          4"));
  EXPECT_THAT(output, HasLine("  events            4, at most 2 deep"));
  EXPECT_THAT(output, HasLine("  identifiers       4 different"));
  EXPECT_THAT(output, HasLine("  payloads          1, together 1,200 bytes"));
  EXPECT_THAT(output, HasLine("  time stamps       1,500 to 2,501, a span of 1,100 in the "
                              "writer's unit, 1 step back"));
  EXPECT_THAT(output, HasLine("  sequence numbers  7 to 12: 1 gap (3 numbers left out), 1 repeat, "
                              "0 steps back"));
  EXPECT_THAT(output, HasLine("  damage            none"));
}

TEST_F(InfoTest, ChunksAreMeasuredWithoutTheirLengths) {
  const std::string small = chunkBytes("{}");
  const std::string log =
      framed(small) + framed(small + std::string(2000, 'x')) + framed(small + std::string(90, 'x'));
  const std::string bytes = std::to_string(small.size());
  EXPECT_THAT(told(log),
              HasLine("  chunks            3: smallest " + bytes + ", median " +
                      std::to_string(small.size() + 90) + ", largest 2,0" + bytes + " bytes"));
}

TEST_F(InfoTest, TheHeaderIsShownWhole) {
  EXPECT_THAT(told(logOfAllKinds()),
              HasSubstr("\n\nHeader\n"
                        "  created           2024-12-11T04:38:54Z, 1,733,891,934,000,000 us since "
                        "1970\n"
                        "                    2024-12-11 04:38:54 +0000 in the local time zone\n"
                        "  time stamp        1,234 in the writer's unit\n"
                        "  time scale        0.5\n"
                        "  log version       1.2.3, flag 4\n"
                        "  vyn-net-run       2.4.1\n"
                        "  back end          none\n"
                        "  headers           2, later ones differ in epochTime, version\n"
                        "\n"));
}

TEST_F(InfoTest, AlikeHeadersAreSaidToBe) {
  const std::string chunk = "{header:{backendVersion:\"b\"}}";
  EXPECT_THAT(told(logOf({chunk, chunk, chunk})),
              AllOf(HasLine("  back end          b"), HasLine("  log version       none"),
                    HasLine("  headers           3, all alike")));
  EXPECT_THAT(told(logOf({chunk})), Not(HasSubstr("\n  headers")));
}

TEST_F(InfoTest, TheCreationIsToldInTheTimeZoneToo) {
  write("run.log", logOfAllKinds());
  ProgramCall info = call({"info", "run.log"});
  info.environment.emplace_back("TZ=XYZ-5:30");
  EXPECT_THAT(
      runProgram(info).output,
      HasSubstr("  created           2024-12-11T04:38:54Z, 1,733,891,934,000,000 us since 1970\n"
                "                    2024-12-11 10:08:54 +0530 in the local time zone\n"));
}

TEST_F(InfoTest, AbsurdHeadersAreShownAsTheyAre) {
  EXPECT_THAT(
      told(logOf({"{header:{epochTime:18446744073709551615,timeScale:nan,"
                  "netRunVersion:\"a\\u001b[31m\"}}"})),
      AllOf(HasSubstr("  created           586524-01-19T08:01:49Z, 18,446,744,073,709,551,615 us "
                      "since 1970\n                    586524-01-19 08:01:49 +0000 in the"),
            HasLine("  time scale        nan"), HasLine("  vyn-net-run       a\\x1b[31m")));
}

TEST_F(InfoTest, MessagesAreSortedOut) {
  EXPECT_THAT(told(logOfAllKinds()), HasSubstr("\n"
                                               "\n"
                                               "Messages by method       count   share\n"
                                               "  BACKEND_EXECUTE            1  25.0 %\n"
                                               "  BACKEND_FINALIZE           1  25.0 %\n"
                                               "  BACKEND_EXECUTE_ASYNC      1  25.0 %\n"
                                               "  LIBRARY_LOAD               1  25.0 %\n"
                                               "\n"
                                               "Messages by visibility level    count   share\n"
                                               "  0                                 3  75.0 %\n"
                                               "  2                                 1  25.0 %\n"
                                               "\n"
                                               "Messages by graph    count   share  executions\n"
                                               "  net                    2  50.0 %           1\n"
                                               "  other                  1  25.0 %           1\n"
                                               "  (no graph)             1  25.0 %           -\n"
                                               "\n"));
}

TEST_F(InfoTest, EventsAreSortedOut) {
  EXPECT_THAT(told(logOfAllKinds()), HasSubstr("\n"
                                               "\n"
                                               "Events by type    count   share\n"
                                               "  NONE                3  75.0 %\n"
                                               "  EXECUTE             1  25.0 %\n"
                                               "\n"
                                               "Events by unit    count   share\n"
                                               "  CYCLES              3  75.0 %\n"
                                               "  OBJECT              1  25.0 %\n"
                                               "\n"
                                               "Events by value type    count   share\n"
                                               "  UINT64                    3  75.0 %\n"
                                               "  RAW_DATA                  1  25.0 %\n"
                                               "\n"));
}

TEST_F(InfoTest, BytesAreSortedOut) {
  const std::string chunk = chunkBytes(R"({messages: [{
      header: {timestamp: 1000, sequenceNumber: 1},
      method: BACKEND_EXECUTE,
      appMetrics: {startTime: 1000, stopTime: 1250},
      graphName: "net",
      profilingEvents: [{identifier: "run", type: EXECUTE, unit: MICROSEC,
                         valueType: UINT64, uint64Value: 250}]}]})");
  EXPECT_THAT(told(framed(chunk + std::string(5000, 'x')) + std::string(3, 'x')),
              EndsWith("\n\n"
                       "Where the bytes go       bytes   share\n"
                       "  padding and unused     5,000  96.0 %\n"
                       "  other tables             120   2.3 %\n"
                       "  event tables              48   0.9 %\n"
                       "  texts                     16   0.3 %\n"
                       "  lists                     16   0.3 %\n"
                       "  chunk lengths              4   0.1 %\n"
                       "  behind the last chunk      3   0.1 %\n"));
  EXPECT_THAT(told(logOfAllKinds()), HasSubstr("\n  raw data            1,204  "));
}

TEST_F(InfoTest, NearlyAllIsNotAll) {
  std::vector<Message> messages(3000, execute("net"));
  messages.push_back(createContext());
  EXPECT_THAT(told(logWith(messages)),
              AllOf(HasSubstr("  BACKEND_EXECUTE     3,000  >99.9 %\n"),
                    HasSubstr("  APP_CONTEXT_CREATE      1   <0.1 %\n"),
                    HasLine("  0                             3,001  100.0 %")));
}

TEST_F(InfoTest, LongTablesAreCut) {
  std::vector<Message> messages;
  messages.reserve(1004);
  for (int i = 0; i < 1002; ++i) {
    messages.push_back(stepOf(static_cast<MethodType>(-1 - i % 42), "g" + std::to_string(i)));
  }
  messages.push_back(execute("g77"));
  messages.push_back(execute("g999"));
  const std::string output = told(logWith(messages));
  EXPECT_THAT(output, HasSubstr("\n  g77                        2   0.2 %           1\n"
                                "  g999                       2   0.2 %           1\n"
                                "  g0                         1   0.1 %           0\n"));
  EXPECT_THAT(output, HasLine("  (at least 960 others)    962  95.8 %           0"));
  EXPECT_THAT(output, HasLine("  (3 others)             48  4.8 %"));
  EXPECT_THAT(told(logWith(std::vector<Message>(messages.begin(), messages.begin() + 41))),
              AllOf(HasSubstr("\n  (1 other)  "), Not(HasSubstr("others"))));
}

TEST_F(InfoTest, NamesAreEscapedAndCut) {
  EXPECT_THAT(told(logWith({execute("a\nb\x1b" + std::string(300, 'g'))})),
              HasSubstr("\n  a\\x0ab\\x1b" + std::string(196, 'g') + "... (304 bytes)  "));
  write("\x1b.log", "");
  EXPECT_THAT(run({"info", "\x1b.log"}).output, StartsWith("\\x1b.log\n"));
}

TEST_F(InfoTest, LongNamesAndLettersOfManyBytesLeaveTheColumnsAligned) {
  const std::string name(70, 'g');
  EXPECT_THAT(told(logWith({execute("löng"), execute("net"), execute(name)})),
              HasSubstr("\n  " + name + "      1  33.3 %           1\n" + "  löng" +
                        std::string(56, ' ') + "      1  33.3 %           1\n" + "  net " +
                        std::string(56, ' ') + "      1  33.3 %           1\n"));
}

TEST_F(InfoTest, AnEmptyLogIsWhole) {
  EXPECT_EQ(told(""),
            "run.log\n"
            "  size              0 bytes\n"
            "  chunks            none\n"
            "  messages          0\n"
            "  events            0\n"
            "  identifiers       0 different\n"
            "  payloads          0\n"
            "  damage            none\n"
            "\n"
            "Header\n"
            "  none\n");
}

TEST_F(InfoTest, ACorruptChunkIsDamage) {
  const std::string sound = smallLog();
  std::string bad = smallLog();
  bad[7] = '\x7f';  // the root's offset, now beyond the chunk
  const std::string size = std::to_string(sound.size());
  const std::string output = told(sound + bad + sound, 3);
  EXPECT_THAT(output,
              HasSubstr("\n  damage            in chunk 2 at byte offset " + size +
                        ": the chunk of " + std::to_string(bad.size() - 4) +
                        " bytes is corrupt\n"
                        "                    whole before it: 1 chunk, with their lengths " +
                        size + " bytes\n" +
                        "                    save what is whole: vyn-profile-viewer recover LOG -o "
                        "FILE, with --search also what stands behind it\n\n"));
  EXPECT_THAT(output, HasLine("  messages          1"));
  EXPECT_THAT(output,
              HasLine("  size              " + std::to_string(3 * sound.size()) + " bytes"));
  EXPECT_THAT(output, HasSubstr("\n  from the damage on    " + std::to_string(2 * sound.size())));
}

TEST_F(InfoTest, ACutChunkMayStillBeWritten) {
  const std::string sound = smallLog();
  const std::string output = told(sound + sound.substr(0, 60), 3);
  EXPECT_THAT(output, HasSubstr(": the log ends inside the chunk: 56 of " +
                                std::to_string(sound.size() - 4) +
                                " bytes are there\n"
                                "                    the run may still be writing, or was ended in "
                                "the middle of it\n"
                                "                    whole before it: 1 chunk"));
}

TEST_F(InfoTest, ACutChunkWhoseTablesAreThereIsCounted) {
  const std::string chunk = smallLog().substr(4) + std::string(100, 'x');
  const std::string output = told(framed(chunk).substr(0, chunk.size()), 3);
  EXPECT_THAT(output, HasSubstr("\n                    its messages are all there and are counted\n"
                                "                    whole before it: 0 chunks, "));
  EXPECT_THAT(output, HasLine("  messages          1"));
  EXPECT_THAT(output, Not(HasSubstr("from the damage on")));
}

TEST_F(InfoTest, APartOfALengthMayStillBeWritten) {
  const std::string why =
      ": the log ends inside the length of a chunk: 2 of 4 bytes are there\n"
      "                    the run may still be writing";
  const std::string log = smallLog();
  EXPECT_THAT(told(log + "ab"),
              HasSubstr("\n  damage            none\n"
                        "                    behind the last chunk, at byte offset " +
                        std::to_string(log.size()) + why));
  EXPECT_THAT(told("ab", 3), HasSubstr("\n  damage            in chunk 1 at byte offset 0" + why));
}

TEST_F(InfoTest, BytesBehindTheLastChunkAreDamageForInfoAsForCheck) {
  for (const std::string& log : {smallLog() + "abc", std::string("abc"), smallLog() + "abcd"}) {
    write("run.log", log);
    EXPECT_EQ(run({"info", "run.log"}).exitStatus, run({"check", "run.log"}).exitStatus) << log;
  }
}

TEST_F(InfoTest, NoNameOfAGraphIsTakenForNone) {
  EXPECT_THAT(told(logWith({execute(""), execute("(no graph)"), createContext()})),
              AllOf(HasSubstr("\n  (empty name)  "), HasSubstr("\n  \"(no graph)\"  "),
                    HasSubstr("\n  (no graph)    ")));
}

TEST_F(InfoTest, AnUnknownFileMayBeNoLog) {
  const std::string output = told("These are not the bytes of a log.\n", 3);
  EXPECT_THAT(output, HasSubstr("\n  damage            in chunk 1 at byte offset 0: "));
  EXPECT_THAT(output,
              HasSubstr("\n                    nothing sound stands before it: it may be no "
                        "profiling log at all\n"));
  EXPECT_THAT(output, HasLine("  size              34 bytes"));
}

TEST_F(InfoTest, AFileOfAnotherFormatFailsLikeView) {
  write("run.log", "\x1f\x8b and more than twelve bytes");
  const ProgramResult result = run({"info", "run.log"});
  EXPECT_THAT(result, FailsWith("run.log: is compressed with gzip; unpack it first: gunzip"));
  EXPECT_EQ(result.output, "");
}

TEST_F(InfoTest, APipeIsReadToItsDamage) {
  const std::string sound = smallLog();
  write("run.log", sound + std::string("\xff\xff\xff\xff") + sound);
  const ProgramResult result = runInShell("cat run.log | \"$0\" \"$@\"", {"info", "-"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.output, StartsWith("standard input\n  size              " +
                                        std::to_string(sound.size() + 4) + " bytes\n"));
}

TEST_F(InfoTest, SeveralLogsAreToldInOrder) {
  write("one.log", smallLog());
  write("two.log", smallLog() + "abcd");
  const ProgramResult result = run({"info", "two.log", "none.log", "one.log"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, ownLine("none.log: no such file or directory; check the name"));
  EXPECT_EQ(result.output,
            run({"info", "two.log"}).output + "\n" + run({"info", "one.log"}).output);
  EXPECT_EQ(run({"info", "one.log", "two.log"}).exitStatus, 3);
}

TEST_F(InfoTest, JsonIsOneDocumentWhateverFails) {
  const ProgramResult result = run({"info", "none.log", "--format", "json"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "{\n  \"schema_version\": 1,\n  \"logs\": []\n}\n");
}

TEST_F(InfoTest, TheOutputIsSaidToBeIncomplete) {
  write("run.log", smallLog());
  ProgramCall info = call({"info", "run.log", "run.log"});
  info.standardOutput = "/dev/full";
  const ProgramResult result = runProgram(info);
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors, StartsWith("vyn-profile-viewer: standard output: "));
}

TEST_F(InfoTest, StandardInputIsReadOnce) {
  const ProgramResult result = run({"info", "-", "-"});
  EXPECT_EQ(result.exitStatus, 2);
  EXPECT_THAT(result.errors, HasSubstr("standard input can be read once only"));
  EXPECT_EQ(result.output, "");
}

TEST_F(InfoTest, SlowLogsShowProgressOnATerminalUnlessTold) {
  write("run.log", smallLog());
  const std::string script =
      "mkfifo slow.log; { cat run.log; sleep 1.3; cat run.log; } >slow.log & "
      "env -u CI script --quiet --return --command \"'$0' info $* slow.log\" /dev/null; "
      "rm slow.log";
  const ProgramResult shown = runInShell(script, {});
  EXPECT_THAT(shown.output, AllOf(HasSubstr("vyn-profile-viewer: 0 MB"), HasSubstr("damage")));
  const ProgramResult hidden = runInShell(script, {"--quiet"});
  EXPECT_THAT(hidden.output,
              AllOf(Not(HasSubstr("vyn-profile-viewer: 0 MB")), HasSubstr("damage")));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

}  // namespace
}  // namespace vyn::test
