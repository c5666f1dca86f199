// Decoded events and their value words.

#include <limits>

#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DecodedEvents : public SummaryReaderTest {
 protected:
  std::vector<EventNode> decoded(const Events& events) {
    return decodedLog(logWith({deInit({}, events)}));
  }

  // The events of a log's only message, which are texts in the JSON form of the schema.
  std::vector<EventNode> decodedTexts(const std::string& events) {
    return decodedLog(
        logOf({"{messages:[{header:{},appMetrics:{},method:BACKEND_DEINIT,"
               "profilingEvents:[" +
               events + "]}]}"}));
  }

 private:
  std::vector<EventNode> decodedLog(const std::string& log) {
    m_reader = std::make_unique<OpenReader>(m_folder.add("run.log", log));
    EXPECT_TRUE(m_reader->readInputFile(false));
    return m_reader->m_deInitEvents;
  }

 protected:
  std::unique_ptr<OpenReader> m_reader;  // owns the texts
};

TEST_F(DecodedEvents, CarryEachKindOfValue) {
  const auto events = decoded({{.value = std::int64_t{-5}},
                               {.value = std::uint64_t{UINT64_MAX}},
                               {.value = 1.5F},
                               {.value = -2.5},
                               {.value = "text"},
                               {.value = Event::Bytes{1, 2, 255}},
                               {}});
  ASSERT_THAT(events, SizeIs(7));
  EXPECT_EQ(events[0].dataType, EventDataType{0x0064});
  EXPECT_EQ(events[0].value.int64, -5);
  EXPECT_EQ(events[1].dataType, EventDataType{0x0164});
  EXPECT_EQ(events[1].value.uint64, UINT64_MAX);
  EXPECT_EQ(events[2].dataType, EventDataType{0x0232});
  EXPECT_EQ(events[2].value.uint64, 0x3FC00000U);  // in the low half, the upper one 0
  EXPECT_EQ(events[3].dataType, EventDataType{0x0264});
  EXPECT_EQ(events[3].value.uint64, 0xC004000000000000U);
  EXPECT_EQ(events[4].dataType, EventDataType{0x0608});
  EXPECT_STREQ(events[4].value.text, "text");
  EXPECT_EQ(events[5].dataType, EventDataType::NONE);
  EXPECT_THAT(events[5].rawData, ElementsAre(1, 2, 255));
  EXPECT_EQ(events[6].dataType, EventDataType::NONE);
  EXPECT_EQ(events[6].value.uint64, 0U);
}

TEST_F(DecodedEvents, OfAnUnknownKindOfValueHaveNone) {
  EXPECT_EQ(decodedTexts("{valueType:7}").at(0).dataType, EventDataType::NONE);
}

TEST_F(DecodedEvents, HaveDefaultsForAbsentFields) {
  const EventNode node = decodedTexts("{}").at(0);
  EXPECT_EQ(node.identifier, "null");
  EXPECT_EQ(node.secondaryName, "");
  EXPECT_EQ(node.type, 0U);
  EXPECT_EQ(node.unit, 0U);
  EXPECT_EQ(node.extraValue, 0U);
  EXPECT_EQ(node.count, 1U);
  EXPECT_THAT(node.children, IsEmpty());
}

TEST_F(DecodedEvents, KeepAllFields) {
  const EventNode node = decoded({{.identifier = "conv",
                                   .unit = EventUnit::CYCLES,
                                   .type = EventType::NODE,
                                   .secondaryName = "file",
                                   .extraValue = 9}})
                             .at(0);
  EXPECT_EQ(node.identifier, "conv");
  EXPECT_EQ(node.secondaryName, "file");
  EXPECT_EQ(node.type, 404U);
  EXPECT_EQ(node.unit, 3U);
  EXPECT_EQ(node.extraValue, 9U);
}

TEST_F(DecodedEvents, KeepTheLargestNumbers) {
  const EventNode node = decoded({{.unit = EventUnit{4294967294},
                                   .type = EventType{4294967295},
                                   .extraValue = UINT64_MAX}})
                             .at(0);
  EXPECT_EQ(node.type, 4294967295U);
  EXPECT_EQ(node.unit, 4294967294U);
  EXPECT_EQ(node.extraValue, UINT64_MAX);
}

TEST_F(DecodedEvents, ReadAnAbsentTextAsEmptyAndAbsentDataAsNone) {
  const auto events = decodedTexts("{valueType:STRING},{valueType:RAW_DATA}");
  EXPECT_STREQ(events[0].value.text, "");
  EXPECT_THAT(events[1].rawData, IsEmpty());
}

TEST_F(DecodedEvents, NestSubEventsInOrder) {
  const auto events = decoded({number("a", 1, {number("b", 2, {number("c", 3)}), number("d", 4)})});
  ASSERT_THAT(namesOf(events[0].children), ElementsAre("b", "d"));
  EXPECT_THAT(namesOf(events[0].children[0].children), ElementsAre("c"));
}

TEST_F(DecodedEvents, KeepTheirTextsWhereTheyAreWhileThousandsFollow) {
  Events events;
  for (int i = 0; i < 5000; ++i) {
    events.push_back(text("note", "text " + std::to_string(i)));
  }
  const auto nodes = decoded(events);
  ASSERT_THAT(nodes, SizeIs(5000));
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    ASSERT_EQ(nodes[i].value.text, "text " + std::to_string(i));
  }
  EXPECT_THAT(m_reader->m_eventStrings, SizeIs(5000));
}

}  // namespace
}  // namespace vyn::test
