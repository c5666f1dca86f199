// What the readers say to developers: the JSON reader starts logging for errors only, so this
// program has a startLogging of its own.

#include <gtest/gtest.h>

#include <string>

#include "core/start_logging.h"
#include "core/vyn_profile_log_reader.h"
#include "core/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/log_message.h"
#include "support/temp_folder.h"

namespace vyn::profiling {

bool startLogging(std::int32_t /*maxLevel*/) {
  return log::initializeLogging(nullptr, log::kDebug);
}

namespace {

using test::printedBy;

const std::string kNoHeader = "<ms> [ DEBUG ] hdr is nullptr\n";
const std::string kSavedAlready = "<ms> [ DEBUG ] Header details have been saved already.\n";
const std::string kUnavailable = "<ms> [ DEBUG ] Header details unavailable.\n";
const std::string kEnd = "<ms> [ DEBUG ] profiling::VynProfileLogReader reached EOF!\n";

std::string noMore(int messageCount) {
  return "<ms> [ DEBUG ] profiling::FlatBufferReaderUtil no more messages! (Message Counter: " +
         std::to_string(messageCount) + ")\n";
}

const std::string kTwoMessages = test::chunkOf({test::createContext(), test::createContext()});
const std::string kHeaderAndMessage = test::chunkOf({test::createContext()}, "{timestamp:1}");

template <typename Reader>
class DebugLines : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(log::initializeLogging(nullptr, log::kDebug)); }
  void TearDown() override { log::terminateLogging(); }

  // What reading a log of these chunks prints, and then what asking for its header does.
  void expectLines(std::initializer_list<std::string> chunks, const std::string& whileReading,
                   const std::string& afterwards) {
    Reader reader(m_folder.add("run.log", test::logOf(chunks)), VisibilityLevel{127});
    EXPECT_EQ(printedBy([&] { EXPECT_TRUE(reader.readInputFile(false)); }), whileReading);
    EXPECT_EQ(printedBy([&] { reader.getHeaderDetails(); }), afterwards);
  }

  static constexpr bool kKeepsHeaders = std::is_same_v<Reader, VynProfileLogReader>;

  test::TempFolder m_folder;
};

using Readers = testing::Types<VynProfileLogReader, VynProfileLogReaderJSON>;
TYPED_TEST_SUITE(DebugLines, Readers);

TYPED_TEST(DebugLines, AreNoneForAnEmptyLog) { this->expectLines({}, "", kUnavailable); }

TYPED_TEST(DebugLines, TellTheMessagesOfEachChunk) {
  this->expectLines({kHeaderAndMessage, kTwoMessages, "{messages:[]}", "{}"},
                    noMore(1) + kEnd + noMore(2) + kEnd + noMore(0) + kEnd + noMore(0) + kEnd,
                    this->kKeepsHeaders ? "" : kUnavailable);
}

TYPED_TEST(DebugLines, TellOfEachChunkWithoutAHeaderUntilThereIsOne) {
  this->expectLines({"{}", kTwoMessages, kHeaderAndMessage, "{header:{}}", "{}"},
                    kNoHeader + noMore(0) + kEnd + kNoHeader + noMore(2) + kEnd + noMore(1) + kEnd +
                        noMore(0) + kEnd + noMore(0) + kEnd,
                    this->kKeepsHeaders ? "" : kUnavailable);
}

TYPED_TEST(DebugLines, TellThatNoChunkHadAHeader) {
  this->expectLines({kTwoMessages}, kNoHeader + noMore(2) + kEnd, kUnavailable);
}

TYPED_TEST(DebugLines, TellThatNothingWasRead) {
  TypeParam reader("run.log", VisibilityLevel{127});
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader.processNextMessage()); }), noMore(0) + kEnd);
  EXPECT_EQ(printedBy([&] { EXPECT_EQ(reader.getHeaderDetails(), ""); }), kUnavailable);
}

class HeaderSaver : public VynProfileLogReader {
 public:
  using VynProfileLogReader::saveHeader;
  using VynProfileLogReader::VynProfileLogReader;
};

using DebugLinesOfHeaders = DebugLines<HeaderSaver>;

TEST_F(DebugLinesOfHeaders, TellThatThereIsNothingToSave) {
  HeaderSaver reader("run.log", VisibilityLevel{127});
  EXPECT_EQ(printedBy([&] { reader.saveHeader(); }), kNoHeader);
}

TEST_F(DebugLinesOfHeaders, TellEachTimeThatTheHeaderWasSaved) {
  HeaderSaver reader(m_folder.add("run.log", test::logOf({kHeaderAndMessage})),
                     VisibilityLevel{127});
  printedBy([&] { EXPECT_TRUE(reader.readInputFile(false)); });
  EXPECT_EQ(printedBy([&] {
              reader.saveHeader();
              reader.saveHeader();
            }),
            kSavedAlready + kSavedAlready);
}

}  // namespace
}  // namespace vyn::profiling
