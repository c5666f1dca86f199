#include "analysis/event_sum.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json_log.h"

namespace vyn::profiling {
namespace {

// The event of a chunk, summed up with its sub-events.
class Summed {
 public:
  explicit Summed(const std::string& event)
      : m_chunk(test::chunkBytes("{messages:[{header:{},appMetrics:{},profilingEvents:[{" + event +
                                 "}]}]}")),
        m_sum(outermost()) {
    for (const schema::Event* part : *outermost().subEvents()) {
      m_sum.add(*part);
    }
  }

  bool exceeds() const { return m_sum.exceedsWhole(); }
  std::string found() const { return m_sum.describe().found; }
  std::string expected() const { return m_sum.describe().expected; }

 private:
  const schema::Event& outermost() const {
    return *schema::GetProfileLog(m_chunk.data())->messages()->Get(0)->profilingEvents()->Get(0);
  }

  std::string m_chunk;
  EventSum m_sum;
};

bool exceeds(const std::string& event) { return Summed(event).exceeds(); }

const std::string kTenCycles = "identifier:\"run\",unit:3,valueType:2,uint64Value:10,";

TEST(EventSum, PartsMayBeAllOfTheWhole) {
  EXPECT_FALSE(exceeds(kTenCycles + "subEvents:[]"));
  EXPECT_FALSE(exceeds(kTenCycles + "subEvents:[{unit:3,valueType:2,uint64Value:10}]"));
  EXPECT_TRUE(exceeds(kTenCycles + "subEvents:[{unit:3,valueType:2,uint64Value:11}]"));
}

TEST(EventSum, AnotherUnitDoesNotCount) {
  EXPECT_FALSE(exceeds(kTenCycles + "subEvents:[{unit:1,valueType:2,uint64Value:11}]"));
}

TEST(EventSum, UnitsThatDoNotAddUpDoNotCount) {
  for (const char* unit : {"0", "5", "6", "1000", "7"}) {
    EXPECT_FALSE(exceeds(std::string("unit:") + unit +
                         ",valueType:2,uint64Value:1,subEvents:[{unit:" + unit +
                         ",valueType:2,uint64Value:2}]"))
        << unit;
  }
  for (const char* unit : {"1", "2", "3", "4"}) {
    EXPECT_TRUE(exceeds(std::string("unit:") + unit +
                        ",valueType:2,uint64Value:1,subEvents:[{unit:" + unit +
                        ",valueType:2,uint64Value:2}]"))
        << unit;
  }
}

TEST(EventSum, WhatIsNoNumberDoesNotCount) {
  EXPECT_FALSE(exceeds(kTenCycles + "subEvents:[{unit:3,valueType:6,stringValue:\"11\"},"
                                    "{unit:3,valueType:0,uint64Value:11},"
                                    "{unit:3,valueType:5,doubleValue:inf},"
                                    "{unit:3,valueType:3,floatValue:nan}]"));
  EXPECT_FALSE(exceeds("unit:3,subEvents:[{unit:3,valueType:2,uint64Value:1}]"));
  EXPECT_FALSE(
      exceeds("unit:3,valueType:5,doubleValue:nan,subEvents:"
              "[{unit:3,valueType:2,uint64Value:1}]"));
}

TEST(EventSum, NumbersOfAllKindsCount) {
  const std::string parts =
      "subEvents:[{unit:3,valueType:1,int64Value:-1},{unit:3,valueType:2,uint64Value:5},"
      "{unit:3,valueType:3,floatValue:3.5},{unit:3,valueType:5,doubleValue:3}]";
  const Summed sum(kTenCycles + parts);
  EXPECT_TRUE(sum.exceeds());
  EXPECT_EQ(sum.found(), "'run' has 10 CYCLES, its 4 parts have 10.5");
  EXPECT_EQ(sum.expected(), "no more than the event has; it is 0.5 more");
}

TEST(EventSum, WholeNumbersOf64BitsAreExact) {
  const std::string largest = "18446744073709551615";
  const std::string whole = "unit:3,valueType:2,uint64Value:" + largest + ",";
  const std::string part = "{unit:3,valueType:2,uint64Value:";
  EXPECT_FALSE(exceeds(whole + "subEvents:[" + part + largest + "}]"));
  EXPECT_FALSE(exceeds(whole + "subEvents:[" + part + "18446744073709551614}," + part + "1}]"));
  const Summed sum(whole + "subEvents:[" + part + largest + "}," + part + "1}]");
  EXPECT_TRUE(sum.exceeds());
  EXPECT_EQ(sum.expected(), "no more than the event has; it is 1 more");
}

TEST(EventSum, RoundingOfFloatingPointNumbersPasses) {
  const std::string whole = "unit:1,valueType:5,doubleValue:1000000,";
  const std::string part = "subEvents:[{unit:1,valueType:5,doubleValue:";
  EXPECT_FALSE(exceeds(whole + part + "1000000.9}]"));
  EXPECT_TRUE(exceeds(whole + part + "1000001.1}]"));
  // One floating-point part is enough.
  EXPECT_FALSE(exceeds("unit:1,valueType:2,uint64Value:1000000," + part + "1000000.9}]"));
}

}  // namespace
}  // namespace vyn::profiling
