// The n-th allocation fails, for every n until reading succeeds.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/open_reader.h"

namespace {

long g_allocationsLeft = -1;  // below 0: as many as there is memory for
bool g_failed = false;

void* allocate(std::size_t size) {
  if (g_allocationsLeft == 0) {
    g_allocationsLeft = -1;  // one failure; what deals with it has memory again
    g_failed = true;
    throw std::bad_alloc();
  }
  if (g_allocationsLeft > 0) {
    --g_allocationsLeft;
  }
  void* block = std::malloc(size);
  return block != nullptr ? block : throw std::bad_alloc();
}

}  // namespace

// Not inlined, where GCC takes malloc and delete for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) { return allocate(size); }
[[gnu::noinline]] void* operator new[](std::size_t size) { return allocate(size); }
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete[](void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
[[gnu::noinline]] void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

namespace vyn::test {
namespace {

enum class Outcome { kRead, kRefused, kThrown };

Outcome readWithAllocations(const std::string& path, long allocations) {
  OpenReader reader(path);
  g_failed = false;
  g_allocationsLeft = allocations;
  try {
    const bool read = reader.readInputFile(false);
    g_allocationsLeft = -1;
    return read ? Outcome::kRead : Outcome::kRefused;
  } catch (const std::bad_alloc&) {
    return Outcome::kThrown;
  }
}

TEST(AllocationFailure, IsNeverTakenForSuccess) {
  const TempFolder folder;
  const std::string events = "profilingEvents:[" +
                             event("an identifier that is long", 1,
                                   "subEvents:[" + event("and so is this sub-event's", 2) + "]") +
                             ",{valueType:6,stringValue:\"a text that needs memory of its own\"}]";
  const std::string path = folder.add(
      "run.log",
      logOf({"{header:{netRunVersion:\"a version text of some length\"},messages:[" +
             message("1", 1, 5, "graphName:\"a graph with a long name\"," + events) + "," +
             message("3", 2, 7, "graphName:\"another long graph name\"," + events) + "," +
             message("2", 3, 7, "graphName:\"another long graph name\"," + events) + "]}"}));
  ASSERT_TRUE(log::initializeLogging(nullptr, 1));
  int refused = 0;
  int thrown = 0;
  Outcome outcome = Outcome::kThrown;
  for (long allocations = 0; outcome != Outcome::kRead; ++allocations) {
    const std::string printed =
        printedBy([&] { outcome = readWithAllocations(path, allocations); });
    if (outcome == Outcome::kRefused) {
      EXPECT_EQ(printed, "<ms> [ ERROR ] Unable to allocate memory: std::bad_alloc\n");
      ++refused;
    } else if (outcome == Outcome::kThrown) {
      ++thrown;
    }
    EXPECT_EQ(g_failed, outcome != Outcome::kRead) << allocations;
  }
  log::terminateLogging();
  EXPECT_GE(refused, 2);  // the chunk's buffer and its owner
  EXPECT_GT(thrown, 20);  // memory that runs out while decoding is the host's to deal with
}

TEST(AllocationFailure, LeavesNoHalfMadeReader) {
  const std::string path(100, 'p');
  g_allocationsLeft = 1;  // for the object; its copy of the path finds none
  EXPECT_THROW(std::make_unique<OpenReader>(path), std::bad_alloc);
  g_allocationsLeft = -1;
}

}  // namespace
}  // namespace vyn::test
