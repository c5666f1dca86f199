#include "report/event_text.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <vector>

#include "support/foreign_locale.h"
#include "support/log_event.h"

namespace vyn::profiling {
namespace {

using test::EventUnit;

std::string text(EventDataType dataType, std::uint64_t word) {
  EventValue value;
  value.uint64 = word;
  return formatEventValue(dataType, value);
}

TEST(EventText, IntegersAreTheLowBitsOfTheirWidth) {
  constexpr std::uint64_t kOnes = 0xFFFFFFFFFFFFFFFF;
  EXPECT_EQ(text(EventDataType::INT_8, 0xFFFFFF80), "-128");
  EXPECT_EQ(text(EventDataType::INT_16, 0xFFFF8000), "-32768");
  EXPECT_EQ(text(EventDataType::INT_32, kOnes), "-1");
  EXPECT_EQ(text(EventDataType::INT_64, 0x8000000000000000), "-9223372036854775808");
  EXPECT_EQ(text(EventDataType::UINT_8, kOnes), "255");
  EXPECT_EQ(text(EventDataType::UINT_16, kOnes), "65535");
  EXPECT_EQ(text(EventDataType::UINT_32, kOnes), "4294967295");
  EXPECT_EQ(text(EventDataType::UINT_64, kOnes), "18446744073709551615");
}

TEST(EventText, FloatsHaveSixDecimals) {
  EXPECT_EQ(text(EventDataType::FLOAT_32, 0x3FC00000), "1.500000");
  EXPECT_EQ(text(EventDataType::FLOAT_32, 0xFFFFFFFF3FC00000),
            "1.500000");  // only the low half counts
  EXPECT_EQ(text(EventDataType::FLOAT_64, 0xC004000000000000), "-2.500000");
}

TEST(EventText, LargestDoubleIsWrittenOut) {
  EXPECT_EQ(text(EventDataType::FLOAT_64, 0x7FEFFFFFFFFFFFFF).size(), 309U + 7U);
  EXPECT_THAT(text(EventDataType::FLOAT_64, 0x7FEFFFFFFFFFFFFF), testing::StartsWith("1797693134"));
}

TEST(EventText, BooleansAreNumbers) {
  EXPECT_EQ(text(EventDataType::BOOL_8, 1), "1");
  EXPECT_EQ(text(EventDataType::BOOL_8, 0), "0");
}

TEST(EventText, UnknownTypesAreEmpty) {
  EXPECT_EQ(text(EventDataType::NONE, 7), "");
  EXPECT_EQ(text(EventDataType{0x0999}, 7), "");
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
  EXPECT_EQ(text(EventDataType::FLOAT_32, 0x3FC00000), "1.500000");
}

// Absent, microseconds, the backend's own, and two that the log has no name for.
constexpr std::uint32_t kOtherUnits[] = {0, 1, 1000, 7, 4294967295};

TEST(EventText, UnitsOfTheCsvStandInCapitals) {
  const auto named = [](EventUnit unit) { return unitToString(static_cast<std::uint32_t>(unit)); };
  EXPECT_STREQ(named(EventUnit::BYTES), "BYTES");
  EXPECT_STREQ(named(EventUnit::CYCLES), "CYCLES");
  EXPECT_STREQ(named(EventUnit::COUNT), "COUNT");
  EXPECT_STREQ(named(EventUnit::OBJECT), "OBJECT");
  EXPECT_STREQ(named(EventUnit::NONE), "NONE");
  for (const std::uint32_t unit : kOtherUnits) {
    EXPECT_STREQ(unitToString(unit), "US") << unit;
  }
}

TEST(EventText, UnitsOfTheConsoleFollowABlank) {
  const auto suffix = [](EventUnit unit) { return unitToSuffix(static_cast<std::uint32_t>(unit)); };
  EXPECT_STREQ(suffix(EventUnit::BYTES), " bytes");
  EXPECT_STREQ(suffix(EventUnit::CYCLES), " cycles");
  EXPECT_STREQ(suffix(EventUnit::COUNT), " count");
  EXPECT_STREQ(suffix(EventUnit::OBJECT), " object");
  EXPECT_STREQ(suffix(EventUnit::NONE), " ");
  for (const std::uint32_t unit : kOtherUnits) {
    EXPECT_STREQ(unitToSuffix(unit), " us") << unit;
  }
}

// Foreign readers and logs hold the numbers, not the names.
TEST(EventText, NumbersOfTypesAndUnitsStay) {
  using enum EventDataType;
  std::vector<std::uint32_t> types;
  for (const auto type : {NONE, INT_8, INT_16, INT_32, INT_64, UINT_8, UINT_16, UINT_32, UINT_64,
                          FLOAT_32, FLOAT_64, BOOL_8, STRING}) {
    types.push_back(static_cast<std::uint32_t>(type));
  }
  EXPECT_THAT(types, testing::ElementsAre(0, 0x0008, 0x0016, 0x0032, 0x0064, 0x0108, 0x0116, 0x0132,
                                          0x0164, 0x0232, 0x0264, 0x0508, 0x0608));
  std::vector<int> units;
  for (const auto unit : {EventUnit::BYTES, EventUnit::CYCLES, EventUnit::COUNT, EventUnit::OBJECT,
                          EventUnit::NONE}) {
    units.push_back(static_cast<int>(unit));
  }
  EXPECT_THAT(units, testing::ElementsAre(2, 3, 4, 5, 6));
}

}  // namespace
}  // namespace vyn::profiling
