// The verb check: what it prints, and with which status it ends.

#include "host/host_fixture.h"
#include "support/shared_log.h"

namespace vyn::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CheckTest : public HostTest {
 protected:
  ProgramResult checkPiped(const std::string& log, std::vector<std::string> options = {}) const {
    write("piped.log", log);
    options.insert(options.begin(), {"check", "-"});
    return runInShell("cat piped.log | \"$0\" \"$@\"", options);
  }
};

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t place = text.find(part); place != std::string::npos;
       place = text.find(part, place + 1)) {
    ++count;
  }
  return count;
}

const std::string kHeader = "header:{netRunVersion:\"7\"}";

std::string chunkOfEvents(const std::string& event, std::size_t count) {
  std::string events;
  for (std::size_t i = 0; i < count; ++i) {
    events += (i == 0 ? "{" : ",{") + event + "}";
  }
  return "{" + kHeader + ",messages:[{header:{},appMetrics:{},profilingEvents:[" + events + "]}]}";
}

TEST_F(CheckTest, ASoundLogHasNoFindings) {
  write("run.log", smallLog());
  const ProgramResult result = run({"check", "run.log"});
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, "run.log: sound: 1 chunk, 1 message\n");
}

TEST_F(CheckTest, LargeCountsAreGrouped) {
  write("run.log", logOf({"{" + kHeader + "}"}) + logOfExecutions(1000));
  EXPECT_EQ(run({"check", "run.log"}).output, "run.log: sound: 2 chunks, 1,000 messages\n");
}

TEST_F(CheckTest, AnEmptyLogLacksAHeaderOnly) {
  write("run.log", "");
  EXPECT_EQ(run({"check", "run.log"}).output,
            "run.log: warning VYN201: the log has no header: no chunk with one; expected one, in "
            "the first chunk\n"
            "run.log:   take care that its first chunk is not lost; a document of the log has no "
            "metadata\n"
            "run.log: 1 warning in 0 chunks, 0 messages\n");
}

TEST_F(CheckTest, WarningsCountWhenStrict) {
  write("run.log", logOfExecutions(1));
  EXPECT_THAT(run({"check", "run.log"}), SucceedsQuietly());
  const ProgramResult strict = run({"check", "run.log", "--strict"});
  EXPECT_EQ(strict.exitStatus, 3);
  EXPECT_EQ(strict.output, run({"check", "run.log"}).output);
  write("sound.log", smallLog());
  EXPECT_THAT(run({"check", "sound.log", "--strict"}), SucceedsQuietly());
}

TEST_F(CheckTest, TwentyFindingsOfACodeAreTold) {
  write("run.log", logOf({chunkOfEvents("type:401", 20)}));
  const std::string output = run({"check", "run.log"}).output;
  EXPECT_EQ(countOf(output, "warning VYN212, chunk 1, message 1, byte "), 20U);
  EXPECT_THAT(output, Not(HasSubstr(" more\n")));
  EXPECT_THAT(output, HasSubstr("run.log: 20 warnings in 1 chunk, 1 message\n"));
}

TEST_F(CheckTest, FurtherFindingsOfACodeAreCounted) {
  write("run.log", logOf({chunkOfEvents("type:401,unit:7", 21)}));
  const std::string output = run({"check", "run.log"}).output;
  EXPECT_EQ(countOf(output, "warning VYN212, "), 20U);
  EXPECT_EQ(countOf(output, "warning VYN213, "), 20U);
  EXPECT_THAT(output, HasSubstr("run.log: warning VYN212: 1 more\n"
                                "run.log: warning VYN213: 1 more\n"
                                "run.log: 42 warnings in 1 chunk, 1 message\n"));
}

TEST_F(CheckTest, WhatToDoIsToldOnceACode) {
  write("run.log", logOf({chunkOfEvents("type:401,unit:7", 3)}));
  EXPECT_EQ(countOf(run({"check", "run.log"}).output, "  read the log with a newer "), 2U);
}

