#include "input/chunk_room.h"

#include <new>
#include <stdexcept>

#include "log/logger_registry.h"

namespace vyn::profiling {

ChunkBuffer makeChunkOrLog(std::size_t size) {
  try {
    return makeChunk(size);
  } catch (const std::bad_alloc& error) {
    log::log(log::kError, "Unable to allocate memory: %s", error.what());
  } catch (const std::length_error& error) {
    log::log(log::kError, "Length error: %s", error.what());
  }
  return nullptr;
}

}  // namespace vyn::profiling
