#pragma once

namespace vyn::profiling {

/// Starts logging afresh, errors only. Says so on standard error and returns false when it cannot.
bool startLogging();

}  // namespace vyn::profiling
