// Uses the logger from many threads at once, as far as they may; the thread sanitizer, with which
// this program is built, ends it with an error when an access is not guarded.

#include <array>
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

constexpr int kThreads = 4;
constexpr int kRounds = 10000;

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

template <typename Work>
std::vector<std::thread> startThreads(const Work& work) {
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([work, i] {
      for (int round = 0; round < kRounds; ++round) {
        work(i, round);
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

// One thread replaces the current logger over and over; the others look loggers up by the handles
// that they were told, which must not order their accesses by itself.
void replaceLoggersWhileOthersLookThemUp() {
  std::atomic<std::uint64_t> handle = 0;
  std::vector<std::thread> threads = startThreads([&handle](int /*thread*/, int round) {
    const std::shared_ptr<Logger> logger =
        vyn::log::getLogger(handle.load(std::memory_order_relaxed));
    if (logger != nullptr) {
      logger->setMaxLevel(1 + round % 5);
      logger->log(vyn::log::kError, "", 0, "message %d", round);
    }
  });
  for (int round = 0; round < kRounds; ++round) {
    check(vyn::log::initializeLogging(receive, 1 + round % 5), "logging starts");
    handle.store(vyn::log::g_currentLogger, std::memory_order_relaxed);
    if (round % 7 == 0) {
      vyn::log::terminateLogging();
    }
  }
  join(threads);
}

// While the current logger stays, all may use it.
void useTheCurrentLoggerTogether() {
  check(vyn::log::initializeLogging(receive, 3), "logging starts");
  std::vector<std::thread> threads = startThreads([](int thread, int round) {
    check(vyn::log::isLoggingInitialized(), "logging is on");
    check(vyn::log::getLogCallback() == receive, "the callback stays");
    check(vyn::log::setMaxLogLevel(1 + (thread + round) % 5), "the level is valid");
    const std::int32_t level = vyn::log::getMaxLogLevel();
    check(level >= 1 && level <= 5, "the level is one that was set");
    vyn::log::log(vyn::log::kError, "message %d", round);
  });
  join(threads);
  vyn::log::terminateLogging();
}

}  // namespace

int main() {
  replaceLoggersWhileOthersLookThemUp();
  g_received = 0;
  useTheCurrentLoggerTogether();
  check(g_received == kThreads * kRounds, "every error is received");
  return 0;
}
