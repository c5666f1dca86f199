#pragma once

#include <rapidjson/allocators.h>

#include <cstddef>
#include <new>

namespace vyn::profiling {

/// Where all memory of RapidJSON comes from: its own allocator returns a null pointer when there is
/// no memory, and its callers go on with that. This one throws std::bad_alloc, as everywhere else.
class ThrowingAllocator : public rapidjson::CrtAllocator {
 public:
  // NOLINTBEGIN(readability-identifier-naming): RapidJSON calls them
  void* Malloc(std::size_t size) { return checked(CrtAllocator::Malloc(size), size); }
  void* Realloc(void* block, std::size_t oldSize, std::size_t newSize) {
    return checked(CrtAllocator::Realloc(block, oldSize, newSize), newSize);
  }
  // NOLINTEND(readability-identifier-naming)

 private:
  static void* checked(void* block, std::size_t size) {
    if (block == nullptr && size != 0) {
      throw std::bad_alloc();
    }
    return block;
  }
};

}  // namespace vyn::profiling
