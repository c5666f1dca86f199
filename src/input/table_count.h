#pragma once

#include <profile_log_generated.h>

#include <cstdint>

namespace vyn::profiling {

/// How many tables a verified chunk names, the root among them; one that is named several times
/// counts each time.
std::uint64_t tableCount(const schema::ProfileLog& log);

}  // namespace vyn::profiling
