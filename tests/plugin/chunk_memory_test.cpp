// Only one chunk of a log is in memory at a time.

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "support/loaded_plugin.h"
#include "support/log_message.h"
#include "support/replaced_new.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

constexpr std::size_t kChunkSize = std::size_t{8} * 1024 * 1024;  // bytes

int g_largeBlocks = 0;  // of a chunk's size or more, handed out and not given back
int g_mostLargeBlocks = 0;

}  // namespace

void* allocateBlock(std::size_t size) {
  void* block = std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  if (malloc_usable_size(block) >= kChunkSize) {
    g_mostLargeBlocks = std::max(g_mostLargeBlocks, ++g_largeBlocks);
  }
  return block;
}

void* allocateBlockOrNull(std::size_t size) noexcept { return std::malloc(size); }

void releaseBlock(void* block) noexcept {
  if (malloc_usable_size(block) >= kChunkSize) {
    --g_largeBlocks;
  }
  std::free(block);
}

namespace {

class ChunkMemory : public testing::TestWithParam<const char*> {};

TEST_P(ChunkMemory, HoldsOneChunkAtATime) {
  const TempFolder folder;
  // Bytes behind what the chunk says belong to it but to none of its tables.
  std::string chunk = chunkBytes(chunkOf(
      {createContext({.duration = 1}), createContext({.duration = 2})}, "{netRunVersion:\"2\"}"));
  chunk.resize(kChunkSize, '\0');
  std::string bytes;
  for (int i = 0; i < 6; ++i) {
    bytes += framed(chunk);
  }
  const LoadedPlugin plugin(GetParam());
  const LoadedPlugin::Reader reader = plugin.reader(folder.add("run.log", bytes));
  g_largeBlocks = 0;
  g_mostLargeBlocks = 0;
  EXPECT_TRUE(reader->readInputFile(false));
  EXPECT_EQ(g_mostLargeBlocks, 1);
  EXPECT_EQ(g_largeBlocks, 0);
}

INSTANTIATE_TEST_SUITE_P(BothReaders, ChunkMemory,
                         testing::Values(VYN_JSON_PLUGIN, VYN_SUMMARY_PLUGIN),
                         [](const auto& test) { return test.index == 0 ? "Json" : "Summary"; });

}  // namespace
}  // namespace vyn::test
