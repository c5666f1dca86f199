#pragma once

#include <cstdint>
#include <span>

namespace vyn::fuzz {

/// Aborts unless what is salvaged of the log, searched or not, is a log without errors of which
/// nothing is lost when it is salvaged again, and each byte was saved or told to be lost.
void checkSalvage(std::span<const std::uint8_t> log);

}  // namespace vyn::fuzz
