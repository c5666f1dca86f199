// What the summary reader says and keeps when a log cannot be read.

#include "log/logger_registry.h"
#include "summary/summary_fixture.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class LogReading : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(log::initializeLogging(nullptr, log::kError)); }
  void TearDown() override { log::terminateLogging(); }

  TempFolder m_folder;
};

TEST_F(LogReading, NamesAMissingLog) {
  OpenReader reader(m_folder.path("missing.log"));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader.readInputFile(false)); }),
            "<ms> [ ERROR ] Invalid or nonexistent file: " + m_folder.path("missing.log") + "\n");
}

TEST_F(LogReading, KeepsTheMessagesBeforeACorruptChunk) {
  const std::string good = logWith({deInit({.duration = 7})});
  OpenReader reader(m_folder.add("run.log", good + framed("0123456789abcdef")));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader.readInputFile(true)); }),
            "<ms> [ ERROR ] Corrupted flatbuffer binary stream\n");
  EXPECT_EQ(reader.m_deInitTime, 7U);
  EXPECT_FALSE(reader.m_writeObjectPayloads);
}

TEST_F(LogReading, TakesAnEmptyLogForSound) {
  OpenReader reader(m_folder.add("run.log", ""));
  EXPECT_TRUE(reader.readInputFile(true));
  EXPECT_TRUE(reader.m_writeObjectPayloads);
}

TEST_F(LogReading, TakesPartOfALengthForTheEnd) {
  for (std::size_t rest = 1; rest <= 3; ++rest) {
    OpenReader reader(
        m_folder.add("run.log", logWith({deInit({.duration = 7})}) + std::string(rest, '\x01')));
    EXPECT_TRUE(reader.readInputFile(false));
    EXPECT_EQ(reader.m_deInitTime, 7U);
  }
}

TEST_F(LogReading, PassesOverAChunkWithoutHeaderAndMessages) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  OpenReader reader(m_folder.add("run.log", logOf({"{}", chunkOf({deInit({.duration = 7})})})));
  const std::string printed = printedBy([&] { EXPECT_TRUE(reader.readInputFile(false)); });
  log::terminateLogging();
  const std::string noHeader = "<ms> [ DEBUG ] hdr is nullptr\n";
  const std::string noMore =
      "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: ";
  const std::string end = "<ms> [ DEBUG ] profiling::VynProfileLogReader reached EOF!\n";
  EXPECT_EQ(printed, noHeader + noMore + "0)\n" + end + noHeader + noMore + "1)\n" + end);
  EXPECT_EQ(reader.m_deInitTime, 7U);
}

TEST_F(LogReading, LooksAtTheFirstHeaderAlone) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug));
  OpenReader reader(m_folder.add("run.log", logOf({"{header:{}}", "{header:{}}"})));
  const std::string printed = printedBy([&] { EXPECT_TRUE(reader.readInputFile(false)); });
  EXPECT_THAT(printed, Not(HasSubstr("Header details have been saved already.")));
}

TEST_F(LogReading, RefusesLengthsThatNoChunkHas) {
  for (const std::string& length :
       {std::string("\0\0\0\0", 4), std::string("\x0b\0\0\0", 4), std::string("\xff\xff\xff\x7f"),
        std::string("\xff\xff\xff\xff"), std::string("\xfe\xff\xff\x7f")}) {
    OpenReader reader(m_folder.add("run.log", length + "0123456789abcdef"));
    EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader.readInputFile(false)); }),
              "<ms> [ ERROR ] Corrupted flatbuffer binary stream\n");
  }
}

}  // namespace
}  // namespace vyn::test
