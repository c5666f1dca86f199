#pragma once

#include <cstdint>
#include <string>

#include "input/byte_source.h"

namespace vyn::fuzz {

/// How many tables the sound chunks from the start of a log name, each as often as it is named.
std::uint64_t tablesOf(profiling::ByteSource& log);
std::uint64_t tablesOf(const std::string& logPath);

}  // namespace vyn::fuzz
