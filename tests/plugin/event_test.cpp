// One event of a log as an object of the document.

#include <utility>
#include <vector>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class JsonEvent : public JsonPlugin {
 protected:
  void expectEvent(const std::string& fields, const std::string& lines) {
    EXPECT_EQ(documentOf(logOfEventFields(fields)), documentOfEvent(lines)) << fields;
  }

  // What the document shows for an event's value.
  void expectValue(const Event& event, const std::string& shown) {
    EXPECT_THAT(linesOf("value", documentOf(logOfEvent(event))),
                ElementsAre("\"value\": " + shown));
  }

  void expectNoValue(const std::string& fields) {
    EXPECT_THAT(linesOf("value", documentOf(logOfEventFields(fields))), IsEmpty()) << fields;
  }
};

TEST_F(JsonEvent, WithoutAnyFieldHasEmptyUnitAndTypeNone) {
  expectEvent("", R"(                    "unit": "",
                    "type": "NONE")");
}

TEST_F(JsonEvent, KeepsTheOrderOfItsMembers) {
  expectEvent(
      "subEvents:[],valueType:UINT64,uint64Value:7,type:NODE,unit:CYCLES,identifier:\"conv\"",
      R"(                    "identifier": "conv",
                    "unit": "CYCLES",
                    "type": "NODE",
                    "value": 7,
                    "sub-events": [])");
}

TEST_F(JsonEvent, FloatIsWrittenWithItsDecimals) { expectValue({.value = 0.5F}, "0.5"); }

TEST_F(JsonEvent, FloatOneIsWrittenWithADecimal) { expectValue({.value = 1.0F}, "1.0"); }

TEST_F(JsonEvent, FloatIsWidenedToTheDoubleThatItIs) {
  expectValue({.value = 0.1F}, "0.10000000149011612");
}

TEST_F(JsonEvent, DoubleReadsBackToItself) { expectValue({.value = 0.1}, "0.1"); }

TEST_F(JsonEvent, NegativeIntegerHasItsSign) { expectValue({.value = std::int64_t{-5}}, "-5"); }

TEST_F(JsonEvent, LargestUnsignedIntegerStaysUnsigned) {
  expectValue(number("conv", UINT64_MAX), "18446744073709551615");
}

TEST_F(JsonEvent, NumberThatIsAbsentIsZero) { expectValue(number("conv", 0), "0"); }

TEST_F(JsonEvent, TextStandsInQuotes) { expectValue(text("mode", "on"), "\"on\""); }

TEST_F(JsonEvent, TextThatIsAbsentReadsAsTheEmptyText) {
  EXPECT_THAT(linesOf("value", documentOf(logOfEventFields("valueType:STRING"))),
              ElementsAre("\"value\": \"\""));
}

TEST_F(JsonEvent, RawDataHasNoValueWhateverOtherFieldsHold) {
  expectNoValue("valueType:RAW_DATA,rawData:[1,2],uint64Value:9,stringValue:\"x\"");
}

TEST_F(JsonEvent, NoValueKindHasNoValue) { expectNoValue("uint64Value:9"); }

TEST_F(JsonEvent, UnknownValueKindHasNoValue) { expectNoValue("valueType:7,uint64Value:9"); }

TEST_F(JsonEvent, OtherFieldsAreNotWritten) {
  expectEvent("secondaryName:\"file.bin\",extraValue:4", R"(                    "unit": "",
                    "type": "NONE")");
}

TEST_F(JsonEvent, TextsEndAtTheirFirstZeroByte) {
  std::string log = logOfEvent(text("abc#def", "uvw#xyz"));
  for (char& character : log) {
    character = character == '#' ? '\0' : character;
  }
  EXPECT_EQ(documentOf(log), documentOfEvent(R"(                    "identifier": "abc",
                    "unit": "",
                    "type": "NONE",
                    "value": "uvw")"));
}

TEST_F(JsonEvent, TextsAreWholeWhateverTheirLength) {
  // Around 13 bytes, where RapidJSON stops keeping texts inside the value, and around 256.
  for (const std::size_t length : {0U, 1U, 12U, 13U, 14U, 255U, 256U, 257U, 70000U}) {
    const std::string identifier(length, 'x');
    const auto reader = readLog(logOfEvent({.identifier = identifier}));
    EXPECT_THAT(output(*reader), HasSubstr("\"identifier\": \"" + identifier + "\",")) << length;
  }
}

TEST_F(JsonEvent, SubEventsNestInTheOrderOfTheLog) {
  expectEvent(
      "identifier:\"a\",subEvents:[{identifier:\"b\",subEvents:[{identifier:\"c\"}]},"
      "{identifier:\"d\"}]",
      R"(                    "identifier": "a",
                    "unit": "",
                    "type": "NONE",
                    "sub-events": [
                        {
                            "identifier": "b",
                            "unit": "",
                            "type": "NONE",
                            "sub-events": [
                                {
                                    "identifier": "c",
                                    "unit": "",
                                    "type": "NONE"
                                }
                            ]
                        },
                        {
                            "identifier": "d",
                            "unit": "",
                            "type": "NONE"
                        }
                    ])");
}

TEST_F(JsonEvent, ObjectEventsAreWrittenLikeAllOthers) {
  expectValue(ofUnit(EventUnit::OBJECT, number("dump", 3)), "3");
}

TEST_F(JsonEvent, EveryTypeHasItsText) {
  const std::vector<std::pair<std::uint32_t, std::string>> texts{{0, "NONE"},
                                                                 {100, "INIT"},
                                                                 {300, "FINALIZE"},
                                                                 {400, "EXECUTE"},
                                                                 {404, "NODE"},
                                                                 {405, "EXECUTE_QUEUE_WAIT"},
                                                                 {406, "EXECUTE_PREPROCESS"},
                                                                 {407, "EXECUTE_DEVICE"},
                                                                 {408, "EXECUTE_POSTPROCESS"},
                                                                 {500, "DEINIT"},
                                                                 {1000, "BACKEND"},
                                                                 {200, ""},
                                                                 {401, ""}};
  Events events;
  std::vector<std::string> lines;
  for (const auto& [code, text] : texts) {
    events.push_back({.type = EventType{code}});
    lines.push_back("\"type\": \"" + text + "\"");
  }
  EXPECT_EQ(linesOf("type", documentOf(logWith({{.events = events}}))), lines);
}

TEST_F(JsonEvent, EveryUnitHasItsText) {
  const std::vector<std::pair<std::uint32_t, std::string>> texts{
      {0, ""},       {1, "MICROSEC"}, {2, "BYTES"}, {3, "CYCLES"},    {4, "COUNT"},
      {5, "OBJECT"}, {6, "NONE"},     {7, ""},      {1000, "BACKEND"}};
  Events events;
  std::vector<std::string> lines;
  for (const auto& [code, text] : texts) {
    events.push_back({.unit = EventUnit{code}});
    lines.push_back("\"unit\": \"" + text + "\",");
  }
  EXPECT_EQ(linesOf("unit", documentOf(logWith({{.events = events}}))), lines);
}

}  // namespace
}  // namespace vyn::test
