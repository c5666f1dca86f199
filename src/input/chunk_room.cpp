#include "input/chunk_room.h"

#include <new>
#include <stdexcept>

#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

ChunkBuffer makeChunkOrLogOnce(std::size_t size) {
  try {
    return makeChunk(size);
  } catch (const std::bad_alloc& error) {
    log::log(log::kError, "Unable to allocate memory: %s", error.what());
  } catch (const std::length_error& error) {
    log::log(log::kError, "Length error: %s", error.what());
  }
  return nullptr;
}

}  // namespace

ChunkBuffer makeChunkOrLog(std::size_t size) {
  try {
    return makeChunkOrLogOnce(size);
  } catch (const std::bad_alloc&) {
    return nullptr;  // not even memory for the line
  }
}

}  // namespace vyn::profiling
