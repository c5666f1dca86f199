#include "input/init_time.h"

namespace vyn::profiling {

StepTime initTimeOf(const InitSteps& steps) {
  StepTime init;
  if (steps.finalizeGroups != nullptr) {
    init = {.duration = steps.contextCreate.duration + steps.composeGraphsDuration,
            .timestamp = steps.contextCreate.timestamp};
    for (const EventGroup& group : *steps.finalizeGroups) {
      init.duration += group.duration;
    }
  }
  return init.duration == 0 && steps.createFromBinary ? *steps.createFromBinary : init;
}

}  // namespace vyn::profiling
