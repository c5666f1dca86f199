// Each code of check, by the smallest log that shows it and nothing else.

#include <profile_log_generated.h>

#include <cstring>

#include "host/host_fixture.h"
#include "support/shared_log.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Case {
  std::string name;  // of the test
  std::string log;
  std::string start;  // of the one line that tells the finding: its code and its place
  std::string end;    // of that line: what was found and expected
};

std::ostream& operator<<(std::ostream& out, const Case& shown) { return out << shown.name; }

const std::string kHeader = "header:{netRunVersion:\"7\"}";

std::string chunkWith(const std::string& messages) {
  return "{" + kHeader + ",messages:[" + messages + "]}";
}

std::string messageWith(const std::string& fields) {
  return "{header:{},appMetrics:{}," + fields + "}";
}

std::string logWithMessages(const std::string& messages) { return logOf({chunkWith(messages)}); }

std::string logWithMessage(const std::string& fields) {
  return logWithMessages(messageWith(fields));
}

std::string logWithEvent(const std::string& fields) {
  return logWithMessage("profilingEvents:[{identifier:\"run\"," + fields + "}]");
}

std::string logWithHeaders(const std::string& first, const std::string& second) {
  const std::string metrics = "appMetrics:{}}";
  return logWithMessages("{header:{" + first + "}," + metrics + ",{header:{" + second + "}," +
                         metrics);
}

std::string logWithQueueWaits(const std::string& events) {
  return logWithMessage("method:3,graphName:\"net\",profilingEvents:[" + events + "]");
}

// The log with the bytes that stand there replaced.
std::string replaced(std::string log, const std::string& bytes, const std::string& by) {
  return log.replace(log.find(bytes), by.size(), by);
}

std::string finished(flatbuffers::FlatBufferBuilder& builder) {
  return framed({reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()});
}

// A message without the table that holds its metrics.
std::string logWithoutMetrics() {
  flatbuffers::FlatBufferBuilder builder;
  const auto header = profiling::schema::CreateMessageHeader(builder);
  const auto start = builder.StartTable();
  builder.AddOffset(profiling::schema::Message::VT_HEADER, header);
  const flatbuffers::Offset<profiling::schema::Message> message(builder.EndTable(start));
  const auto messages = builder.CreateVector(std::vector{message});
  builder.Finish(profiling::schema::CreateProfileLog(builder, 0, messages));
  return finished(builder);
}

std::string logOfNestedEvents(int depth) {
  flatbuffers::FlatBufferBuilder builder;
  flatbuffers::Offset<flatbuffers::Vector<flatbuffers::Offset<profiling::schema::Event>>> events;
  for (int i = 0; i < depth; ++i) {
    profiling::schema::EventBuilder event(builder);
    if (!events.IsNull()) {
      event.add_subEvents(events);
    }
    events = builder.CreateVector(std::vector{event.Finish()});
  }
  const auto message = profiling::schema::CreateMessage(
      builder, profiling::schema::CreateMessageHeader(builder), profiling::schema::MethodType::NONE,
      profiling::schema::CreateAppMetrics(builder), 0, events);
  const auto messages = builder.CreateVector(std::vector{message});
  const auto header = profiling::schema::CreateLogHeader(builder);
  builder.Finish(profiling::schema::CreateProfileLog(builder, header, messages));
  return finished(builder);
}

const std::string kEmptyLog = "{" + kHeader + "}";

constexpr char kMayStillBeWritten[] =
    "; the run may still be writing, or was ended in the middle of it";

// Where the chunk's root table says where its fields are, in a log of one chunk.
std::size_t layoutOfRoot(const std::string& log) {
  std::uint32_t root = 0;
  std::memcpy(&root, log.data() + 4, sizeof(root));
  std::int32_t back = 0;
  std::memcpy(&back, log.data() + 4 + root, sizeof(back));
  return 4 + root - static_cast<std::size_t>(back);
}

std::string logWithOddLayout() {
  std::string log = logOf({kEmptyLog});
  ++log[layoutOfRoot(log)];
  return log;
}

std::string logWithFieldOutside() {
  std::string log = logOf({kEmptyLog});
  log.replace(layoutOfRoot(log) + 4, 2, "\xff\x7f");  // the place of the header
  return log;
}

