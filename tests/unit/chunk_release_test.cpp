// Neither reader keeps anything of its log's chunks, however its read ended.

#include <gtest/gtest.h>

#include <new>

#include "core/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/log_message.h"
#include "support/temp_folder.h"

namespace vyn::profiling {
namespace {

const std::string kChunk = test::chunkOf({test::deInit(), test::deInit()}, "{netRunVersion:\"2\"}");

template <typename Reader>
class OpenChunk : public Reader {
 public:
  using Reader::Reader;
  const schema::LogHeader* header() const { return this->m_flatBufferReader.header(); }
};

// Has no memory for its log's second message.
class FailingReader : public OpenChunk<VynProfileLogReader> {
 public:
  using OpenChunk::OpenChunk;
  bool processNextMessage() override {
    if (++m_messages == 2) {
      throw std::bad_alloc();
    }
    return VynProfileLogReader::processNextMessage();
  }

 private:
  int m_messages = 0;
};

template <typename Reader>
void expectNothingIsKept(const std::string& log, bool expected) {
  const test::TempFolder folder;
  OpenChunk<Reader> reader(folder.add("run.log", log), VisibilityLevel{127});
  test::printedBy([&] { EXPECT_EQ(reader.readInputFile(false), expected); });
  EXPECT_EQ(reader.header(), nullptr);
  EXPECT_FALSE(reader.processNextMessage());
}

TEST(ChunkRelease, NothingIsHeldAfterARead) {
  expectNothingIsKept<VynProfileLogReader>(test::logOf({kChunk}), true);
  expectNothingIsKept<VynProfileLogReaderJSON>(test::logOf({kChunk}), true);
}

TEST(ChunkRelease, NothingIsHeldAfterAReadThatFailed) {
  const std::string log = test::logOf({kChunk}) + test::framed("0123456789abcdef");
  expectNothingIsKept<VynProfileLogReader>(log, false);
  expectNothingIsKept<VynProfileLogReaderJSON>(log, false);
}

TEST(ChunkRelease, NothingIsHeldAfterAReadThatThrew) {
  const test::TempFolder folder;
  FailingReader reader(folder.add("run.log", test::logOf({kChunk})), VisibilityLevel{127});
  EXPECT_THROW(reader.readInputFile(false), std::bad_alloc);
  EXPECT_EQ(reader.header(), nullptr);
  EXPECT_FALSE(reader.processNextMessage());  // with a message left in the chunk that is gone
  EXPECT_FALSE(reader.readInputFile(false));
}

}  // namespace
}  // namespace vyn::profiling
