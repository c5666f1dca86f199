#include "input/byte_source.h"

#include <algorithm>

namespace vyn::profiling {

std::size_t FileSource::read(std::uint8_t* to, std::size_t size) {
  m_file.read(reinterpret_cast<char*>(to), static_cast<std::streamsize>(size));
  return static_cast<std::size_t>(m_file.gcount());
}

std::size_t MemorySource::read(std::uint8_t* to, std::size_t size) {
  const std::size_t count = std::min(size, m_rest.size());
  std::copy_n(m_rest.begin(), count, to);
  m_rest = m_rest.subspan(count);
  return count;
}

}  // namespace vyn::profiling
