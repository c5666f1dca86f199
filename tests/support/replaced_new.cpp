#include "support/replaced_new.h"

#include <new>

using vyn::test::allocateBlock;
using vyn::test::allocateBlockOrNull;
using vyn::test::releaseBlock;

void* operator new(std::size_t size) { return allocateBlock(size); }
void* operator new[](std::size_t size) { return allocateBlock(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return allocateBlockOrNull(size);
}
void operator delete(void* block) noexcept { releaseBlock(block); }
void operator delete[](void* block) noexcept { releaseBlock(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { releaseBlock(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { releaseBlock(block); }
