// RapidJSON's allocator takes its memory from malloc and realloc and goes on with a null pointer
// when there is none. The linker turns the readers' own calls of the two into calls of these (see
// CMakeLists.txt), so that running out of memory is std::bad_alloc here as everywhere else.

#include <cstddef>
#include <new>

extern "C" {

// NOLINTBEGIN(readability-identifier-naming): the linker's names
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) {
  void* block = __real_malloc(size);
  if (block == nullptr && size != 0) {
    throw std::bad_alloc();
  }
  return block;
}

void* __wrap_realloc(void* block, std::size_t size) {
  void* moved = __real_realloc(block, size);
  if (moved == nullptr && size != 0) {
    throw std::bad_alloc();
  }
  return moved;
}
// NOLINTEND(readability-identifier-naming)

}  // extern "C"
