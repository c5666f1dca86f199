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

// Every take operation files its message whole or not at all: what a failed read leaves can be
// shown, and no graph is without an execution.
void expectSoundStores(OpenReader& reader) {
  std::size_t taken = reader.m_hasFinalize ? 1 : 0;
  for (const auto* groups : {&reader.m_executeGroups, &reader.m_applyBinarySectionGroups}) {
    for (const auto& group : *groups) {
      EXPECT_FALSE(group.records.empty());
      taken += group.records.size();
    }
  }
  EXPECT_EQ(reader.m_eventStrings.size(), taken);  // each message of the log has one text
  EXPECT_EQ(reader.m_hasFinalize, !reader.m_finalizeGroups.empty());
  EXPECT_TRUE(reader.generateOutput(""));
}

Outcome readWithAllocations(const std::string& path, long allocations) {
  OpenReader reader(path);
  g_failed = false;
  g_allocationsLeft = allocations;
  try {
    const bool read = reader.readInputFile(false);
    g_allocationsLeft = -1;
    return read ? Outcome::kRead : Outcome::kRefused;
  } catch (const std::bad_alloc&) {
    expectSoundStores(reader);
    return Outcome::kThrown;
  }
}

// Messages of all kinds that belong to a graph.
std::string logOfAllKinds() {
  const std::string events = "profilingEvents:[" +
                             event("an identifier that is long", 1,
                                   "subEvents:[" + event("and so is this sub-event's", 2) + "]") +
                             ",{valueType:6,stringValue:\"a text that needs memory of its own\"}]";
  const std::string component =
      "profilingEvents:[" + event("init of a component", 1, "type:100") + "," +
      event("finalize of a component", 1, "type:300") +
      ",{valueType:6,stringValue:\"a text that needs memory of its own\"}]";
  return logOf(
      {"{header:{netRunVersion:\"a version text of some length\"},messages:[" +
       message("1", 1, 5, "graphName:\"a graph with a long name\"," + events) + "," +
       message("3", 2, 7, "graphName:\"another long graph name\"," + events) + "," +
       message("2", 3, 7, "graphName:\"another long graph name\"," + events) + "," +
       message("11", 4, 7, "graphName:\"a section's long graph name\"," + events) + "," +
       message("9", 5, 7, "visibilityLevel:1,graphName:\"a component's graph\"," + component) +
       "]}"});
}

TEST(AllocationFailure, IsNeverTakenForSuccess) {
  const TempFolder folder;
  const std::string path = folder.add("run.log", logOfAllKinds());
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

TEST(AllocationFailure, NeverShortensASummary) {
  const TempFolder folder;
  OpenReader reader(folder.add("run.log", logOfAllKinds()));
  ASSERT_TRUE(reader.readInputFile(false));
  const std::string whole = printedBy([&] { EXPECT_TRUE(reader.generateOutput("")); });
  bool isWritten = false;
  for (long allocations = 0; !isWritten; ++allocations) {
    g_failed = false;
    const std::string printed = printedBy([&] {
      g_allocationsLeft = allocations;
      try {
        isWritten = reader.generateOutput("");
      } catch (const std::bad_alloc&) {
        isWritten = false;
      }
      g_allocationsLeft = -1;
    });
    EXPECT_EQ(isWritten, !g_failed) << allocations;
    EXPECT_EQ(printed, isWritten ? whole : "") << allocations;
  }
}

TEST(AllocationFailure, LeavesNoHalfMadeReader) {
  const std::string path(100, 'p');
  g_allocationsLeft = 1;  // for the object; its copy of the path finds none
  EXPECT_THROW(std::make_unique<OpenReader>(path), std::bad_alloc);
  g_allocationsLeft = -1;
}

}  // namespace
}  // namespace vyn::test
