// Decoded events and their value words.

#include <bit>

#include "base/base_fixture.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;

class DecodedEvents : public BaseReader {
 protected:
  // The events of a de-init message with these events.
  std::vector<EventNode> decoded(const std::string& events) {
    m_reader = read({message("5", 1, 1, "profilingEvents:[" + events + "]")});
    return m_reader->m_deInitEvents;
  }

  std::unique_ptr<OpenReader> m_reader;  // owns the texts
};

TEST_F(DecodedEvents, EachKindOfValue) {
  const auto events = decoded(
      "{valueType:1,int64Value:-5},{valueType:2,uint64Value:18446744073709551615},"
      "{valueType:3,floatValue:1.5},{valueType:5,doubleValue:-2.5},"
      "{valueType:6,stringValue:\"text\"},{valueType:4,rawData:[1,2,255]},{valueType:7},{}");
  EXPECT_EQ(events[0].dataType, EventDataType{0x0064});
  EXPECT_EQ(events[0].value.int64, -5);
  EXPECT_EQ(events[1].dataType, EventDataType{0x0164});
  EXPECT_EQ(events[1].value.uint64, 18446744073709551615U);
  EXPECT_EQ(events[2].dataType, EventDataType{0x0232});
  EXPECT_EQ(events[2].value.uint64, 0x3FC00000U);  // in the low half, the upper one 0
  EXPECT_EQ(events[3].dataType, EventDataType{0x0264});
  EXPECT_EQ(events[3].value.uint64, 0xC004000000000000U);
  EXPECT_EQ(events[4].dataType, EventDataType{0x0608});
  EXPECT_STREQ(events[4].value.text, "text");
  EXPECT_EQ(events[5].dataType, EventDataType::NONE);
  EXPECT_EQ(events[5].rawData, (std::vector<std::uint8_t>{1, 2, 255}));
  EXPECT_EQ(events[6].dataType, EventDataType::NONE);
  EXPECT_EQ(events[7].dataType, EventDataType::NONE);
  EXPECT_EQ(events[7].value.uint64, 0U);
}

TEST_F(DecodedEvents, AbsentFieldsHaveTheirDefaults) {
  const EventNode node = decoded("{}").front();
  EXPECT_EQ(node.identifier, "null");
  EXPECT_EQ(node.secondaryName, "");
  EXPECT_EQ(node.type, 0U);
  EXPECT_EQ(node.unit, 0U);
  EXPECT_EQ(node.extraValue, 0U);
  EXPECT_EQ(node.count, 1U);
  EXPECT_TRUE(node.children.empty());
}

TEST_F(DecodedEvents, AllFieldsAreKept) {
  const EventNode node =
      decoded("{identifier:\"x\",secondaryName:\"file\",type:404,unit:3,extraValue:9}").front();
  EXPECT_EQ(node.identifier, "x");
  EXPECT_EQ(node.secondaryName, "file");
  EXPECT_EQ(node.type, 404U);
  EXPECT_EQ(node.unit, 3U);
  EXPECT_EQ(node.extraValue, 9U);
}

TEST_F(DecodedEvents, LargestNumbersAreKept) {
  const EventNode node =
      decoded("{type:4294967295,unit:4294967294,extraValue:18446744073709551615}").front();
  EXPECT_EQ(node.type, 4294967295U);
  EXPECT_EQ(node.unit, 4294967294U);
  EXPECT_EQ(node.extraValue, 18446744073709551615U);
}

TEST_F(DecodedEvents, AbsentTextIsEmptyAndAbsentDataIsNone) {
  const auto events = decoded("{valueType:6},{valueType:4}");
  EXPECT_STREQ(events[0].value.text, "");
  EXPECT_TRUE(events[1].rawData.empty());
}

TEST_F(DecodedEvents, SubEventsNestInOrder) {
  const auto events = decoded(
      "{identifier:\"a\",subEvents:[{identifier:\"b\",subEvents:[{identifier:\"c\"}]},"
      "{identifier:\"d\"}]}");
  EXPECT_EQ(names(events[0].children), "b d ");
  EXPECT_EQ(names(events[0].children[0].children), "c ");
}

TEST_F(DecodedEvents, TextsStayWhereTheyAreWhileThousandsFollow) {
  std::string events;
  for (int i = 0; i < 5000; ++i) {
    events += "{valueType:6,stringValue:\"text " + std::to_string(i) + "\"},";
  }
  events.pop_back();
  const auto nodes = decoded(events);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    ASSERT_EQ(nodes[i].value.text, "text " + std::to_string(i));
  }
  EXPECT_EQ(m_reader->m_eventStrings.size(), 5000U);
}

}  // namespace
}  // namespace vyn::test
