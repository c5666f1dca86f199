#include "base/utf8.h"

#include <gtest/gtest.h>

namespace vyn::profiling {
namespace {

TEST(Utf8, TakesEachLengthAtItsEnds) {
  for (const char* text :
       {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
        "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "net \xC3\xA9 \xE2\x82\xAC"}) {
    EXPECT_TRUE(isUtf8(text)) << text;
    EXPECT_EQ(withoutInvalidUtf8(text), text);
  }
}

struct Invalid {
  std::string bytes;
  std::string text;
};

TEST(Utf8, RefusesWhatNoCharacterIs) {
  const std::string mark = "\xEF\xBF\xBD";
  for (const Invalid& invalid :
       {Invalid{"a\x80z", "a" + mark + "z"}, Invalid{"\xC0\x80", mark + mark},
        Invalid{"\xC1\xBF", mark + mark}, Invalid{"\xE0\x9F\xBF", mark + mark + mark},
        Invalid{"\xED\xA0\x80", mark + mark + mark},
        Invalid{"\xF0\x8F\xBF\xBF", mark + mark + mark + mark},
        Invalid{"\xF4\x90\x80\x80", mark + mark + mark + mark}, Invalid{"\xF5\x80", mark + mark},
        Invalid{"\xE2\x82", mark + mark}, Invalid{"\xC3", mark}, Invalid{"\xC3(", mark + "("},
        Invalid{"\xE2\x82(", mark + mark + "("}, Invalid{"\xF0\x90\x80(", mark + mark + mark + "("},
        Invalid{"\xFF", mark}}) {
    EXPECT_FALSE(isUtf8(invalid.bytes)) << invalid.text;
    EXPECT_EQ(withoutInvalidUtf8(invalid.bytes), invalid.text);
  }
}

TEST(Utf8, ZeroBytesAreCharacters) { EXPECT_TRUE(isUtf8(std::string_view("a\0b", 3))); }

}  // namespace
}  // namespace vyn::profiling
