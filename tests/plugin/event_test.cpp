// One event of a log as an object of the document.

#include <utility>
#include <vector>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

class JsonEvent : public JsonPlugin {
 protected:
  void expectEvent(const std::string& fields, const std::string& lines) {
    EXPECT_EQ(documentOf(logOfEvent(fields)), documentOfEvent(lines)) << fields;
  }

  // The line of one key among the lines of an event.
  void expectLine(const std::string& fields, const std::string& line) {
    EXPECT_NE(documentOf(logOfEvent(fields)).find("\n                    " + line + "\n"),
              std::string::npos)
        << fields << " should give " << line;
  }

  void expectNoValue(const std::string& fields) {
    EXPECT_EQ(documentOf(logOfEvent(fields)).find("\"value\""), std::string::npos) << fields;
  }
};

TEST_F(JsonEvent, WithoutAnyFieldHasEmptyUnitAndTypeNone) {
  expectEvent("", R"(                    "unit": "",
                    "type": "NONE")");
}

TEST_F(JsonEvent, KeepsTheOrderOfItsMembers) {
  expectEvent("subEvents:[],valueType:2,uint64Value:7,type:404,unit:3,identifier:\"conv\"",
              R"(                    "identifier": "conv",
                    "unit": "CYCLES",
                    "type": "NODE",
                    "value": 7,
                    "sub-events": [])");
}

TEST_F(JsonEvent, FloatIsWidenedAndAlwaysWrittenAsAFloatingNumber) {
  expectLine("valueType:3,floatValue:0.5", "\"value\": 0.5");
}

TEST_F(JsonEvent, FloatOneIsWrittenWithADecimal) {
  expectLine("valueType:3,floatValue:1.0", "\"value\": 1.0");
}

TEST_F(JsonEvent, FloatIsWidenedToTheDoubleThatItIs) {
  expectLine("valueType:3,floatValue:0.1", "\"value\": 0.10000000149011612");
}

TEST_F(JsonEvent, DoubleReadsBackToItself) {
  expectLine("valueType:5,doubleValue:0.1", "\"value\": 0.1");
}

TEST_F(JsonEvent, NegativeIntegerHasItsSign) {
  expectLine("valueType:1,int64Value:-5", "\"value\": -5");
}

TEST_F(JsonEvent, LargestUnsignedIntegerStaysUnsigned) {
  expectLine("valueType:2,uint64Value:18446744073709551615", "\"value\": 18446744073709551615");
}

TEST_F(JsonEvent, AbsentNumberOfItsKindIsZero) { expectLine("valueType:2", "\"value\": 0"); }

TEST_F(JsonEvent, TextValue) { expectLine("valueType:6,stringValue:\"on\"", "\"value\": \"on\""); }

TEST_F(JsonEvent, AbsentTextValueReadsAsTheEmptyText) {
  expectLine("valueType:6", "\"value\": \"\"");
}

TEST_F(JsonEvent, RawDataHasNoValueWhateverOtherFieldsHold) {
  expectNoValue("valueType:4,rawData:[1,2],uint64Value:9,stringValue:\"x\"");
}

TEST_F(JsonEvent, NoValueKindHasNoValue) { expectNoValue("uint64Value:9"); }

TEST_F(JsonEvent, UnknownValueKindHasNoValue) { expectNoValue("valueType:7,uint64Value:9"); }

TEST_F(JsonEvent, OtherFieldsAreNotWritten) {
  expectEvent("secondaryName:\"file.bin\",extraValue:4", R"(                    "unit": "",
                    "type": "NONE")");
}

TEST_F(JsonEvent, TextsEndAtTheirFirstZeroByte) {
  std::string log = logOfEvent("identifier:\"abc#def\",valueType:6,stringValue:\"uvw#xyz\"");
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
    const std::string text(length, 'x');
    LoadedPlugin::Reader reader = readLog(logOfEvent("identifier:\"" + text + "\""));
    EXPECT_NE(output(*reader).find("\"identifier\": \"" + text + "\","), std::string::npos)
        << length;
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
  expectLine("unit:\"OBJECT\",valueType:2,uint64Value:3", "\"value\": 3");
}

using CodeText = std::pair<int, const char*>;

TEST_F(JsonEvent, EveryTypeHasItsText) {
  const std::vector<CodeText> texts{{0, "NONE"},
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
  for (const auto& [code, text] : texts) {
    const auto reader = readLog(logOfEvent("type:" + std::to_string(code)));
    const std::string document = output(*reader);
    const std::size_t last = document.rfind("\"type\": ");
    EXPECT_EQ(document.substr(last, document.find('\n', last) - last),
              std::string("\"type\": \"") + text + "\"")
        << code;
  }
}

TEST_F(JsonEvent, EveryUnitHasItsText) {
  const std::vector<CodeText> texts{{0, ""},       {1, "MICROSEC"}, {2, "BYTES"},
                                    {3, "CYCLES"}, {4, "COUNT"},    {5, "OBJECT"},
                                    {6, "NONE"},   {7, ""},         {1000, "BACKEND"}};
  for (const auto& [code, text] : texts) {
    LoadedPlugin::Reader reader = readLog(logOfEvent("unit:" + std::to_string(code)));
    const std::string document = output(*reader);
    const std::size_t last = document.rfind("\"unit\": ");
    EXPECT_EQ(document.substr(last, document.find(',', last) - last),
              std::string("\"unit\": \"") + text + "\"")
        << code;
  }
}

}  // namespace
}  // namespace vyn::test
