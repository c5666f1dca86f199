#pragma once

#include <cstdint>
#include <span>

namespace vyn::fuzz {

/// True when a chunk of the log announces so many bytes more than are there that reserving them
/// takes all the time.
bool announcesFarTooMuch(std::span<const std::uint8_t> log);

}  // namespace vyn::fuzz
