#include "log/platform_utilities.h"

#include <sys/time.h>
#include <unistd.h>

namespace vyn::log {
namespace {

constexpr std::uint32_t kMillisecondsPerSecond = 1000;
constexpr std::uint32_t kMicrosecondsPerMillisecond = 1000;

}  // namespace

int getTimeOfDay(TimeOfDay* out) {
  timeval now{};
  if (out == nullptr || gettimeofday(&now, nullptr) != 0) {
    return -1;
  }
  *out = {now.tv_sec, now.tv_usec};
  return 0;
}

int sleepMilliseconds(std::uint32_t milliseconds) {
  // usleep is only sure to take less than a second.
  if (milliseconds >= kMillisecondsPerSecond) {
    sleep(milliseconds / kMillisecondsPerSecond);
  }
  usleep((milliseconds % kMillisecondsPerSecond) * kMicrosecondsPerMillisecond);
  return 0;
}

}  // namespace vyn::log