TEST_F(CheckTest, FindingsStandInTheOrderOfTheLog) {
  write("run.log", logOf({chunkOfEvents("unit:7", 1), chunkOfEvents("type:401", 1),
                          chunkOfEvents("unit:7", 1)}) +
                       "x");
  const std::string output = run({"check", "run.log"}).output;
  EXPECT_LT(output.find("VYN213, chunk 1"), output.find("VYN212, chunk 2"));
  EXPECT_LT(output.find("VYN212, chunk 2"), output.find("VYN213, chunk 3"));
  EXPECT_LT(output.find("VYN213, chunk 3"), output.find("VYN203, chunk 4"));
}

TEST_F(CheckTest, EachLogIsTold) {
  write("a.log", smallLog());
  write("b.log", smallLog().substr(0, 60));
  write("c.log", smallLog());
  const ProgramResult result = run({"check", "a.log", "b.log", "c.log"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.output, StartsWith("a.log: sound: 1 chunk, 1 message\nb.log: error VYN103"));
  EXPECT_THAT(result.output, testing::EndsWith("b.log: 1 error in 0 chunks, 0 messages\n"
                                               "c.log: sound: 1 chunk, 1 message\n"));
}

TEST_F(CheckTest, ALogThatIsNotThereDoesNotHideTheOthers) {
  write("a.log", smallLog());
  write("b.log", smallLog().substr(0, 60));
  for (const char* format : {"text", "json"}) {
    const ProgramResult result = run({"check", "a.log", "none.log", "b.log", "--format", format});
    EXPECT_THAT(result, FailsWith("none.log: no such file or directory; check the name"));
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("a.log"), HasSubstr("b.log"), Not(HasSubstr("none.log"))));
  }
}

TEST_F(CheckTest, StandardInputIsReadOnce) {
  const ProgramResult result = checkPiped(smallLog());
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, "standard input: sound: 1 chunk, 1 message\n");
  EXPECT_EQ(run({"check", "-", "-"}).exitStatus, 2);
}

TEST_F(CheckTest, DamageInAPipeHasItsPlace) {
  const std::string log = smallLog();
  EXPECT_THAT(checkPiped(log + log.substr(0, 60)).output,
              StartsWith("standard input: error VYN103, chunk 2, byte " +
                         std::to_string(log.size()) + ": "));
}

TEST_F(CheckTest, OtherFormatsAreNamedFromAPipeToo) {
  const std::vector<std::pair<std::string, std::string>> formats = {
      {"\x1f\x8b\x08", "is compressed with gzip"},
      {"PK\x03\x04", "is a zip archive"},
      {"\x28\xb5\x2f\xfd", "is compressed with zstd"},
      {"{\n    \"metadata\"", "looks like JSON"},
      {"input log file location, run.log\n", "is a CSV listing"},
      {"These are the words of a letter.", "is a plain text"}};
  for (const auto& [start, name] : formats) {
    const ProgramResult result = checkPiped(start + std::string(40, 'x'));
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.output, StartsWith("standard input: error VYN105, chunk 1, byte 0: this is "
                                          "no profiling log: a file that " +
                                          name));
  }
}

TEST_F(CheckTest, AnotherFormatBehindAChunkIsDamage) {
  EXPECT_THAT(checkPiped(smallLog() + "These are the words of a letter.").output,
              HasSubstr("error VYN103, chunk 2"));
}

