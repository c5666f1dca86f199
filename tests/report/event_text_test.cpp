#include "report/event_text.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "support/foreign_locale.h"

namespace vyn::profiling {
namespace {

std::string text(std::uint32_t code, std::uint64_t word) {
  EventValue value;
  value.uint64 = word;
  return formatEventValue(EventDataType{code}, value);
}

TEST(EventText, IntegersAreTheLowBitsOfTheirWidth) {
  constexpr std::uint64_t kOnes = 0xFFFFFFFFFFFFFFFF;
  EXPECT_EQ(text(0x0008, 0xFFFFFF80), "-128");
  EXPECT_EQ(text(0x0016, 0xFFFF8000), "-32768");
  EXPECT_EQ(text(0x0032, kOnes), "-1");
  EXPECT_EQ(text(0x0064, 0x8000000000000000), "-9223372036854775808");
  EXPECT_EQ(text(0x0108, kOnes), "255");
  EXPECT_EQ(text(0x0116, kOnes), "65535");
  EXPECT_EQ(text(0x0132, kOnes), "4294967295");
  EXPECT_EQ(text(0x0164, kOnes), "18446744073709551615");
}

TEST(EventText, FloatsHaveSixDecimals) {
  EXPECT_EQ(text(0x0232, 0x3FC00000), "1.500000");
  EXPECT_EQ(text(0x0232, 0xFFFFFFFF3FC00000), "1.500000");  // only the low half counts
  EXPECT_EQ(text(0x0264, 0xC004000000000000), "-2.500000");
}

TEST(EventText, LargestDoubleIsWrittenOut) {
  EXPECT_EQ(text(0x0264, 0x7FEFFFFFFFFFFFFF).size(), 309U + 7U);
  EXPECT_THAT(text(0x0264, 0x7FEFFFFFFFFFFFFF), testing::StartsWith("1797693134"));
}

TEST(EventText, BooleansAreNumbers) {
  EXPECT_EQ(text(0x0508, 1), "1");
  EXPECT_EQ(text(0x0508, 0), "0");
}

TEST(EventText, UnknownTypesAreEmpty) {
  EXPECT_EQ(text(0, 7), "");
  EXPECT_EQ(text(0x0999, 7), "");
}

TEST(EventText, TextsAreCopied) {
  EventValue value;
  value.text = "on, off";
  EXPECT_EQ(formatEventValue(EventDataType::STRING, value), "on, off");
}

TEST(EventText, NullTextThrows) {
  EventValue value;
  value.text = nullptr;
  try {
    formatEventValue(EventDataType::STRING, value);
    FAIL();
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "basic_string::_M_construct null not valid");
  }
}

TEST(EventText, FloatsHaveAPointWhateverTheLocale) {
  const test::GermanLocale german;
  EXPECT_EQ(text(0x0232, 0x3FC00000), "1.500000");
}

TEST(EventText, UnitsOfTheCsvStandInCapitals) {
  EXPECT_STREQ(unitToString(2), "BYTES");
  EXPECT_STREQ(unitToString(3), "CYCLES");
  EXPECT_STREQ(unitToString(4), "COUNT");
  EXPECT_STREQ(unitToString(5), "OBJECT");
  EXPECT_STREQ(unitToString(6), "NONE");
  for (const std::uint32_t unit : {0U, 1U, 7U, 1000U, 4294967295U}) {
    EXPECT_STREQ(unitToString(unit), "US") << unit;
  }
}

TEST(EventText, UnitsOfTheConsoleFollowABlank) {
  EXPECT_STREQ(unitToSuffix(2), " bytes");
  EXPECT_STREQ(unitToSuffix(3), " cycles");
  EXPECT_STREQ(unitToSuffix(4), " count");
  EXPECT_STREQ(unitToSuffix(5), " object");
  EXPECT_STREQ(unitToSuffix(6), " ");
  for (const std::uint32_t unit : {0U, 1U, 7U, 1000U, 4294967295U}) {
    EXPECT_STREQ(unitToSuffix(unit), " us") << unit;
  }
}

}  // namespace
}  // namespace vyn::profiling
