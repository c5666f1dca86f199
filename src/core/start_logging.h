#pragma once

#include <cstdint>

#include "log/logger.h"

namespace vyn::profiling {

/// Starts logging afresh, up to `maxLevel`. Says so on standard error and returns false when it
/// cannot.
bool startLogging(std::int32_t maxLevel = log::kError);

}  // namespace vyn::profiling
