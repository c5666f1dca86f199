// A text that is written by a thread of its own: all of it, in order, and every failure told.

#include "host/output/write_behind.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>

namespace vyn::host {
namespace {

using profiling::TextBlock;

// Keeps what it gets; from the piece with a certain number on it fails.
class KeepingSink : public profiling::TextSink {
 public:
  explicit KeepingSink(std::size_t failingPiece = SIZE_MAX) : m_failingPiece(failingPiece) {}

  void write(std::string_view text) override {
    if (m_pieces++ >= m_failingPiece) {
      throw std::runtime_error("the disk is full");
    }
    m_text += text;
  }

  const std::string& text() const { return m_text; }

 private:
  std::size_t m_failingPiece;
  std::size_t m_pieces = 0;
  std::string m_text;
};

// Fills block after block as a writer of text does, each with a letter of its own.
void writeBlocks(WriteBehind& written, int count, std::size_t size) {
  auto block = std::make_unique<TextBlock>();
  for (int i = 0; i < count; ++i) {
    block->fill(static_cast<char>('a' + i % 26));
    block = written.exchange(std::move(block), size);
    ASSERT_NE(block, nullptr);
  }
}

std::string blocksAsText(int count, std::size_t size) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += std::string(size, static_cast<char>('a' + i % 26));
  }
  return text;
}

TEST(WriteBehind, TheSinkGetsAllBlocksInOrder) {
  KeepingSink sink;
  WriteBehind written(sink);
  writeBlocks(written, 100, 3);
  written.finish();
  EXPECT_EQ(sink.text(), blocksAsText(100, 3));
}

TEST(WriteBehind, TextsBetweenBlocksKeepTheirPlace) {
  KeepingSink sink;
  WriteBehind written(sink);
  writeBlocks(written, 5, 2);
  written.write("-");
  writeBlocks(written, 5, 2);
  written.finish();
  EXPECT_EQ(sink.text(), blocksAsText(5, 2) + "-" + blocksAsText(5, 2));
}

TEST(WriteBehind, AFailureComesOutOfALaterExchange) {
  KeepingSink sink(1);
  WriteBehind written(sink);
  EXPECT_THROW(writeBlocks(written, 100, 1), std::runtime_error);
}

TEST(WriteBehind, AFailureComesOutOfTheEnd) {
  KeepingSink sink(0);
  WriteBehind written(sink);
  writeBlocks(written, 1, 1);
  EXPECT_THROW(written.finish(), std::runtime_error);
  EXPECT_THROW(written.write("more"), std::runtime_error);
  EXPECT_EQ(sink.text(), "");
}

TEST(WriteBehind, ATextThatIsNotFinishedEndsBehindItsLastBlock) {
  KeepingSink sink;
  {
    WriteBehind written(sink);
    writeBlocks(written, 3, 1);
  }
  EXPECT_EQ(sink.text(), blocksAsText(3, 1));
}

#ifndef __SANITIZE_ADDRESS__  // which needs memory of its own

// Takes nothing before it is told to.
class SlowSink : public profiling::TextSink {
 public:
  void write(std::string_view /*text*/) override { m_started.wait(); }
  void start() { m_start.set_value(); }

 private:
  std::promise<void> m_start;
  std::shared_future<void> m_started = m_start.get_future();
};

TEST(WriteBehind, FewBlocksWaitForASlowSink) {
  constexpr int kFew = 3;
  SlowSink sink;
  WriteBehind written(sink);
  std::atomic<int> taken = 0;
  std::thread filling([&] {
    for (int i = 0; i <= kFew; ++i) {
      written.exchange(std::make_unique<TextBlock>(), 1);
      ++taken;
    }
  });
  while (taken < kFew) {
    std::this_thread::yield();
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(50));  // in which one more would be taken
  EXPECT_EQ(taken, kFew);
  sink.start();
  filling.join();
}

TEST(WriteBehind, WithoutAThreadItWritesByItself) {
  // No memory for another thread's stack.
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
  const rlimit none{0, before.rlim_max};
  KeepingSink sink;
  ASSERT_EQ(setrlimit(RLIMIT_AS, &none), 0);
  WriteBehind written(sink);
  ASSERT_EQ(setrlimit(RLIMIT_AS, &before), 0);
  writeBlocks(written, 4, 2);
  EXPECT_EQ(sink.text(), blocksAsText(4, 2));  // before the end, too
  written.finish();
}

#endif

}  // namespace
}  // namespace vyn::host
