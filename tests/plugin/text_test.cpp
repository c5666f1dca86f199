// Texts and numbers of every kind, as JSON.

#include <rapidjson/document.h>

#include <iomanip>
#include <sstream>

#include "plugin/json_fixture.h"
#include "support/foreign_locale.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

class JsonText : public JsonPlugin {
 protected:
  // Replaces every # of the identifier in the log's bytes, so that any byte can stand there.
  static std::string logWithByte(const std::string& identifier, char byte) {
    std::string log = logOfEvent({.identifier = identifier});
    for (char& character : log) {
      character = character == '#' ? byte : character;
    }
    return log;
  }

  static std::string escaped(char byte) {
    switch (byte) {
      case '\b':
        return "\\b";
      case '\f':
        return "\\f";
      case '\n':
        return "\\n";
      case '\r':
        return "\\r";
      case '\t':
        return "\\t";
      default: {
        std::ostringstream text;
        text << "\\u00" << std::hex << std::uppercase << std::setw(2) << std::setfill('0')
             << static_cast<int>(byte);
        return text.str();
      }
    }
  }
};

TEST_F(JsonText, EveryControlCharacterIsEscapedAtEveryAlignment) {
  for (char byte = 1; byte < 0x20; ++byte) {
    std::string identifiers;
    for (std::size_t before = 0; before < 17; ++before) {
      identifiers += std::string(before, 'x') + "#" + std::string(17 - before, 'y');
    }
    const auto reader = readLog(logWithByte(identifiers, byte));
    const std::string document = output(*reader);
    std::string expected;
    for (std::size_t before = 0; before < 17; ++before) {
      expected += std::string(before, 'x') + escaped(byte) + std::string(17 - before, 'y');
    }
    EXPECT_THAT(document, HasSubstr("\"" + expected + "\"")) << int{byte};
    rapidjson::Document parsed;
    EXPECT_FALSE(parsed.Parse(document.c_str()).HasParseError()) << int{byte};
  }
}

TEST_F(JsonText, ShortTextsWithControlCharactersAreEscapedToo) {
  for (char byte = 1; byte < 0x20; ++byte) {
    const auto reader = readLog(logWithByte("a#", byte));
    EXPECT_THAT(output(*reader), HasSubstr("\"a" + escaped(byte) + "\"")) << int{byte};
  }
}

TEST_F(JsonText, QuotesAndBackslashesAreEscaped) {
  EXPECT_THAT(documentOf(logOfEvent({.identifier = R"(say "hi" \ bye)"})),
              HasSubstr(R"("identifier": "say \"hi\" \\ bye",)"));
}

TEST_F(JsonText, SlashesAndTextsOfOtherScriptsAreWrittenAsTheyStand) {
  EXPECT_THAT(documentOf(logOfEvent({.identifier = "a/b \xC3\xA4 \xE6\xB7\xB1"})),
              HasSubstr("\"identifier\": \"a/b \xC3\xA4 \xE6\xB7\xB1\","));
}

TEST_F(JsonText, BytesThatAreNotUtf8PassThrough) {
  EXPECT_THAT(documentOf(logWithByte("a#b", '\xFF')), HasSubstr("\"identifier\": \"a\xFF"
                                                                "b\","));
}

TEST_F(JsonText, EqualTextsOfManyEventsAreAllWritten) {
  const Event event{.identifier = "a name of more than thirteen bytes"};
  const std::string document = documentOf(logWith({{.events = Events(50, event)}}));
  EXPECT_EQ(
      linesOf("identifier", document),
      std::vector<std::string>(50, "\"identifier\": \"a name of more than thirteen bytes\","));
}

TEST_F(JsonText, NumbersArePlainInAGroupingLocale) {
  const GlobalGroupingLocale grouping;
  const std::string document = documentOf(logOfEvent(number("conv", 1234567, {{.value = 1234.5}})));
  EXPECT_THAT(document, HasSubstr("\"value\": 1234567,"));
  EXPECT_THAT(document, HasSubstr("\"value\": 1234.5\n"));
}

}  // namespace
}  // namespace vyn::test
