// What all readers of a process share: the document of all reads, and the first output.

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

std::string logWithSequence(int number) {
  return logOf(
      {"{messages:[{header:{sequenceNumber:" + std::to_string(number) + "},appMetrics:{}}]}"});
}

std::string messageObject(int number, const std::string& indent) {
  return indent + "{\n" + indent + "    \"header\": {\n" + indent + "        \"timestamp\": 0,\n" +
         indent + "        \"sequenceNumber\": " + std::to_string(number) + "\n" + indent +
         "    },\n" + indent + "    \"method\": \"NONE\"\n" + indent + "}\n";
}

std::string objectDocument(int number) {
  return "{\n    \"messages\": [\n" + messageObject(number, "        ") + "    ]\n}\n";
}

std::string arrayDocument(std::initializer_list<int> numbers) {
  std::string elements;
  for (const int number : numbers) {
    elements += (elements.empty() ? "" : ",\n");
    elements += "    {\n        \"messages\": [\n" + messageObject(number, "            ") +
                "        ]\n    }";
  }
  return "[\n" + elements + "\n]\n";
}

using JsonProcess = JsonPlugin;

TEST_F(JsonProcess, FirstOutputIsAnObjectLaterOnesAnArrayOfAllReads) {
  const auto first = readLog(logWithSequence(1));
  EXPECT_EQ(output(*first), objectDocument(1));
  const auto second = readLog(logWithSequence(2));
  EXPECT_EQ(output(*second), arrayDocument({1, 2}));
}

TEST_F(JsonProcess, SecondOutputOfOneReaderIsAnArray) {
  const auto reader = readLog(logWithSequence(1));
  output(*reader);
  EXPECT_EQ(output(*reader), arrayDocument({1}));
}

TEST_F(JsonProcess, FirstOutputAfterTwoReadsFailsWithAnEmptyFileAndTheNextIsTheArray) {
  const auto first = readLog(logWithSequence(1));
  const auto second = readLog(logWithSequence(2));
  const std::string printed = printedBy([&] { EXPECT_EQ(output(*first, false), ""); });
  EXPECT_EQ(printed, "");
  EXPECT_EQ(output(*first), arrayDocument({1, 2}));
}

TEST_F(JsonProcess, ReadsStandInTheOrderInWhichTheyCompleted) {
  const auto first = m_plugin.reader(m_folder.add("first.log", logWithSequence(1)));
  const auto second = readLog(logWithSequence(2));
  ASSERT_TRUE(first->readInputFile(false));
  output(*first, false);
  EXPECT_EQ(output(*first), arrayDocument({2, 1}));
}

TEST_F(JsonProcess, ReadsOfDestroyedReadersStay) {
  readLog(logWithSequence(1)).reset();
  const auto second = readLog(logWithSequence(2));
  output(*second, false);
  EXPECT_EQ(output(*second), arrayDocument({1, 2}));
}

TEST_F(JsonProcess, OutputWithoutAnyReadFailsWithAnEmptyFile) {
  const auto reader = m_plugin.reader("nothing");
  EXPECT_EQ(output(*reader, false), "");
  EXPECT_EQ(output(*reader), "[]\n");
}

TEST_F(JsonProcess, CorruptChunkAfterGoodOnesLeavesNothingInTheDocument) {
  const auto reader =
      m_plugin.reader(m_folder.add("cut.log", logWithSequence(1) + framed("no buffer at all")));
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Corrupted flatbuffer binary stream\n");
  EXPECT_EQ(output(*reader, false), "");
}

TEST_F(JsonProcess, ReaderReadsOnce) {
  const auto reader = readLog(logWithSequence(1));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  EXPECT_EQ(output(*reader), objectDocument(1));
}

TEST_F(JsonProcess, FailedOpenDoesNotCountAsTheFirstOutput) {
  const auto reader = readLog(logWithSequence(1));
  printedBy([&] { EXPECT_FALSE(reader->generateOutput(m_folder.path("no/such/folder.json"))); });
  EXPECT_EQ(output(*reader), objectDocument(1));
}

}  // namespace
}  // namespace vyn::test
