#pragma once

#include <cstdint>
#include <span>

namespace vyn::fuzz {

/// Aborts unless what is found in the log fits what the verifier says of its chunks, is explained,
/// is no more than may be kept, and is the same again.
void checkFindings(std::span<const std::uint8_t> log);

}  // namespace vyn::fuzz
