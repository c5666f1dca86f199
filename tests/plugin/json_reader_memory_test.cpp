// The n-th allocation of the JSON reader fails, for every n until its log is read and written.

#include <gmock/gmock.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>

#include "plugin/json_fixture.h"

namespace {

long g_allocationsLeft = -1;  // below 0: as many as there is memory for
bool g_failed = false;

bool memoryFails() {
  if (g_allocationsLeft == 0) {
    g_allocationsLeft = -1;  // one failure; what deals with it has memory again
    g_failed = true;
    errno = ENOMEM;
    return true;
  }
  if (g_allocationsLeft > 0) {
    --g_allocationsLeft;
  }
  return false;
}

}  // namespace

// In front of the system's functions for the plug-in too, and for operator new behind it.
extern "C" {

// The names are the system's.
// NOLINTBEGIN(readability-identifier-naming, bugprone-reserved-identifier)
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

[[gnu::visibility("default")]] void* malloc(std::size_t size) {
  return memoryFails() ? nullptr : __libc_malloc(size);
}
[[gnu::visibility("default")]] void* realloc(void* block, std::size_t size) {
  return memoryFails() ? nullptr : __libc_realloc(block, size);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
// NOLINTEND(readability-identifier-naming, bugprone-reserved-identifier)

}  // extern "C"

namespace vyn::test {
namespace {

enum class Outcome { kDone, kRefused, kThrown };

template <typename Call>
Outcome withAllocations(long allocations, Call call) {
  g_failed = false;
  g_allocationsLeft = allocations;
  try {
    const bool done = call();
    g_allocationsLeft = -1;
    return done ? Outcome::kDone : Outcome::kRefused;
  } catch (const std::bad_alloc&) {
    return Outcome::kThrown;
  }
}

const std::string kText(300, 't');

// Version texts of different lengths move the metadata's objects over the border of the pool's
// first 64 KiB.
std::string logWithVersion(std::size_t length) {
  const std::string header =
      "{netRunVersion:\"" + std::string(length, 'v') + "\",backendVersion:\"1\",version:{major:1}}";
  const Event event{.identifier = kText,
                    .subEvents = {{.identifier = "an identifier of a sub-event"}}};
  return logOf({chunkOf({deInit({.duration = 1}, {event})}, header),
                chunkOf({{.method = MethodType::BACKEND_DEINIT, .sequenceNumber = 2}, deInit()})});
}

// Calls `attempt` with ever more allocations until it fails no more. Returns how often it failed.
template <typename Attempt>
int failuresOf(const Attempt& attempt) {
  int failures = 0;
  for (long allocations = 0;; ++allocations) {
    const Outcome outcome = attempt(allocations);
    if (!g_failed) {
      EXPECT_EQ(outcome, Outcome::kDone);
      return failures;
    }
    // Without memory for a logger, readers go on in silence.
    failures += outcome == Outcome::kDone ? 0 : 1;
  }
}

class JsonAllocationFailure : public testing::TestWithParam<std::size_t> {
 protected:
  TempFolder m_folder;
  std::string m_log = m_folder.add("run.log", logWithVersion(GetParam()));
  std::string m_document = m_folder.path("out.json");
};

TEST_P(JsonAllocationFailure, OfAReadLeavesNothingToReadAgain) {
  const int failures = failuresOf([&](long allocations) {
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const auto reader = plugin.reader(m_log);
    const Outcome outcome =
        withAllocations(allocations, [&] { return reader->readInputFile(false); });
    if (outcome == Outcome::kDone) {
      return outcome;
    }
    EXPECT_FALSE(reader->processNextMessage());
    // Before the log is opened a failure leaves everything to do; later ones leave nothing.
    bool readAgain = false;
    printedBy([&] { readAgain = reader->readInputFile(false); });
    printedBy([&] { EXPECT_EQ(reader->generateOutput(m_document), readAgain); });
    EXPECT_EQ(readFile(m_document).empty(), !readAgain);
    return outcome;
  });
  EXPECT_GT(failures, 15);
}

TEST_P(JsonAllocationFailure, OfAnOutputLeavesTheNextOneWhole) {
  const int failures = failuresOf([&](long allocations) {
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const auto reader = plugin.reader(m_log);
    EXPECT_TRUE(reader->readInputFile(false));
    const Outcome outcome =
        withAllocations(allocations, [&] { return reader->generateOutput(m_document); });
    if (outcome != Outcome::kDone) {
      EXPECT_TRUE(reader->generateOutput(m_document));
    }
    EXPECT_THAT(readFile(m_document), testing::HasSubstr(kText));
    return outcome;
  });
  EXPECT_GT(failures, 2);
}

INSTANTIATE_TEST_SUITE_P(VersionTexts, JsonAllocationFailure,
                         testing::Values(3, 64'000, 64'880, 65'000, 65'400));

}  // namespace
}  // namespace vyn::test
