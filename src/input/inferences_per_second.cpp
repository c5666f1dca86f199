#include "input/inferences_per_second.h"

#include "input/event_kind.h"

namespace vyn::profiling {

std::optional<float> inferencesPerSecond(const std::vector<EventNode>& events) {
  if (events.size() < 2) {
    return std::nullopt;
  }
  // Only the first name is looked at: without it the second event is the duration, whatever it
  // says.
  const bool durationFirst = events[0].identifier == "duration";
  const std::uint64_t duration = numberOf(events[durationFirst ? 0 : 1]);
  const std::uint64_t count = numberOf(events[durationFirst ? 1 : 0]);
  if (duration == 0) {
    return 0.0F;
  }
  constexpr float kMicrosecondsPerSecond = 1e6F;
  return static_cast<float>(count) * kMicrosecondsPerSecond / static_cast<float>(duration);
}

}  // namespace vyn::profiling
