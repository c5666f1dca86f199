#include "input/chunk_room.h"

#include <gtest/gtest.h>

#include <limits>

#include "log/logger_registry.h"
#include "support/captured_output.h"

namespace vyn::profiling {
namespace {

TEST(ChunkRoom, IsReservedAndNotFilled) {
  const ChunkBuffer chunk = makeChunkOrLog(12);
  EXPECT_EQ(chunk->size(), 0U);
  EXPECT_EQ(chunk->capacity(), 12U);
}

TEST(ChunkRoom, LengthThatNoVectorCanHaveIsLogged) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  const std::string printed = test::printedBy(
      [] { EXPECT_EQ(makeChunkOrLog(std::numeric_limits<std::size_t>::max()), nullptr); });
  log::terminateLogging();
  EXPECT_EQ(printed, "<ms> [ ERROR ] Length error: vector::reserve\n");
}

}  // namespace
}  // namespace vyn::profiling
