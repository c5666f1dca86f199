#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "input/execution_records.h"

namespace vyn::profiling {

/// How long a step took, in microseconds, and when it was, as its message says.
struct StepTime {
  std::uint64_t duration = 0;
  std::uint64_t timestamp = 0;
};

/// The steps that initialisation may have been made of.
struct InitSteps {
  StepTime contextCreate;
  std::uint64_t composeGraphsDuration = 0;                  ///< in microseconds
  const std::vector<EventGroup>* finalizeGroups = nullptr;  ///< null when no graph was finalized
  std::optional<StepTime> createFromBinary;
};

/// The whole of initialisation: the steps up to the last finalized graph, or else the creation from
/// a serialized binary.
StepTime initTimeOf(const InitSteps& steps);

}  // namespace vyn::profiling