TEST_F(CheckTest, ACutChunkThatCanBeReadIsToldToBeCut) {
  std::string log = smallLog();
  log[0] = static_cast<char>(log[0] + 8);  // it ends in what nothing leads to
  write("run.log", log);
  const ProgramResult result = run({"check", "run.log"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.output, HasSubstr("error VYN103, chunk 1, byte 0: "));
  EXPECT_THAT(result.output, HasSubstr("; the messages of the chunk can be read, for nothing leads "
                                       "to what is missing; expected the whole chunk, or no length "
                                       "of one\n"));
  EXPECT_THAT(result.output, HasSubstr("run.log: 1 error in 0 chunks, 1 message\n"));
}

TEST_F(CheckTest, AHeaderThatMayBeInTheLostPartIsNotMissed) {
  write("run.log", logOfExecutions(1) + smallLog().substr(0, 60));
  EXPECT_THAT(run({"check", "run.log"}).output, Not(HasSubstr("VYN201")));
}

TEST_F(CheckTest, AnEqualHeaderMayBeRepeated) {
  write("run.log", logOf({"{" + kHeader + "}", "{" + kHeader + "}"}));
  EXPECT_EQ(run({"check", "run.log"}).output, "run.log: sound: 2 chunks, 0 messages\n");
}

TEST_F(CheckTest, TimesThatAreAbsentArePassedOver) {
  write("run.log", logOf({"{" + kHeader +
                          ",messages:[{header:{},appMetrics:{}},"
                          "{header:{timestamp:5},appMetrics:{startTime:5}},"
                          "{header:{},appMetrics:{stopTime:5}},"
                          "{header:{timestamp:5},appMetrics:{startTime:5,stopTime:5}}]}"}));
  EXPECT_EQ(run({"check", "run.log"}).output, "run.log: sound: 1 chunk, 4 messages\n");
}

// A message for each of the headers.
std::string logOfHeaders(const std::vector<std::string>& headers) {
  std::string messages;
  for (const std::string& header : headers) {
    messages += (messages.empty() ? "{header:{" : ",{header:{") + header + "},appMetrics:{}}";
  }
  return logOf({"{" + kHeader + ",messages:[" + messages + "]}"});
}

TEST_F(CheckTest, SequenceNumbersMayBeginAnywhereOrBeAbsent) {
  const std::string one = "sequenceNumber:1";
  for (const std::vector<std::string>& headers :
       {std::vector<std::string>{"", one}, {"", "", one, "sequenceNumber:2"}, {"", "", ""}}) {
    write("run.log", logOfHeaders(headers));
    EXPECT_THAT(run({"check", "run.log"}).output, StartsWith("run.log: sound: "));
  }
}

TEST_F(CheckTest, BehindANumberAnAbsentOneIsZero) {
  write("run.log", logOfHeaders({"sequenceNumber:1", "", ""}));
  EXPECT_THAT(run({"check", "run.log"}).output,
              AllOf(HasSubstr("VYN233, chunk 1, message 2"),
                    HasSubstr("the sequence number 0 behind 1; expected 2"),
                    HasSubstr("VYN235, chunk 1, message 3"),
                    HasSubstr("the sequence number 0 behind 0; expected 1")));
}

TEST_F(CheckTest, TimeIsHeldAgainstTheMessageBefore) {
  write("run.log", logOf({"{" + kHeader +
                          ",messages:[{header:{timestamp:9},appMetrics:{}},"
                          "{header:{timestamp:7},appMetrics:{}},"
                          "{header:{timestamp:8},appMetrics:{}}]}"}));
  EXPECT_THAT(run({"check", "run.log"}).output,
              testing::EndsWith("run.log: 1 warning in 1 chunk, 3 messages\n"));
}

TEST_F(CheckTest, ALogWithoutAHeaderMayEndInAFewBytes) {
  write("run.log", logOf({"{}"}) + "x");
  EXPECT_THAT(run({"check", "run.log"}).output, AllOf(HasSubstr("VYN201"), HasSubstr("VYN203")));
}

TEST_F(CheckTest, EveryFieldOfAHeaderIsCompared) {
  const std::vector<std::pair<std::string, std::string>> headers = {
      {"timeScale", "timeScale:2"},
      {"epochTime", "epochTime:2"},
      {"timestamp", "timestamp:2"},
      {"version", "version:{}"},
      {"netRunVersion", "netRunVersion:\"2\""},
      {"backendVersion", "backendVersion:\"2\""}};
  for (const auto& [field, header] : headers) {
    write("run.log", logOf({"{header:{}}", "{header:{" + header + "}}"}));
    EXPECT_THAT(run({"check", "run.log"}).output,
                HasSubstr("the first one: another " + field + "; expected "));
  }
  for (const std::string part : {"major", "minor", "teeny"}) {
    write("run.log", logOf({"{header:{version:{}}}", "{header:{version:{" + part + ":2}}}"}));
    EXPECT_THAT(run({"check", "run.log"}).output,
                HasSubstr("the first one: another version." + part + "; expected "));
  }
}

TEST_F(CheckTest, WhatIsOfNoMessageHasNoNumberOfOne) {
  write("run.log", smallLog() + logOf({"{" + kHeader + "}"}));
  EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("warning VYN202, chunk 2, byte "));
}

