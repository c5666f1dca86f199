#include "input/enum_texts.h"

#include <gtest/gtest.h>

namespace vyn::profiling {
namespace {

TEST(EnumTexts, ZeroIsNoneForTypesAndEmptyForUnits) {
  EXPECT_STREQ(eventTypeText(schema::EventType{0}), "NONE");
  EXPECT_STREQ(eventUnitText(schema::EventUnit{0}), "");
  EXPECT_STREQ(eventUnitText(schema::EventUnit{6}), "NONE");
}

TEST(EnumTexts, MethodsWithoutATextAreEmpty) {
  for (const int method : {10, 11, 12, -1, -128, 127}) {
    EXPECT_STREQ(methodText(static_cast<schema::MethodType>(method)), "") << method;
  }
}

TEST(EnumTexts, UnknownNumbersAreEmpty) {
  EXPECT_STREQ(eventTypeText(schema::EventType{401}), "");
  EXPECT_STREQ(eventTypeText(schema::EventType{4294967295}), "");
  EXPECT_STREQ(eventUnitText(schema::EventUnit{7}), "");
  EXPECT_STREQ(eventUnitText(schema::EventUnit{4294967295}), "");
}

}  // namespace
}  // namespace vyn::profiling