std::vector<Case> errors() {
  const std::string whole = logOf({kEmptyLog});
  const std::string size = std::to_string(whole.size());
  return {
      {"EndsInFirstLength", "\x08", "error VYN101, chunk 1, byte 0: ",
       std::string("1 byte") + kMayStillBeWritten +
           "; expected the 4 bytes of a length, and a chunk"},
      {"ImpossibleLength", std::string("\x0b\0\0\0", 4), "error VYN102, chunk 1, byte 0: ",
       "the length 11 behind 0 whole chunks; expected 12 to 2147483646"},
      {"CutShort", whole + std::string("\x14\0\0\0\x08", 5),
       "error VYN103, chunk 2, byte " + size + ": the log ends inside a chunk: ",
       std::string("1 of 20 bytes behind 1 whole chunk") + kMayStillBeWritten +
           "; expected the whole chunk, or no length of one"},
      {"ForeignFormat", "\x1f\x8b\x08 and so on", "error VYN105, chunk 1, byte 0: ",
       "a file that is compressed with gzip; unpack it first: gunzip; expected chunks of tables"},
      {"OffsetOut", framed(std::string("\xff\0\0\0\4\0\4\0\4\0\0\0", 12)),
       "error VYN111, chunk 1, byte 4: ",
       "the offset of the root table is 255; expected 1 or more, but less than 12"},
      {"BadLayout", logWithOddLayout(),
       "error VYN112, chunk 1, byte " + std::to_string(layoutOfRoot(whole)) + ": ",
       "the table ProfileLog has a layout of 7 bytes; expected an even number that ends inside the "
       "chunk"},
      {"ReachesOut", logWithFieldOutside(),
       "error VYN113, chunk 1, byte " + std::to_string(layoutOfRoot(whole) + 4) + ": ",
       "inside the chunk of " + std::to_string(whole.size() - 4) + " bytes"},
      {"UnendedText",
       replaced(logWithMessage("graphName:\"net\""), std::string("net\0", 4), "net!"),
       "error VYN114, chunk 1, message 1, byte ", "; expected a zero byte there"},
      {"MissingField", logWithoutMetrics(), "error VYN115, chunk 1, message 1, byte ",
       "Message.appMetrics is not there; expected it, for the schema demands it"},
      {"NestedTooDeep", logOfNestedEvents(63), "error VYN116, chunk 1, message 1, byte ",
       "the table Event in 64 others; expected no more than 64 tables deep"},
      {"TooManyTables", logOfSharedTree(21), "error VYN117, chunk 1, message 1, byte ",
       "and what is left of the 2097152 that are free for all chunks together"}};
}

std::vector<Case> warningsOfTheLog() {
  const std::string whole = logOf({kEmptyLog});
  const std::string size = std::to_string(whole.size());
  return {{"NoHeader", logOf({"{}"}), "warning VYN201: the log has no header: ",
           "no chunk with one; expected one, in the first chunk"},
          {"OtherHeader", logOf({kEmptyLog, "{header:{netRunVersion:\"8\"}}"}),
           "warning VYN202, chunk 2, byte ",
           "another netRunVersion; expected the one of the first header"},
          {"BytesBehind", whole + "xyz", "warning VYN203, chunk 2, byte " + size + ": ",
           std::string("3 bytes behind 1 whole chunk") + kMayStillBeWritten +
               "; expected nothing, or another chunk"}};
}

std::vector<Case> warningsOfMessages() {
  return {
      {"UnknownMethod", logWithMessage("method:12"), "warning VYN211, chunk 1, message 1, byte ",
       "the method 12; expected one of the schema"},
      {"StopBeforeStart", logWithMessages("{header:{},appMetrics:{startTime:9,stopTime:8}}"),
       "warning VYN231, chunk 1, message 1, byte ",
       "stopTime 8 us; expected startTime, 9 us, or later"},
      {"TimeGoesBack", logWithHeaders("timestamp:9", "timestamp:8"),
       "warning VYN232, chunk 1, message 2, byte ",
       "the time stamp 8; expected 9, as of the message before, or later"},
      {"SequenceGoesBack", logWithHeaders("sequenceNumber:9", "sequenceNumber:8"),
       "warning VYN233, chunk 1, message 2, byte ", "the sequence number 8 behind 9; expected 10"},
      {"SequenceGap", logWithHeaders("sequenceNumber:9", "sequenceNumber:11"),
       "warning VYN234, chunk 1, message 2, byte ", "the sequence number 11 behind 9; expected 10"},
      {"SequenceRepeat", logWithHeaders("sequenceNumber:9", "sequenceNumber:9"),
       "warning VYN235, chunk 1, message 2, byte ", "the sequence number 9 behind 9; expected 10"},
      {"NoGraphName", logWithMessage("method:1"), "warning VYN241, chunk 1, message 1, byte ",
       "the method BACKEND_EXECUTE without graphName; expected the name of the graph that was "
       "executed"},
      {"NoQueueWait", logWithQueueWaits(""), "warning VYN242, chunk 1, message 1, byte ",
       "0 events of the type EXECUTE_QUEUE_WAIT; expected one, among the events of the message or "
       "directly below one"},
      {"SeveralQueueWaits", logWithQueueWaits("{type:405},{subEvents:[{type:405}]}"),
       "warning VYN243, chunk 1, message 1, byte ",
       "2 events of the type EXECUTE_QUEUE_WAIT; expected one, among the events of the message or "
       "directly below one"}};
}

