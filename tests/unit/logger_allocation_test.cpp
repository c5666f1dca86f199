// Logging when there is no memory for a logger.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "log/logger_registry.h"

namespace {

bool g_failNothrow = false;

}  // namespace

// Not inlined, where GCC takes malloc and delete for a mismatch.
// Only the non-throwing form fails: it makes nothing but loggers.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return g_failNothrow ? nullptr : std::malloc(size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* block = std::malloc(size);
  return block != nullptr ? block : throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}

namespace vyn::log {
namespace {

TEST(LoggingWithoutMemory, SucceedsButStaysOff) {
  ASSERT_TRUE(initializeLogging(nullptr, 1));
  g_failNothrow = true;
  EXPECT_TRUE(initializeLogging(nullptr, 1));
  g_failNothrow = false;
  EXPECT_FALSE(isLoggingInitialized());
  EXPECT_EQ(getMaxLogLevel(), kUnknownLevel);
  EXPECT_TRUE(g_loggerRegistry.loggers.empty());
}

}  // namespace
}  // namespace vyn::log
