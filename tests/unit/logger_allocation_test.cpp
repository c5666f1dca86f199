// Logging when there is no memory for a logger.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "log/logger_registry.h"

namespace {

bool g_failNothrow = false;
bool g_failThrowing = false;
int g_blocks = 0;  // handed out and not given back

}  // namespace

// Not inlined, where GCC takes malloc and delete for a mismatch.
// The non-throwing form makes nothing but loggers.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  if (g_failNothrow) {
    return nullptr;
  }
  ++g_blocks;
  return std::malloc(size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  void* block = g_failThrowing ? nullptr : std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  ++g_blocks;
  return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
  g_blocks -= block != nullptr ? 1 : 0;
  std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
  operator delete(block);
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

TEST(LoggingWithoutMemory, FailureBesideTheLoggerIsThrownAndFreesTheLogger) {
  ASSERT_TRUE(initializeLogging(nullptr, 1));
  terminateLogging();
  const int before = g_blocks;
  g_failThrowing = true;
  bool hasThrown = false;
  try {
    initializeLogging(nullptr, 1);
  } catch (const std::bad_alloc&) {
    hasThrown = true;
  }
  g_failThrowing = false;
  EXPECT_TRUE(hasThrown);
  EXPECT_EQ(g_blocks, before);
}

}  // namespace
}  // namespace vyn::log
