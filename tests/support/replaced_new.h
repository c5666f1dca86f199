#pragma once

#include <cstddef>

namespace vyn::test {

// What every form of operator new and delete does in a program that is linked with
// vyn_replaced_new, be it called from a plug-in: the program's test defines it.

/// Throws std::bad_alloc when there is no memory.
void* allocateBlock(std::size_t size);

/// Null when there is no memory. The non-throwing form makes nothing but loggers.
void* allocateBlockOrNull(std::size_t size) noexcept;

/// The block may be null.
void releaseBlock(void* block) noexcept;

}  // namespace vyn::test
