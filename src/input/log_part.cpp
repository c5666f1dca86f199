#include "input/log_part.h"

#include <algorithm>

#include "input/chunk_format.h"

namespace vyn::profiling {

std::size_t LogPart::read(std::uint8_t* to, std::size_t size) {
  if (size > left() && size > sizeof(ChunkLength)) {
    return 0;  // of a chunk; a length may be there in part
  }
  const std::size_t count = m_source.read(to, std::min<std::uint64_t>(size, left()));
  m_place += count;
  return count;
}

}  // namespace vyn::profiling
