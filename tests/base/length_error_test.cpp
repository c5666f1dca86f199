// The base reader when a chunk's length is more than any buffer can have.

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/vyn_profile_log_reader.h"
#include "input/chunk_stream.h"
#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/json_log.h"
#include "support/temp_folder.h"

namespace vyn::profiling {

// The linker turns the reader's calls of ChunkStream::next into calls of this; see CMakeLists.txt.
ChunkBuffer failingNext(ChunkStream* stream) __asm__(
    "__wrap__ZN3vyn9profiling11ChunkStream4nextEv");

ChunkBuffer failingNext(ChunkStream* /*stream*/) { throw std::length_error("vector::reserve"); }

namespace {

TEST(LengthError, FailsTheReadAndIsLogged) {
  const test::TempFolder folder;
  VynProfileLogReader reader(folder.add("run.log", test::logOf({"{header:{}}"})),
                             VisibilityLevel{127});
  ASSERT_TRUE(log::initializeLogging(nullptr, 1));
  const std::string printed = test::printedBy([&] { EXPECT_FALSE(reader.readInputFile(false)); });
  log::terminateLogging();
  EXPECT_EQ(printed, "<ms> [ ERROR ] Length error: vector::reserve\n");
}

}  // namespace
}  // namespace vyn::profiling
