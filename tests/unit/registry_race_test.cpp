// Uses the logger from many threads at once, as far as they may; the thread sanitizer, with which
// this program is built, ends it with an error when an access is not guarded.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>
#include <vector>

#include "log/logger_registry.h"

namespace vyn::log {

// The process-wide words, without the readers' other ones.
LoggerRegistry g_loggerRegistry;
std::uint64_t g_currentLogger = 0;

}  // namespace vyn::log

namespace {

using vyn::log::Logger;

constexpr int kThreads = 3;
constexpr int kReplacements = 50;

std::atomic<int> g_received = 0;

void receive(const char* /*format*/, std::uint32_t /*level*/, std::uint64_t /*elapsedNs*/,
             std::va_list /*arguments*/) {
  g_received.fetch_add(1, std::memory_order_relaxed);
}

void check(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::exit(1);
  }
}

// Runs `work` in several threads, each time with its round's number, until `isDone`.
template <typename Work>
std::vector<std::thread> startThreads(const std::atomic<bool>& isDone, const Work& work) {
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&isDone, work] {
      for (int round = 0; !isDone.load(std::memory_order_relaxed); ++round) {
        work(round);
        std::this_thread::yield();
      }
    });
  }
  return threads;
}

void join(std::vector<std::thread>& threads) {
  for (std::thread& thread : threads) {
    thread.join();
  }
}

// Until the others have gone round a few times more. Orders no access by itself.
void waitFor(const std::atomic<int>& rounds) {
  const int before = rounds.load(std::memory_order_relaxed);
  while (rounds.load(std::memory_order_relaxed) - before < 2 * kThreads) {
    std::this_thread::yield();
  }
}

// One thread replaces the current logger over and over; the others look loggers up by the handles
// that they were told.
void replaceLoggersWhileOthersLookThemUp() {
  std::atomic<bool> isDone = false;
  std::atomic<std::uint64_t> handle = 0;
  std::atomic<int> rounds = 0;
  std::vector<std::thread> threads = startThreads(isDone, [&handle, &rounds](int round) {
    const std::shared_ptr<Logger> logger =
        vyn::log::getLogger(handle.load(std::memory_order_relaxed));
    if (logger != nullptr) {
      logger->setMaxLevel(1 + round % 5);
      logger->log(vyn::log::kError, "", 0, "message %d", round);
    }
    rounds.fetch_add(1, std::memory_order_relaxed);
  });
  for (int round = 0; round < kReplacements; ++round) {
    check(vyn::log::initializeLogging(receive, 1 + round % 5), "logging starts");
    handle.store(vyn::log::g_currentLogger, std::memory_order_relaxed);
    waitFor(rounds);
    if (round % 2 == 0) {
      vyn::log::terminateLogging();
      waitFor(rounds);
    }
  }
  isDone.store(true, std::memory_order_relaxed);
  join(threads);
}

// While the current logger stays, all may use it.
void useTheCurrentLoggerTogether() {
  check(vyn::log::initializeLogging(receive, vyn::log::kInfo), "logging starts");
  std::atomic<bool> isDone = false;
  std::atomic<int> rounds = 0;
  g_received = 0;
  std::vector<std::thread> threads = startThreads(isDone, [&rounds](int round) {
    check(vyn::log::isLoggingInitialized(), "logging is on");
    check(vyn::log::getLogCallback() == receive, "the callback stays");
    check(vyn::log::setMaxLogLevel(1 + round % 5), "the level is valid");
    const std::int32_t level = vyn::log::getMaxLogLevel();
    check(level >= 1 && level <= 5, "the level is one that was set");
    vyn::log::log(vyn::log::kError, "message %d", round);
    rounds.fetch_add(1, std::memory_order_relaxed);
  });
  for (int i = 0; i < kReplacements; ++i) {
    waitFor(rounds);
  }
  isDone.store(true, std::memory_order_relaxed);
  join(threads);
  check(g_received == rounds, "every error is received");
  vyn::log::terminateLogging();
}

// No lock stands between those who hold one logger.
void holdOneLoggerTogether() {
  Logger logger(receive, 3);
  std::atomic<bool> isDone = false;
  std::atomic<int> rounds = 0;
  std::vector<std::thread> threads = startThreads(isDone, [&logger, &rounds](int round) {
    check(logger.setMaxLevel(1 + round % 5), "the level is valid");
    check(logger.maxLevel() >= 1 && logger.maxLevel() <= 5, "the level is one that was set");
    logger.log(vyn::log::kError, "", 0, "message %d", round);
    rounds.fetch_add(1, std::memory_order_relaxed);
  });
  waitFor(rounds);
  isDone.store(true, std::memory_order_relaxed);
  join(threads);
}

}  // namespace

int main() {
  replaceLoggersWhileOthersLookThemUp();
  useTheCurrentLoggerTogether();
  holdOneLoggerTogether();
  return 0;
}
