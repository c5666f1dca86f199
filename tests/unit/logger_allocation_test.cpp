// Logging when there is no memory for a logger.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "log/logger_registry.h"
#include "support/replaced_new.h"

namespace vyn::test {
namespace {

bool g_failNothrow = false;
bool g_failThrowing = false;
int g_blocks = 0;  // handed out and not given back

}  // namespace

void* allocateBlock(std::size_t size) {
  void* block = g_failThrowing ? nullptr : std::malloc(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  ++g_blocks;
  return block;
}

void* allocateBlockOrNull(std::size_t size) noexcept {
  if (g_failNothrow) {
    return nullptr;
  }
  ++g_blocks;
  return std::malloc(size);
}

void releaseBlock(void* block) noexcept {
  g_blocks -= block != nullptr ? 1 : 0;
  std::free(block);
}

namespace {

TEST(LoggingWithoutMemory, SucceedsButStaysOff) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  g_failNothrow = true;
  EXPECT_TRUE(log::initializeLogging(nullptr, log::kError));
  g_failNothrow = false;
  EXPECT_FALSE(log::isLoggingInitialized());
  EXPECT_EQ(log::getMaxLogLevel(), log::kUnknownLevel);
  EXPECT_TRUE(log::g_loggerRegistry.loggers.empty());
}

TEST(LoggingWithoutMemory, FailureBesideTheLoggerIsThrownAndFreesTheLogger) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  log::terminateLogging();
  const int before = g_blocks;
  g_failThrowing = true;
  bool hasThrown = false;
  try {
    log::initializeLogging(nullptr, log::kError);
  } catch (const std::bad_alloc&) {
    hasThrown = true;
  }
  g_failThrowing = false;
  EXPECT_TRUE(hasThrown);
  EXPECT_EQ(g_blocks, before);
}

}  // namespace
}  // namespace vyn::test