TEST_F(CheckTest, MessagesAreCountedThroughTheLog) {
  std::string damaged = logOf({"{messages:[{header:{},appMetrics:{},graphName:\"net\"}]}"});
  damaged[damaged.find("net") + 3] = '!';
  write("run.log", logOfExecutions(2) + damaged);
  EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("error VYN114, chunk 2, message 3, "));
}

TEST_F(CheckTest, AnAsynchronousExecutionNeedsAGraphNameToo) {
  write("run.log", logOf({"{" + kHeader +
                          ",messages:[{header:{},appMetrics:{},method:3,"
                          "profilingEvents:[{subEvents:[{type:405}]}]}]}"}));
  EXPECT_THAT(run({"check", "run.log"}).output,
              AllOf(HasSubstr("VYN241"), HasSubstr("1 warning in ")));
}

TEST_F(CheckTest, AQueueWaitFurtherDownDoesNotCount) {
  write("run.log", logOf({"{" + kHeader +
                          ",messages:[{header:{},appMetrics:{},method:3,graphName:\"net\","
                          "profilingEvents:[{subEvents:[{subEvents:[{type:405}]}]}]}]}"}));
  EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("VYN242"));
}

TEST_F(CheckTest, PayloadNamesThatLeadOut) {
  for (const std::string name : {"/tmp/x", "..", "../x", "a/..", "a/../b", "a//../b"}) {
    write("run.log", logOf({chunkOfEvents("unit:5,secondaryName:\"" + name + "\"", 1)}));
    EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("VYN225")) << name;
  }
}

TEST_F(CheckTest, PayloadNamesThatStayInside) {
  const std::string longer = std::string(5000, 'x') + "/..";  // than any path
  for (const std::string& name :
       {std::string("x"), std::string("a/b"), std::string("..a/b.."), std::string("./a"), longer}) {
    write("run.log", logOf({chunkOfEvents("unit:5,secondaryName:\"" + name + "\"", 1)}));
    EXPECT_EQ(run({"check", "run.log"}).output, "run.log: sound: 1 chunk, 1 message\n");
  }
  write("run.log", logOf({chunkOfEvents("unit:5,secondaryName:\"a\\u0000/..\"", 1)}));
  EXPECT_THAT(run({"check", "run.log"}).output, Not(HasSubstr("VYN225")));
  write("run.log", logOf({chunkOfEvents("unit:6,secondaryName:\"..\"", 1)}));
  EXPECT_EQ(run({"check", "run.log"}).output, "run.log: sound: 1 chunk, 1 message\n");
}

TEST_F(CheckTest, ChunksUseUpTheTablesThatAreFreeForAll) {
  write("run.log", logOfSharedTree(20) + logOfSharedTree(20));
  EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("error VYN117, chunk 2, message 2, "));
}

TEST_F(CheckTest, WhatATerminalObeysIsEscaped) {
  write("run.log", logOf({chunkOfEvents("type:401,identifier:\"\\u001b[31m\"", 1)}));
  EXPECT_THAT(run({"check", "run.log"}).output, HasSubstr("'\\x1b[31m' has the type 401"));
}

