#pragma once

#include <cstddef>
#include <cstdint>

namespace vyn::fuzz {

/// Changes one thing in the sound chunk at `chunk`, a field, a method, a unit, a text or the
/// nesting, and packs it again in place, so that it stays sound. Returns its new size; 0 when that
/// would be more than `maxSize` bytes.
std::size_t mutateChunk(std::uint8_t* chunk, std::size_t maxSize, unsigned seed);

}  // namespace vyn::fuzz