std::vector<Case> warningsOfEvents() {
  return {
      {"UnknownType", logWithEvent("type:401"), "warning VYN212, chunk 1, message 1, byte ",
       "'run' has the type 401; expected one of the schema"},
      {"UnknownUnit", logWithEvent("unit:7"), "warning VYN213, chunk 1, message 1, byte ",
       "'run' has the unit 7; expected one of the schema"},
      {"UnknownValueType", logWithEvent("valueType:7"), "warning VYN214, chunk 1, message 1, byte ",
       "'run' has the value type 7; expected one of the schema"},
      {"NotANumber", logWithEvent("valueType:3,floatValue:nan"),
       "warning VYN221, chunk 1, message 1, byte ",
       "'run' has the value NaN; expected a finite number"},
      {"NotUtf8", replaced(logWithMessage("graphName:\"net\""), "net", "n\xfft"),
       "warning VYN222, chunk 1, message 1, byte ",
       "graphName 'n\\xfft'; expected well-formed UTF-8"},
      {"ZeroByte", replaced(logWithMessage("graphName:\"net\""), "net", std::string("n\0t", 3)),
       "warning VYN223, chunk 1, message 1, byte ",
       "graphName 'n\\x00t'; expected a zero byte at the end only"},
      {"NoValue", logWithEvent("valueType:6"), "warning VYN224, chunk 1, message 1, byte ",
       "'run' has the value type STRING; expected the field stringValue"},
      {"PayloadOutside", logWithEvent("unit:5,secondaryName:\"a/../b\""),
       "warning VYN225, chunk 1, message 1, byte ",
       "'run' goes to 'a/../b'; expected a relative name without .."},
      {"MoreThanParent",
       logWithEvent("unit:3,valueType:2,uint64Value:10,subEvents:["
                    "{unit:3,valueType:2,uint64Value:6},{unit:3,valueType:2,uint64Value:5}]"),
       "warning VYN226, chunk 1, message 1, byte ",
       "'run' has 10 CYCLES, its 2 parts have 11; expected no more than the event has; it is 1 "
       "more"}};
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

class CheckCodes : public HostTest, public testing::WithParamInterface<Case> {};

TEST_P(CheckCodes, IsToldOfItsSmallestLogAlone) {
  write("run.log", GetParam().log);
  const ProgramResult result = run({"check", "run.log"});
  const bool isError = GetParam().start.starts_with("error");
  EXPECT_EQ(result.exitStatus, isError ? 3 : 0);
  EXPECT_EQ(result.errors, "");
  const auto lines = linesOf(result.output);
  ASSERT_EQ(lines.size(), 3U) << result.output;
  EXPECT_THAT(lines[0], StartsWith("run.log: " + GetParam().start));
  EXPECT_THAT(lines[0], testing::EndsWith(GetParam().end));
  EXPECT_THAT(lines[1], StartsWith("run.log:   "));
  EXPECT_THAT(lines[2], StartsWith(isError ? "run.log: 1 error in " : "run.log: 1 warning in "));
}

std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Errors, CheckCodes, testing::ValuesIn(errors()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheLog, CheckCodes, testing::ValuesIn(warningsOfTheLog()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfMessages, CheckCodes, testing::ValuesIn(warningsOfMessages()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfEvents, CheckCodes, testing::ValuesIn(warningsOfEvents()), nameOf);

using CheckCodesOfLargeLogs = HostTest;

TEST_F(CheckCodesOfLargeLogs, AnErrorOfTheSystemIsTold) {
  const ProgramResult result = run({"check", "/proc/self/mem"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_THAT(result.output, StartsWith("/proc/self/mem: error VYN104, chunk 1, byte 0: the system "
                                        "could not read on: an error of the system behind 0 whole "
                                        "chunks; expected the rest of the log\n"));
}

TEST_F(CheckCodesOfLargeLogs, TextsThatOverlapAreNotAllLookedAt) {
  const std::string before = logOfSharedEvent(1, 8'000'000);  // gives nothing to the next chunk
  write("run.log", before + logOfOverlappingGraphNames(1000));
  const ProgramResult result = run({"check", "run.log"});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_THAT(result.output,
              HasSubstr("warning VYN204, chunk 2, byte " + std::to_string(before.size()) +
                        ": not all texts of a chunk were looked at: 996 texts were left "
                        "out; "));
}

}  // namespace
}  // namespace vyn::test
