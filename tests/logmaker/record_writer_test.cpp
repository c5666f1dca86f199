#include "logmaker/record_writer.h"

#include <gtest/gtest.h>

#include "made_log.h"

namespace vyn::logmaker::test {
namespace {

using schema::EventType;
using schema::EventUnit;
using schema::MethodType;

std::string recordOf(const std::vector<Message>& messages, const LogHeader& header = {}) {
  const TempFolder folder;
  OutputFile file(folder.path("record"));
  RecordWriter record(file, header);
  for (const Message& message : messages) {
    record.write(message);
  }
  file.close();
  file.publish();
  const std::string text = readFile(folder.path("record"));
  return messages.empty() ? text : text.substr(text.find('\n') + 1);
}

Message messageWith(Event event) {
  return {.method = MethodType::BACKEND_DEINIT, .profilingEvents = {std::move(event)}};
}

std::string recordOf(Event event) { return recordOf({messageWith(std::move(event))}); }

std::string lineOf(const std::string& event) {
  return R"({"header":{"timestamp":0,"sequenceNumber":0},"method":"BACKEND_DEINIT",)"
         R"("profilingEvents":[)" +
         event + "]}\n";
}

TEST(RecordWriter, HeaderIsTheFirstLine) {
  EXPECT_EQ(recordOf({}, {.timeScale = 0.5F,
                          .epochTime = 18446744073709551615U,
                          .timestamp = 2,
                          .major = 3,
                          .minor = 4,
                          .teeny = 5,
                          .netRunVersion = "a",
                          .backendVersion = "b\"c"}),
            R"({"timeScale":0.5,"epochTime":18446744073709551615,"timestamp":2,)"
            R"("version":{"major":3,"minor":4,"teeny":5},)"
            R"("vynNetRunVersion":"a","backendVersion":"b\"c"})"
            "\n");
}

TEST(RecordWriter, MetricsOfZeroAreLeftOut) {
  EXPECT_EQ(recordOf({{.timestamp = 1,
                       .sequenceNumber = 2,
                       .method = MethodType::APP_CONTEXT_CREATE,
                       .appMetrics = {.startTime = 3, .stopMem = 4}}}),
            R"({"header":{"timestamp":1,"sequenceNumber":2},"method":"APP_CONTEXT_CREATE",)"
            R"("appMetrics":{"startTime":3,"stopMem":4}})"
            "\n");
}

TEST(RecordWriter, TwoMethodsHaveNoText) {
  const char kUnnamed[] = "{\"header\":{\"timestamp\":0,\"sequenceNumber\":0},\"method\":\"\"}\n";
  EXPECT_EQ(recordOf({{.method = MethodType::LIBRARY_LOAD}}), kUnnamed);
  EXPECT_EQ(recordOf({{.method = MethodType::APPLY_BINARY_SECTION}}), kUnnamed);
}

TEST(RecordWriter, TypeZeroHasATextAndUnitZeroHasNone) {
  EXPECT_EQ(recordOf(Event{.identifier = "e"}),
            lineOf(R"({"identifier":"e","unit":"","type":"NONE"})"));
  EXPECT_EQ(recordOf(Event{.identifier = "e", .type = EventType::NODE, .unit = EventUnit::NONE}),
            lineOf(R"({"identifier":"e","unit":"NONE","type":"NODE"})"));
}

TEST(RecordWriter, EachKindOfValueIsWrittenAsItself) {
  const auto lineWith = [](const std::string& value) {
    return lineOf(R"({"identifier":"e","unit":"","type":"NONE")" + value + "}");
  };
  const auto recordWith = [](EventValue value) {
    return recordOf(Event{.identifier = "e", .value = std::move(value)});
  };
  EXPECT_EQ(recordWith(std::int64_t{-5}), lineWith(R"(,"value":-5)"));
  EXPECT_EQ(recordWith(std::uint64_t{18446744073709551615U}),
            lineWith(R"(,"value":18446744073709551615)"));
  EXPECT_EQ(recordWith(1.0F), lineWith(R"(,"value":1.0)"));
  EXPECT_EQ(recordWith(0.1), lineWith(R"(,"value":0.1)"));
  EXPECT_EQ(recordWith(std::string("x")), lineWith(R"(,"value":"x")"));
  EXPECT_EQ(recordWith(std::vector<std::uint8_t>{1}), lineWith(""));
}

TEST(RecordWriter, SubEventsStandInTheirEvent) {
  EXPECT_EQ(
      recordOf(Event{.identifier = "a", .subEvents = {{.identifier = "b"}, {.identifier = "c"}}}),
      lineOf(R"({"identifier":"a","unit":"","type":"NONE","sub-events":[)"
             R"({"identifier":"b","unit":"","type":"NONE"},)"
             R"({"identifier":"c","unit":"","type":"NONE"}]})"));
}

}  // namespace
}  // namespace vyn::logmaker::test