TEST_F(CheckTest, LongNamesAreCutBetweenCharacters) {
  const std::string name = std::string(59, 'n') + "\u00e4" + std::string(100, 'n');
  write("run.log", logOf({chunkOfEvents("type:401,identifier:\"" + name + "\"", 1)}));
  EXPECT_THAT(run({"check", "run.log"}).output,
              HasSubstr(": '" + std::string(59, 'n') + "...' has the type 401"));
}

// The chunks are alike, so that the second one may lie where the first one did.
TEST_F(CheckTest, ALongTextIsLookedAtInEachChunk) {
  const std::string name(100, 'n');
  const std::string plain = logOf({chunkOfEvents("identifier:\"" + name + "\"", 2)});
  std::string wrong = plain;
  wrong[wrong.find(name) + 50] = '\xff';
  write("run.log", plain + wrong + plain);
  const std::string output = run({"check", "run.log"}).output;
  EXPECT_EQ(countOf(output, "VYN222, chunk 2, message 2"), 1U);
  EXPECT_THAT(output, HasSubstr("run.log: 1 warning in 3 chunks"));
}

// Looking at it each time would take minutes.
TEST_F(CheckTest, ALongTextThatAllEventsShareIsLookedAtOnce) {
  write("run.log", logOfSharedEvent(100'000, 1'000'000));
  EXPECT_THAT(run({"check", "run.log"}).output,
              testing::EndsWith("run.log: 1 warning in 1 chunk, 1 message\n"));
}

// As a builder makes it that writes each text once.
TEST_F(CheckTest, LongNamesThatEventsShareAreAllLookedAt) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < 200; ++i) {
    names.push_back(std::to_string(1000 + i) + std::string(246, 'n'));
  }
  write("run.log", logOfSharedNames(names, 100));
  EXPECT_THAT(run({"check", "run.log"}).output, Not(HasSubstr("VYN204")));
}

TEST_F(CheckTest, TheNameOfAPayloadThatEventsShareIsLookedAt) {
  write("run.log", logOfSharedPayload(100'000, std::string(300, 'n') + "/../x"));
  const std::string output = run({"check", "run.log"}).output;
  EXPECT_THAT(output, HasSubstr("warning VYN225: 99,980 more\n"));
  EXPECT_THAT(output, Not(HasSubstr("VYN204")));
}

// The length of the first chunk has the first bytes of another format.
TEST_F(CheckTest, ADamagedLogIsNoOtherFormat) {
  const std::string chunk = chunkBytes("{" + kHeader + "}");
  for (const std::size_t length : {0x0A7BU, 0x227BU, 0x207BU, 0x8B1FU}) {
    const std::string log = framed(chunk + std::string(length - chunk.size(), '\0'));
    write("run.log", log);
    ASSERT_THAT(run({"check", "run.log"}), SucceedsQuietly());
    write("run.log", log.substr(0, 16));
    const ProgramResult result = run({"check", "run.log"});
    EXPECT_THAT(result.output, AllOf(HasSubstr("VYN103"), Not(HasSubstr("VYN105")))) << length;
    EXPECT_EQ(run({"info", "run.log"}).exitStatus, 3) << length;
  }
}

TEST_F(CheckTest, NoNumberFollowsTheLargest) {
  const std::string largest = "sequenceNumber:18446744073709551615";
  write("run.log", logOfHeaders({largest, largest, ""}));
  EXPECT_THAT(run({"check", "run.log"}).output,
              AllOf(HasSubstr("VYN235"), HasSubstr("VYN233"), HasSubstr("expected none, for no "),
                    Not(HasSubstr("expected 0"))));
}

TEST_F(CheckTest, AFullDiskIsSaid) {
  write("run.log", smallLog());
  for (const char* format : {"text", "json"}) {
    const ProgramResult result =
        runInShell("\"$0\" \"$@\" >/dev/full", {"check", "run.log", "--format", format});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("standard output: disk full"));
  }
}

}  // namespace
}  // namespace vyn::test
